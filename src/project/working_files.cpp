#include "project/working_files.h"

#include <QCoreApplication>

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "project/empty_list.h"
#include "project/load_notices.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/fault.h"
#include "runtime/numbers.h"
#include "runtime/system_reason.h"

namespace tarnwick::project {

namespace {

constexpr char16_t kBackupFolder[] = u"BU_Source_Files";
constexpr char16_t kRawFolder[] = u"Raw_Files";
constexpr qint32 kBackupFrequency = 44100;  // Hz, independent of the preferences
constexpr qint16 kFirstCopy = 100;
constexpr int kExtensionLength = 4;  // cut from every name, even if its extension is longer

// Dialog filters by source file format: ".wav", ".mp3", ".aiff", "Any".
constexpr std::array<const char16_t*, 4> kFilters{
    u"Audio Files (*.wav)|*.wav", u"Audio Files (*.mp3)|*.mp3",
    u"Audio Files (*.aif; *.aiff)|*.aif; *aiff",
    u"Audio Files (*.wav; *.mp3; *.aif; *aiff)|*.wav; *.mp3; *.aif; *aiff|"};

QString text(const char16_t* literal) { return QString::fromUtf16(literal); }

// The left part of a text. Faults if `length` is negative.
QString leftPart(const QString& whole, qsizetype length) {
    if (length < 0) runtime::invalidCall();
    return whole.left(length);
}

}  // namespace

WorkingFiles::WorkingFiles(forms::frmMain& form, Services services)
    : form_(form),
      services_(std::move(services)),
      reports_(form, {services_.failure, services_.session, services_.EDT, services_.notices}) {
    endExplanationWithRows(form_, services_.failure);
    runtime::onEvent(services_.failure, form_.mnuLoadFiles, &QAction::triggered, form_.mnuLoadFiles,
                     [this] { mnuLoadFiles_Click(); });
    runtime::onEvent(services_.failure, form_.mnuBackupSourceFile, &QAction::triggered,
                     form_.mnuBackupSourceFile, [this] { mnuBackupSourceFile_Click(); });
    runtime::onEvent(services_.failure, &services_.EDT, &engine::SoundEditor::SoundExportDone,
                     &form_, [this](qint32 bResult) {
                         reports_.exportEnded(bResult == 1);
                         if (services_.EDT.SoundExportsPending() == 0) saveWhatWaits();
                     });
}

void WorkingFiles::mnuLoadFiles_Click() {
    loadAnswer([this] { return services_.cmdlg.ShowOpen(); });
}

void WorkingFiles::loadDropped(const Choice& choice) {
    loadAnswer([&choice] { return choice; });
}

// The whole command. `answer` gives the file, or nothing if the operator cancelled.
void WorkingFiles::loadAnswer(const std::function<std::optional<Choice>()>& answer) try {
    services_.startImport();
    emptyList();
    forms::repaintNow(form_);
    chooseFilter();
    const auto choice = answer();
    if (!choice) {
        tellOfEmptyList(u"No recording was chosen, so nothing was loaded."_qs);
        return;
    }
    chosen_ = choice;
    if (!services_.isExporting()) loadWhatWaits();
} catch (const std::exception& error) {
    endedBy(error);
}

void WorkingFiles::loadWhatWaits() try {
    if (const auto choice = std::exchange(chosen_, {})) load(*choice);
} catch (const std::exception& error) {
    endedBy(error);  // the load belongs to the command
}

// A fault ends the command without a message; only a quiet note gives the reason.
void WorkingFiles::endedBy(const std::exception& error) {
    const QString reason = u"Loading ended early: %1."_qs.arg(runtime::reasonOf(error));
    if (!tellOfEmptyList(reason)) services_.notices.note(nothingLoaded(reason));
}

void WorkingFiles::emptyList() {
    rowsAreGone_ = form_.lvAudioDetails->topLevelItemCount() > 0;
    form_.lvAudioDetails->clear();
    if (rowsAreGone_) explainEmptyList(form_, rowsCanComeBack());
}

// Process can bring the rows back only while a sound is loaded.
bool WorkingFiles::tellOfEmptyList(const QString& reason) {
    const bool gone = std::exchange(rowsAreGone_, false) && services_.EDT.GetSoundDuration() > 0;
    if (gone) services_.notices.note(listEmptied(reason));
    return gone;
}

void WorkingFiles::load(const Choice& choice) {
    services_.state.vsProjectFolder = platform::folderOf(choice.FileName);
    const auto holds = [&](const char16_t* folder) {
        return services_.files.FolderExists(
            platform::pathIn(services_.state.vsProjectFolder, text(folder)));
    };
    if (holds(kBackupFolder) || holds(kRawFolder)) {
        services_.boxes.plain(
            u"The Project folder cannot contain a 'BU_Source_Files' or a 'Raw_Files' folder. "
            u"Rename or move outside of the Project folder before proceeding."_qs);
        tellOfEmptyList(u"The chosen recording was not loaded because of its folder."_qs);
        return;
    }
    services_.notices.startSession();
    services_.session.vsWorkingFile = choice.FileTitle;
    form_.txbAudio->setText(choice.FileTitle);
    form_.OpScriptFormat[0]->isChecked() ? services_.Import_Word() : services_.Import_Excel();
}

void WorkingFiles::chooseFilter() {
    for (std::size_t i = 0; i < kFilters.size(); ++i)
        if (form_.opSourceFileFormat[i]->isChecked())
            return services_.cmdlg.setFilter(text(kFilters[i]));
}

void WorkingFiles::Load_Working_Sound() {
    engine::SoundEditor& EDT = services_.EDT;
    const QString& vsWorkingFile = services_.session.vsWorkingFile;
    saveWhatWaits();
    EDT.SoundClose();
    reports_.loadStarts();
    services_.session.vsLoadStage = text(model::kInitialLoad);
    EDT.SetLoadMode(0);
    if (EDT.LoadSound(platform::pathIn(services_.state.vsProjectFolder, vsWorkingFile)) != 0) {
        services_.boxes.plain(u"Cannot load file "_qs + vsWorkingFile + u" due to error "_qs +
                              QString::number(EDT.LastError()));
        return;
    }
    reports_.checkLength(platform::pathIn(services_.state.vsProjectFolder, vsWorkingFile));
    services_.session.loadedFolder = services_.state.vsProjectFolder;
    services_.session.loadedFile = vsWorkingFile;
    services_.session.loadedScript = services_.session.vsScriptFile;
    services_.session.scriptWasThere = services_.files.FileExists(
        platform::pathIn(services_.session.loadedFolder, services_.session.loadedScript));
    form_.mnuBackupSourceFile->setEnabled(true);
    makeBackupFolder();
}

// The folder may exist already. If it cannot be made, the backup itself will fault.
void WorkingFiles::makeBackupFolder() try {
    services_.files.createFolder(
        platform::pathIn(services_.session.loadedFolder, text(kBackupFolder)));
} catch (const std::exception& error) {
    const QString& folder = services_.session.loadedFolder;
    const QString path = platform::pathIn(folder, text(kBackupFolder));
    if (!services_.files.FolderExists(path))
        services_.notices.tell(
            noBackupFolder(folder, runtime::reasonOf(error), services_.files.FileExists(path)));
}

void WorkingFiles::mnuBackupSourceFile_Click() {
    // There is nothing to save until both pauses are added.
    if (services_.session.vsLoadStage != text(model::kEndSilenceAdded)) return;
    backupWaits_ = services_.EDT.SoundExportsPending() > 0;
    if (!backupWaits_) save();
}

void WorkingFiles::saveWhatWaits() {
    if (std::exchange(backupWaits_, false) && services_.EDT.GetSoundDuration() > 0) save();
}

void WorkingFiles::save() {
    engine::SoundEditor& EDT = services_.EDT;
    const model::Session& session = services_.session;
    const QString entered = form_.cbxChannels->currentText();
    const qint32 channels = runtime::withDetail(u"Channels is \"%1\""_qs.arg(entered),
                                                [&] { return runtime::strictLong(entered); });
    EDT.encodeFormats().FormatToUse = engine::kWavContainer;
    EDT.encodeFormats().WAV.EncodeMode = engine::kWav24;
    const QString source = platform::pathIn(session.loadedFolder, session.loadedFile);
    const QString copy = copyName();
    vfBackupCount += 1;
    reports_.saveStarts(copy);
    // If the sound cannot be written in this way, the state on the disk is kept all the same.
    if (EDT.SoundExport(kBackupFrequency, channels, 0, 0, -1, source,
                        copyBeforeSave(source, copy)) == engine::kOk)
        return;
    try {
        services_.files.CopyFile(source, copy);
    } catch (...) {
        copyFailed(source, std::current_exception());
    }
}

// What the engine does before it overwrites the recording. A long recording on a slow disk takes
// minutes to copy, so the window does not wait for it. If the copy fails, the fault is raised in
// the event loop, unless these windows are gone by then.
std::function<bool()> WorkingFiles::copyBeforeSave(const QString& source, const QString& copy) {
    return [this, &files = services_.files, alive = std::weak_ptr(alive_), source, copy] {
        try {
            files.CopyFile(source, copy);
            return true;
        } catch (...) {
            const auto raise = [this, alive, source, error = std::current_exception()] {
                if (!alive.expired())
                    services_.failure.unguarded([&] { copyFailed(source, error); });
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), raise, Qt::QueuedConnection);
            return false;
        }
    };
}

// Raises the error again. A Fault also tells which state of the recording is on the disk.
void WorkingFiles::copyFailed(const QString& source, const std::exception_ptr& error) const try {
    std::rethrow_exception(error);
} catch (const runtime::Fault& fault) {
    if (!services_.files.FileExists(source)) throw;
    throw runtime::Fault(fault.description(),
                         fault.detail() + u"; "_qs + stateOfFile(source, reports_.savedBefore()));
}

QString WorkingFiles::copyName() const {
    const qint16 count = runtime::roundToInteger(vfBackupCount);
    const QString& name = services_.session.loadedFile;
    const QString folder = platform::pathIn(services_.session.loadedFolder, text(kBackupFolder));
    const QString stem = runtime::withDetail(u"the name \"%1\" has no ending"_qs.arg(name), [&] {
        return leftPart(name, name.size() - kExtensionLength);
    });
    return platform::pathIn(
        folder, stem + u'_' + QString::number(runtime::add(kFirstCopy, count)) + u".wav"_qs);
}

}  // namespace tarnwick::project
