#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <QtEndian>
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
    const auto number = [&](auto value) {
        value = qToLittleEndian(value);
        file.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    const auto bytes = static_cast<quint32>(samples.size() * 3);
    file.append("RIFF");
    number(36 + bytes);
    file.append("WAVEfmt ");
    number(quint32{16});
    for (const quint16 word : {1, 1})
        number(word);
    for (const quint32 rate : {kRate, kRate * 3})
        number(rate);
    for (const quint16 word : {3, 24})
        number(word);
    file.append("data");
    number(bytes);
    for (const qint32 sample : samples)
        for (const int shift : {0, 8, 16})
            file.append(static_cast<char>(sample >> shift));
    return file;
}

// The samples of a plain 24-bit mono WAV file; nothing for any other.
inline Samples samplesOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) return {};
    const QByteArray all = file.readAll();
    const qsizetype data = all.indexOf("data") + 8;
    if (!all.startsWith("RIFF") || all.mid(22, 2) != QByteArray("\1\0", 2) || all.at(34) != 24)
        return {};
    const auto bytes = qFromLittleEndian<quint32>(all.constData() + data - 4);
    Samples samples;
    for (qsizetype at = data; at + 2 < data + bytes && at + 2 < all.size(); at += 3)
        samples.push_back((static_cast<quint8>(all[at]) | static_cast<quint8>(all[at + 1]) << 8 |
                           static_cast<qint8>(all[at + 2]) * 65536));
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
