#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDataStream>
#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QtEndian>
#include <algorithm>
#include <functional>
#include <memory>
#include <vector>

#include "engine/create_sound_editor.h"

namespace tarnwick::engine {

using Samples = std::vector<qint32>;  // 24 bits, one channel

inline constexpr int kRate = 44100;

// `ms` of a square wave; `level` on the scale of 0 to 32767.
inline Samples wave(int ms, int level) {
    Samples samples(static_cast<std::size_t>(ms) * kRate / 1000);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = (i / 20 % 2 ? -level : level) * 256 + static_cast<qint32>(i % 200);
    return samples;
}

inline Samples operator+(Samples first, const Samples& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

inline Samples slice(const Samples& samples, qsizetype first, qsizetype end) {
    return Samples(samples.begin() + first, samples.begin() + end);
}

inline QByteArray wavFile(const Samples& samples) {
    QByteArray file;
    QDataStream out(&file, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto bytes = static_cast<quint32>(samples.size() * 3);
    out.writeRawData("RIFF", 4);
    out << 36 + bytes + bytes % 2;
    out.writeRawData("WAVEfmt ", 8);
    out << quint32{16} << quint16{1} << quint16{1} << quint32{kRate} << quint32{kRate * 3}
        << quint16{3} << quint16{24};
    out.writeRawData("data", 4);
    out << bytes;
    for (const qint32 sample : samples)
        out.writeRawData(reinterpret_cast<const char*>(&sample), 3);
    return bytes % 2 ? file.append('\0') : file;
}

// The samples of a file that an editor wrote.
inline Samples samplesOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray all = file.readAll();
    Samples samples(static_cast<std::size_t>(std::max<qsizetype>(all.size() - 44, 0) / 3));
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = qFromLittleEndian<qint32>(all.constData() + 43 + 3 * i) >> 8;
    EXPECT_EQ(all.left(44), wavFile(samples).left(44)) << qPrintable(path);
    return samples;
}

// An editor on a desk: a folder for files, and everything it reports as lines of text.
class Desk : public testing::Test {
  protected:
    Desk() { renew(); }

    void renew() {
        editor = createSoundEditor();
        editor->EnableUndo(1);
        hear(&SoundEditor::SoundLoadingStarted, "LoadingStarted");
        hear(&SoundEditor::SoundLoadingPerc, "LoadingPerc");
        hear(&SoundEditor::SoundLoadingDone, "LoadingDone");
        hear(&SoundEditor::SoundEditStarted, "EditStarted");
        hear(&SoundEditor::SoundEditPerc, "EditPerc");
        hear(&SoundEditor::SoundEditDone, "EditDone");
        hear(&SoundEditor::WaveAnalysisStarted, "AnalysisStarted");
        hear(&SoundEditor::WaveAnalysisPerc, "AnalysisPerc");
        hear(&SoundEditor::WaveAnalysisDone, "AnalysisDone");
        hear(&SoundEditor::SilencePosDetectionDone, "SilencesDone");
        hear(&SoundEditor::AudibleRangeDetected, "Audible");
        hear(&SoundEditor::SoundExportDone, "ExportDone");
        hear(&SoundEditor::SoundPlaybackStarted, "Started");
        hear(&SoundEditor::SoundPlaybackPaused, "Paused");
        hear(&SoundEditor::SoundPlaybackEnded, "Ended");
        hear(&SoundEditor::SoundPlaybackStopped, "Stopped");
        hear(&SoundEditor::WaveSelectionChanged, "Selection");
        hear(&SoundEditor::WaveRangeChanged, "Range");
        hear(&SoundEditor::WaveMouseNotification, "Mouse");
    }

    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }

    QString make(const char* name, const QByteArray& content) const {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }

    bool pumpUntil(const std::function<bool()>& reached) {
        QElapsedTimer timer;
        timer.start();
        while (!reached())
            if (timer.elapsed() > 20000)
                return false;
            else
                QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return true;
    }
    // Waits until the last event is `line`.
    bool sees(const char* line) {
        const bool seen =
            pumpUntil([&] { return !events.empty() && events.last() == QLatin1String(line); });
        EXPECT_TRUE(seen) << line << " after " << said();
        return seen;
    }
    std::string said() const { return events.join(u", ").toStdString(); }
    void pause(int ms) {
        QElapsedTimer timer;
        timer.start();
        pumpUntil([&] { return timer.elapsed() >= ms; });
    }

    // Loads a recording and forgets the events of that.
    void load(const Samples& samples) {
        ASSERT_EQ(editor->LoadSound(make("take.wav", wavFile(samples))), kOk);
        ASSERT_TRUE(sees("LoadingDone 1"));
        events.clear();
    }
    // Writes a stretch as it is now; its event is still to come.
    qint32 write(const char* name, qint32 beginMs = 0, qint32 endMs = -1) {
        editor->encodeFormats().FormatToUse = kWavContainer;
        editor->encodeFormats().WAV.EncodeMode = kWav24;
        return editor->SoundExport(kRate, 1, 0, beginMs, endMs, path(name));
    }
    Samples written(const char* name, qint32 beginMs = 0, qint32 endMs = -1) {
        events.clear();
        EXPECT_EQ(write(name, beginMs, endMs), kOk);
        EXPECT_TRUE(sees("ExportDone 1"));
        return samplesOf(path(name));
    }
    std::string silences() const {
        QStringList all;
        for (qint32 i = 0; i < editor->SilencePositionsGetCount(); ++i) {
            qint32 start;
            qint32 end;
            editor->SilencePositionsGetRange(i, start, end);
            all << QStringLiteral("%1-%2").arg(start).arg(end);
        }
        return all.join(u' ').toStdString();
    }

    QTemporaryDir folder;
    QStringList events;
    std::unique_ptr<SoundEditor> editor;

  private:
    template <class... Arguments>
    void hear(void (SoundEditor::*signal)(Arguments...), const char* name) {
        QObject::connect(editor.get(), signal, [this, name](Arguments... arguments) {
            QStringList line{QString::fromUtf8(name)};
            (void)(line << ... << QString::number(arguments));
            events << line.join(u' ');
        });
    }
};

}  // namespace tarnwick::engine
