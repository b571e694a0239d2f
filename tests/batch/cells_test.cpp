#include <QProcess>
#include <map>

#include "desk.h"
#include "engine/create_sound_editor.h"
#include "support/wav_samples.h"

using namespace tarnwick;

namespace {

constexpr int kRates[] = {8000, 11025, 22050, 32000, 44100, 48000, 96000, 192000};

// Writes a second of sound with every choice that the window offers.
struct Cells : test::BatchDesk {
    std::unique_ptr<engine::SoundEditor> editor = engine::createSoundEditor();
    batch::Services services{desk.failure, state,      database, desk.boxes, cmdlg,
                             files,        desk.clock, EDT,      *editor,    [] {}};
    batch::Trace trace{*form.txbDebug};
    batch::OutputEncoding output{form, run, services, trace};
    std::map<QString, QString>
        cells;  // "codec rate channels" by file name; of MP3 also the bit rate

    void SetUp() override {
        BatchDesk::SetUp();
        const QString take = desk.folder.filePath(u"take.wav"_qs);
        test::writeFile(take, test::wavFile(test::wave(1000, 9000)));
        editor->LoadSound(take);
        ASSERT_TRUE(test::waitUntil([&] { return editor->GetSoundDuration() == 1000; }));
        ASSERT_EQ(std::size(kRates), form.opFrequency.size());
    }
    void write(const QString& extension, const QString& cell) {
        const QString stem = QString::number(cells.size());
        run.vsFiles = QStringList{stem + u".wav"_qs};
        output.EDTX_Export_File();
        ASSERT_EQ(run.nResult, engine::kOk) << qPrintable(cell);
        cells[stem + extension] = cell;
    }
    // Calls `write` with each rate and each choice of channels: "44100 mono".
    void writeRates(std::size_t rates, const std::function<void(QString)>& write) {
        for (std::size_t rate = 0; rate < rates; ++rate)
            for (std::size_t channels = 0; channels < form.opChannel.size(); ++channels) {
                form.opFrequency[rate]->setChecked(true);
                form.opChannel[channels]->setChecked(true);
                write(u"%1 %2"_qs.arg(kRates[rate]).arg(channels == 0 ? u"mono"_qs : u"stereo"_qs));
            }
    }
    void writeDepths(std::size_t format, const QString& extension, const QStringList& codecs) {
        form.opFormat[format]->setChecked(true);
        ASSERT_EQ(std::size(codecs), form.opRate.size());
        writeRates(form.opFrequency.size(), [&](const QString& rate) {
            for (std::size_t depth = 0; depth < form.opRate.size(); ++depth) {
                form.opRate[depth]->setChecked(true);
                write(extension, codecs[static_cast<qsizetype>(depth)] + u' ' + rate);
            }
        });
    }
    void writeMp3() {
        form.opFormat[1]->setChecked(true);
        writeRates(batch::kMp3Frequencies, [&](const QString& rate) {
            ASSERT_GT(form.cbxOutputCBR->count(), 3);
            for (int i = 0; i < form.cbxOutputCBR->count(); ++i) {
                form.cbxOutputCBR->setCurrentIndex(i);
                write(u".mp3"_qs, u"mp3 %1 %2"_qs.arg(
                                      rate, form.cbxOutputCBR->currentText().section(u' ', 0, 0)));
            }
        });
    }
    void writeCodecs() {
        const QStringList codecs{u"pcm"_qs,           u"pcm_alaw"_qs, u"pcm_mulaw"_qs,
                                 u"adpcm_ima_wav"_qs, u"adpcm_ms"_qs, u"gsm_ms"_qs};
        form.opFormat[2]->setChecked(true);
        ASSERT_EQ(form.cbxCodecs->count(), codecs.size());
        for (int codec = 0; codec < codecs.size(); ++codec) {
            form.cbxCodecs->setCurrentIndex(codec);
            ASSERT_GT(form.cbxCodecFormats->count(), 0);
            for (int i = 0; i < form.cbxCodecFormats->count(); ++i) {
                form.cbxCodecFormats->setCurrentIndex(i);
                const QString name =
                    form.cbxCodecFormats->currentText();  // "8.000 kHz, 8 Bit, Mono"
                const QString bits = name.section(u", "_qs, 1, 1).section(u' ', 0, 0);
                const QString depth = codec != 0     ? QString()
                                      : bits == u"8" ? u"_u8"_qs
                                                     : u"_s%1le"_qs.arg(bits);
                write(u".wav"_qs, codecs[codec] + depth + u' ' +
                                      name.left(name.indexOf(u' ')).remove(u'.') + u' ' +
                                      name.section(u", "_qs, -1).toLower());
            }
        }
    }
    // What ffmpeg says about every file in the project folder, all in one process.
    QString probed() const {
        QStringList arguments{u"-hide_banner"_qs};
        for (const auto& [name, cell] : cells)
            arguments << u"-i"_qs << name;
        QProcess ffmpeg;
        ffmpeg.setWorkingDirectory(project.path());
        ffmpeg.start(u"ffmpeg"_qs, arguments);
        EXPECT_TRUE(ffmpeg.waitForFinished(120'000));
        return QString::fromUtf8(ffmpeg.readAllStandardError());
    }
};

TEST_F(Cells, EveryChoiceOfTheWindowIsWrittenAsItsName) {
    writeDepths(0, u".wav"_qs,
                {u"pcm_u8"_qs, u"pcm_s16le"_qs, u"pcm_s24le"_qs, u"pcm_s32le"_qs, u"pcm_f32le"_qs});
    writeDepths(3, u".aiff"_qs,
                {u"pcm_s8"_qs, u"pcm_s16be"_qs, u"pcm_s24be"_qs, u"pcm_s32be"_qs, u"pcm_f32be"_qs});
    const std::size_t exact = cells.size();  // the others may fill their last block
    writeMp3();
    writeCodecs();
    ASSERT_TRUE(test::waitUntil([&] { return editor->SoundExportsPending() == 0; }, 120'000));
    static const QRegularExpression told(
        u"from '([^']+)':\\n(?:  Metadata:\\n(?:    .*\\n)*)?  Duration: 00:00:(\\d+.\\d+).*\\n"
        u"  Stream .*: Audio: (\\w+)[^,]*, (\\d+) Hz, (mono|stereo),.*, (\\d+) kb/s"_qs);
    auto found = told.globalMatch(probed());
    std::size_t files = 0;
    for (; found.hasNext(); ++files) {
        const QRegularExpressionMatch file = found.next();
        const QString name = file.captured(1);
        QString cell = u"%1 %2 %3"_qs.arg(file.captured(3), file.captured(4), file.captured(5));
        if (name.endsWith(u".mp3")) cell += u' ' + file.captured(6);
        EXPECT_EQ(cell, cells.at(name));
        const double longest = name.section(u'.', 0, 0).toUInt() < exact ? 0.012 : 0.261;
        const double longer = file.captured(2).toDouble() - 1.0;
        EXPECT_TRUE(longer > -0.011 && longer < longest) << file.captured().toStdString();
    }
    EXPECT_EQ(files, cells.size());
}

}  // namespace
