#include "segmentation/transport.h"

#include "forms/frm_main.h"
#include "forms/texts.h"
#include "runtime/events.h"
#include "segmentation/row_view.h"
#include "segmentation/selection.h"

namespace tarnwick::segmentation {

Transport::Transport(forms::frmMain& form, const runtime::FailurePath& failure,
                     engine::SoundEditor& EDT, StatusLine& status)
    : form_(form),
      failure_(failure),
      EDT_(EDT),
      status_(status),
      TimerPlaybackPos(*form.TimerPlaybackPos) {
    const auto click = [this](QPushButton* button, auto handler) {
        runtime::onEvent(failure_, button, &QPushButton::clicked, &form_, handler);
    };
    click(form_.CommandPlay, [this] { CommandPlay_Click(); });
    click(form_.CommandPause, [this] { CommandPause_Click(); });
    click(form_.CommandStop, [this] { EDT_.SoundStop(); });
    runtime::onEvent(failure_, &TimerPlaybackPos, &QTimer::timeout, &form_,
                     [this] { TimerPlaybackPos_Timer(); });
    connectEvents();
}

void Transport::connectEvents() {
    const auto event = [this](auto signal, auto handler) {
        runtime::onEvent(failure_, &EDT_, signal, &form_, handler);
    };
    event(&engine::SoundEditor::SoundPlaybackStarted, [this] { EDT_SoundPlaybackStarted(); });
    event(&engine::SoundEditor::SoundPlaybackPaused, [this] { EDT_SoundPlaybackPaused(); });
    event(&engine::SoundEditor::SoundPlaybackEnded, [this] { playbackOver(u"Status8: Idle"_qs); });
    event(&engine::SoundEditor::SoundPlaybackStopped,
          [this] { playbackOver(u"Status11: Idle"_qs); });
}

void Transport::CommandPlay_Click() {
    const Selection selection = selectionOf(EDT_.waveform());
    if (!selection.available) return EDT_.SoundPlay();
    EDT_.SoundPlayRange(selection.begin, selection.begin >= selection.end ? -1 : selection.end);
}

void Transport::CommandPause_Click() {
    form_.CommandPause->text() == u"Pause" ? EDT_.SoundPause() : EDT_.SoundResume();
}

void Transport::EDT_SoundPlaybackStarted() {
    forms::setCaption(form_.CommandPause, u"Pause"_qs);
    status_.started(u"Status10: Playing..."_qs + EDT_.FormatMs(EDT_.GetPlaybackPosition(), 0, 1));
    TimerPlaybackPos.start();
}

void Transport::EDT_SoundPlaybackPaused() {
    forms::setCaption(form_.CommandPause, u"Resume"_qs);
    status_.write(u"Status9: Playback paused"_qs);
}

void Transport::playbackOver(const QString& text) {
    TimerPlaybackPos.stop();
    forms::setCaption(form_.CommandPause, u"Pause"_qs);
    status_.finished(text);
}

void Transport::TimerPlaybackPos_Timer() {
    const qint32 position = EDT_.GetPlaybackPosition();
    const Selection selection = selectionOf(EDT_.waveform());
    const qint32 limit = selection.available ? selection.end : EDT_.GetSoundDuration();
    if (limit == 0) return;
    showPosition(position, limit);
    followPlayHead(position);
}

void Transport::showPosition(qint32 position, qint32 limit) {
    form_.pbWAVFormBuilding->setValue(playedPercent(position, limit));
    const bool paused = form_.CommandPause->text() == u"Resume";
    status_.write((paused ? u"Status14: Paused at "_qs : u"Status15: Playing..."_qs) +
                  EDT_.FormatMs(position, 0, 1));
}

void Transport::followPlayHead(qint32 position) {
    ViewRange now;
    EDT_.waveform().GetDisplayRange(now.begin, now.end);
    if (const auto view = viewAfterJump(position, now))
        EDT_.waveform().SetDisplayRange(view->begin, view->end);
}

}  // namespace tarnwick::segmentation
