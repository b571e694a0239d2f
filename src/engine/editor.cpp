#include "engine/editor.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "engine/create_sound_editor.h"
#include "engine/failure_codes.h"
#include "engine/output_format.h"
#include "engine/time_text.h"
#include "runtime/fault.h"
#include "runtime/file_names.h"
#include "sound/reading/source.h"

namespace tarnwick::engine {

std::shared_ptr<EditorDirectory> createEditorDirectory() {
    return std::make_shared<EditorDirectory>();
}

std::unique_ptr<SoundEditor> createSoundEditor(std::shared_ptr<EditorDirectory> directory) {
    try {
        return std::make_unique<Editor>(directory ? std::move(directory) : createEditorDirectory());
    } catch (const std::system_error& error) {
        throw runtime::Fault(QStringLiteral("The sound engine cannot be started: %1")
                                 .arg(QString::fromStdString(error.code().message())));
    }
}

Editor::Editor(std::shared_ptr<EditorDirectory> directory)
    : directory_(std::move(directory)),
      playback_(*this, events_, [this](ErrorCode code) { fail(Operation::Play, {code}); }),
      waveform_(*this, sound_, playback_, [this] { analyse(); }),
      exports_(events_, [this](const Reason& reason, const QString& path, bool forgotten) {
          exportDone(reason, path, forgotten);
      }) {}

Editor::~Editor() {
    directory_->remove(&sound_);
    soundGone_.request_stop();
}

void Editor::SetEditorOption(qint16 option) {
    if (option == 100) headAndTail_ = true;
}

QString Editor::FormatMs(qint32 ms, qint32, qint32) const { return timeText(ms); }

void Editor::fail(Operation operation, const Reason& reason, const QString& path) {
    if (reason == kOk) return;
    lastError_ = reason.code;
    Q_EMIT failed(
        {operation, path.isEmpty() ? sound_.path : path, reason.code, reason.systemError});
}

qint32 Editor::refuse(Operation operation, const Reason& reason, const QString& path) {
    fail(operation, reason, path);
    return reason.code;
}

void Editor::submit(Work work) {
    worker_.add(
        [work = std::move(work), ticket = Ticket{events_.generation(), soundGone_.get_token()}] {
            if (!ticket.stop.stop_requested()) work(ticket);
        });
}

sound::Progress Editor::progressOf(const Ticket& ticket, void (SoundEditor::*signal)(qint16)) {
    const auto announceNew = [this, ticket, signal, last = -1](int percent) mutable {
        if (percent > last) announce(ticket, signal, static_cast<qint16>(percent));
        last = std::max(last, percent);
    };
    return {.percent = announceNew, .stop = ticket.stop};
}

void Editor::dropSound() {
    soundGone_.request_stop();
    soundGone_ = {};
    events_.startGeneration();
    exports_.forget();
    playback_.stop();
    playback_.forget();
    // The worker frees the sound with its history, as that can take long.
    worker_.add([this, dropped = std::exchange(sound_, {})] { working_.drop(); });
    if (waveform_.reset())
        events_.post(EventQueue::kAnyGeneration, [this] { Q_EMIT WaveSelectionChanged(0, 0, 0); });
    Q_EMIT waveform_.displayChanged(DisplayChange::Sound);
}

FileFacts Editor::factsOf(const QString& path) const {
    // Opening a pipe or a device could block forever.
    const std::filesystem::path file = runtime::pathOf(path);
    std::error_code ignored;
    if (!is_regular_file(file, ignored)) return {.code = kFileNotFound};
    if (::access(file.c_str(), R_OK) != 0) return {.code = kFileNotFound, .systemError = errno};
    FileFacts facts;
    const Reason reason = attempt([&] {
        const sound::Source::Lengths lengths = sound::Source::probe(file);
        facts.lengthMs = lengths.held;
        facts.claimedMs = lengths.claimed;
    });
    facts.code = reason.code;
    facts.systemError = reason.systemError;
    return facts;
}

qint32 Editor::LoadSound(const QString& path) {
    dropSound();
    const FileFacts facts = factsOf(path);
    if (facts.code != kOk) return refuse(Operation::Load, {facts.code, facts.systemError}, path);
    const std::filesystem::path file = runtime::pathOf(path);
    startLoading(path, [file](const sound::Progress& progress) {
        return sound::Timeline(sound::Source::open(file, progress));
    });
    return kOk;
}

qint32 Editor::LoadFromEditor(WindowHandle form) {
    const DeliveredSound* const other = directory_->find(form);
    if (!other || !other->timeline) return refuse(Operation::Load, {kNoSound});
    // Copied before this editor's sound is dropped, as that may be the requested one.
    const sound::Timeline taken = *other->timeline;
    const QString path = other->path;
    dropSound();
    startLoading(path, [taken](const sound::Progress&) {
        taken.source()->checkUnchanged();
        return taken;
    });
    return kOk;
}

void Editor::startLoading(const QString& path, Opening open) {
    // An editor without a display works in the background and is not used for playing.
    if (waveform_.displayed()) playback_.prepare();
    events_.post([this] { Q_EMIT SoundLoadingStarted(); });
    submit([this, path, open = std::move(open)](const Ticket& ticket) {
        const sound::Progress progress = progressOf(ticket, &SoundEditor::SoundLoadingPerc);
        std::optional<sound::Timeline> loaded;
        const Reason reason = attempt([&] {
            loaded.emplace(open(progress));
            working_.set(*loaded);
        });
        if (reason == kOk) progress.percent(100);  // another editor's sound reports no progress
        events_.post(ticket.generation, [this, path, reason, loaded = std::move(loaded)] {
            fail(Operation::Load, reason, path);
            if (reason == kOk) {
                sound_.timeline = loaded;
                sound_.path = path;
            }
            Q_EMIT waveform_.displayChanged(DisplayChange::Sound);
            Q_EMIT SoundLoadingDone(reason == kOk ? 1 : 0);
        });
    });
}

void Editor::SoundPlay() {
    if (SoundPlayRange(0, -1) != kOk) events_.post([this] { Q_EMIT SoundPlaybackStopped(); });
}

qint32 Editor::SoundPlayRange(qint32 beginMs, qint32 endMs) {
    if (!sound_.timeline) return refuse(Operation::Play, {kNoSound});
    const auto stretch = Stretch::of(beginMs, endMs, sound_.durationMs());
    if (!stretch || stretch->reversed()) return refuse(Operation::Play, {kBadRange});
    const Reason reason = attempt([&] {
        sound_.timeline->source()->checkUnchanged();
        playback_.play(*sound_.timeline, stretch->firstIn(*sound_.timeline),
                       stretch->endIn(*sound_.timeline));
    });
    if (reason == kOk) return kOk;
    playback_.stop();
    return refuse(Operation::Play, reason);
}

qint64 Editor::exportBytes(qint32 frequencyHz, qint32 channels, qint64 lengthMs) const {
    sound::OutputFormat output;
    if (outputFormat(formats_, frequencyHz, channels, output) != kOk) return -1;
    return bytesOf(output, lengthMs);
}

qint32 Editor::SoundExport(qint32 frequencyHz, qint32 channels, qint32, qint32 beginMs,
                           qint32 endMs, const QString& path, std::function<bool()> before) {
    if (!sound_.timeline) return refuse(Operation::Export, {kNoSound}, path);
    sound::OutputFormat output;
    const ErrorCode code = outputFormat(formats_, frequencyHz, channels, output);
    if (code != kOk) return refuse(Operation::Export, {code}, path);
    const auto stretch = Stretch::of(beginMs, endMs, sound_.durationMs());
    if (path.isEmpty() || !stretch) return refuse(Operation::Export, {kBadRange}, path);
    exports_.add(*sound_.timeline, stretch->firstIn(*sound_.timeline),
                 stretch->endIn(*sound_.timeline), output, path, std::move(before));
    return kOk;
}

void Editor::exportDone(const Reason& reason, const QString& path, bool forgotten) {
    if (forgotten) {
        if (!(reason == kOk))
            Q_EMIT lateExportFailed({Operation::Export, path, reason.code, reason.systemError});
        return;
    }
    fail(Operation::Export, reason, path);
    Q_EMIT SoundExportDone(reason == kOk ? 1 : 0);
}

}  // namespace tarnwick::engine
