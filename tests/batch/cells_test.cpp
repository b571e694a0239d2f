#include <QProcess>
#include <map>

#include "desk.h"
#include "engine/create_sound_editor.h"
#include "support/wav_samples.h"

using namespace tarnwick;

namespace {

constexpr int kRates[] = {8000, 11025, 22050, 32000, 44100, 48000, 96000, 192000};

// What a file has to be, as ffprobe tells it.
struct Cell {
    QString codec;
    int rate = 0;
    int channels = 0;
    int bitRate = 0;   // 0 where the codec settles it
    int longerMs = 1;  // what a codec may add to fill its last block
};

// Writes a second of sound with every choice that the window offers.
struct Cells : test::BatchDesk {
    std::unique_ptr<engine::SoundEditor> editor = engine::createSoundEditor();
    batch::Services services{desk.failure, state,      database, desk.boxes, cmdlg,
                             files,        desk.clock, EDT,      *editor,    [] {}};
    batch::Trace trace{*form.txbDebug};
    batch::OutputEncoding output{form, run, services, trace};
    std::map<QString, Cell> cells;  // by file name

    void SetUp() override {
        BatchDesk::SetUp();
        test::writeFile(desk.folder.filePath(u"take.wav"_qs),
                        test::wavFile(test::wave(1000, 9000)));
        bool loaded = false;
        QObject::connect(editor.get(), &engine::SoundEditor::SoundLoadingDone,
                         [&](qint32 result) { loaded = result != 0; });
        editor->LoadSound(desk.folder.filePath(u"take.wav"_qs));
        ASSERT_TRUE(test::waitUntil([&] { return loaded; }));
    }
    void write(const QString& extension, const Cell& cell) {
        const QString stem = QString::number(cells.size());
        run.vsFiles = QStringList{stem + u".wav"_qs};
        output.EDTX_Export_File();
        ASSERT_EQ(run.nResult, engine::kOk) << cell.codec.toStdString() << ' ' << cell.rate;
        cells[stem + extension] = cell;
    }
    // Of each rate, with each choice of channels.
    void writeRates(std::size_t rates, const std::function<void(Cell)>& write) {
        ASSERT_EQ(std::size(kRates), form.opFrequency.size());
        for (std::size_t rate = 0; rate < rates; ++rate)
            for (std::size_t channels = 1; channels <= form.opChannel.size(); ++channels) {
                form.opFrequency[rate]->setChecked(true);
                form.opChannel[channels - 1]->setChecked(true);
                write({.codec = {}, .rate = kRates[rate], .channels = static_cast<int>(channels)});
            }
    }
    void writeDepths(std::size_t format, const QString& extension, const QStringList& codecs) {
        form.opFormat[format]->setChecked(true);
        ASSERT_EQ(std::size(codecs), form.opRate.size());
        writeRates(form.opFrequency.size(), [&](Cell cell) {
            for (std::size_t depth = 0; depth < form.opRate.size(); ++depth) {
                form.opRate[depth]->setChecked(true);
                cell.codec = codecs[static_cast<qsizetype>(depth)];
                write(extension, cell);
            }
        });
    }
    void writeMp3() {
        form.opFormat[1]->setChecked(true);
        writeRates(batch::kMp3Frequencies, [&](Cell cell) {
            ASSERT_GT(form.cbxOutputCBR->count(), 3);
            for (int i = 0; i < form.cbxOutputCBR->count(); ++i) {
                form.cbxOutputCBR->setCurrentIndex(i);
                cell.codec = u"mp3"_qs;
                cell.bitRate = form.cbxOutputCBR->currentText().section(u' ', 0, 0).toInt() * 1000;
                cell.longerMs = 250;
                write(u".mp3"_qs, cell);
            }
        });
    }
    void writeCodecs() {
        const QStringList codecs{u"pcm_*"_qs,         u"pcm_alaw"_qs, u"pcm_mulaw"_qs,
                                 u"adpcm_ima_wav"_qs, u"adpcm_ms"_qs, u"gsm_ms"_qs};
        form.opFormat[2]->setChecked(true);
        ASSERT_EQ(form.cbxCodecs->count(), codecs.size());
        for (int codec = 0; codec < codecs.size(); ++codec) {
            form.cbxCodecs->setCurrentIndex(codec);
            ASSERT_GT(form.cbxCodecFormats->count(), 0);
            for (int i = 0; i < form.cbxCodecFormats->count(); ++i) {
                form.cbxCodecFormats->setCurrentIndex(i);
                const QString name = form.cbxCodecFormats->currentText();
                const double kilohertz = name.section(u' ', 0, 0).toDouble();
                write(u".wav"_qs, {.codec = codecs[codec],
                                   .rate = static_cast<int>(std::lround(kilohertz * 1000.0)),
                                   .channels = name.endsWith(u"Mono"_qs) ? 1 : 2,
                                   .longerMs = 250});
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
        const std::string line = file.captured().toStdString();
        const Cell& cell = cells.at(file.captured(1));
        EXPECT_TRUE(QRegularExpression(QRegularExpression::wildcardToRegularExpression(cell.codec))
                        .match(file.captured(3))
                        .hasMatch())
            << line;
        EXPECT_EQ(file.captured(4).toInt(), cell.rate) << line;
        EXPECT_EQ(file.captured(5), cell.channels == 1 ? u"mono" : u"stereo") << line;
        const double longer = file.captured(2).toDouble() - 1.0;
        EXPECT_TRUE(longer > -0.011 && longer < cell.longerMs / 1000.0 + 0.011) << line;
        if (cell.bitRate != 0) {
            EXPECT_EQ(file.captured(6).toInt() * 1000, cell.bitRate) << line;
        }
    }
    EXPECT_EQ(files, cells.size());
}

}  // namespace
