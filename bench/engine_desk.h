#pragma once

#include <QApplication>
#include <QEventLoop>
#include <QFile>
#include <chrono>
#include <filesystem>
#include <memory>

#include "engine/create_sound_editor.h"

namespace tarnwick::bench {

// The time that `work` takes, in seconds.
template <class Work>
double secondsOf(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The program off-screen with a sound editor, used as the window does: by calls, and by events
// through the event loop.
class EngineDesk {
    int argc_ = 1;
    char name_[6] = "bench";
    char* argv_[2] = {name_, nullptr};
    const bool offScreen_ = qputenv("QT_QPA_PLATFORM", "offscreen");

  public:
    EngineDesk() { editor->EnableUndo(1); }

    // Runs `start` and the event loop until the signal has been emitted `count` times.
    template <class Sender, class Signal, class Start>
    static void until(Sender& sender, Signal signal, Start start, int count = 1) {
        QEventLoop loop;
        const auto told = [&] {
            if (--count == 0) loop.quit();
        };
        const auto connection =
            QObject::connect(&sender, signal, &loop, told, Qt::DirectConnection);
        start();
        loop.exec();
        QObject::disconnect(connection);
    }

    // Returns false if the recording does not load.
    bool load(const std::filesystem::path& recording) {
        until(*editor, &engine::SoundEditor::SoundLoadingDone,
              [&] { editor->LoadSound(QFile::decodeName(recording.c_str())); });
        return editor->GetSoundDuration() > 0;
    }

    // Starts an edit and waits until the changed sound is analysed.
    template <class Edit>
    void change(Edit edit) {
        until(*editor, &engine::SoundEditor::SoundEditDone, edit);
        until(*editor, &engine::SoundEditor::WaveAnalysisDone,
              [&] { editor->waveform().AnalyzeSound(); });
    }

    const QApplication application{argc_, argv_};
    const std::unique_ptr<engine::SoundEditor> editor = engine::createSoundEditor();
};

}  // namespace tarnwick::bench
