#include <QMdiSubWindow>
#include <cmath>

#include "forms/frm_batch_processor.h"
#include "journey.h"
#include "support/wav_samples.h"

using namespace tarnwick;
using test::Samples;
using test::operator+;

namespace {

constexpr int kThreshold = 1638 * 256;  // -26 dB of a 24-bit sample, as the window computes it

Samples prompt(int head, int level, int tail) {
    return test::wave(head, 40) + test::wave(800, level) + test::wave(tail, 60);
}

// The Batch Processor on a folder of recordings, with the real engine.
struct Batch : test::Launched {
    std::map<QString, QByteArray> sources;

    void put(const QString& name, const QByteArray& bytes) {
        write(name, bytes);
        sources[name] = bytes;
    }
    void open() {
        state.vsProjectFolder = session.path();
        form().mnuBatchProcessor->trigger();
        window().opFrequency[4]->setChecked(true);
        window().opChannel[0]->setChecked(true);
    }
    forms::frmBatchProcessor& window() { return *find<forms::frmBatchProcessor>(); }
    void tickAll() {
        for (QCheckBox* box : {window().chCutEnd, window().chSilenceEnds, window().chNormalize})
            box->setChecked(true);
    }
    bool finished(int count) {
        const QString end = u"%1 Files Have Been Processed!"_qs.arg(count);
        return test::waitUntil([&] { return window().lbConversion->text() == end; }, 60000);
    }
    // Every source is unchanged in Raw_Files, under its own or its temporary name.
    void expectSourcesKept(int inWork = 0) {
        int temporary = 0;
        for (const auto& [name, bytes] : sources) {
            const bool own = files.FileExists(in(u"Raw_Files/"_qs + name));
            temporary += !own;
            EXPECT_EQ(read((own ? u"Raw_Files/"_qs : u"Raw_Files/ZZ_TEMP_"_qs) + name), bytes)
                << name.toStdString();
        }
        EXPECT_EQ(temporary, inWork);
        EXPECT_EQ(files.list(in(u"Raw_Files"_qs), u"*"_qs).size(), std::ssize(sources));
    }
};

// Milliseconds before the first and after the last sample above the threshold.
std::pair<double, double> endsOf(const Samples& samples) {
    const auto loud = [](qint32 sample) { return std::abs(sample) > kThreshold; };
    const auto first = std::find_if(samples.begin(), samples.end(), loud);
    const auto last = std::find_if(samples.rbegin(), samples.rend(), loud);
    const double perMs = test::kRate / 1000.0;
    return {static_cast<double>(first - samples.begin()) / perMs,
            static_cast<double>(last - samples.rbegin()) / perMs};
}

// The sentences of all notices so far.
std::string toldBy(const app::NoticeBoard& board) {
    QStringList whats;
    for (const app::NoticeBoard::Entry& entry : board.entries())
        whats << entry.notice.what;
    return whats.join(u'\n').toStdString();
}

TEST_F(Batch, EveryFileGetsTheRightSilencesAndLevel) {
    put(u"long ends.wav"_qs, test::wavFile(prompt(911, 9000, 1203)));
    put(u"short ends.WAV"_qs, test::wavFile(prompt(120, 3000, 333)));
    put(u"Silence.wav"_qs, test::wavFile(test::wave(2000, 50)));
    put(u"shorter than the cuts.wav"_qs, test::wavFile(test::wave(200, 9000)));
    write(u"script.xlsx"_qs, "not a sound");
    open();
    EXPECT_EQ(window().txbProjectFiles->text(), u"4");
    tickAll();
    window().txbNormdB->setText(u"-1.0"_qs);
    window().cbProcess->click();
    ASSERT_TRUE(finished(4)) << window().txbDebug->toPlainText().toStdString();
    expectSourcesKept();
    EXPECT_EQ(listed(),
              u"long ends.wav|script.xlsx|short ends.wav|shorter than the cuts.wav|Silence.wav");
    for (const QString& name : {u"long ends.wav"_qs, u"short ends.wav"_qs}) {
        const Samples file = test::samplesOf(in(name));
        const auto [head, tail] = endsOf(file);
        EXPECT_NEAR(head, 500.0, 1.0) << name.toStdString();
        EXPECT_NEAR(tail, 500.0, 1.0) << name.toStdString();
        const auto [least, most] = std::minmax_element(file.begin(), file.end());
        const double peak = std::max(-*least, *most) / 8388608.0;
        EXPECT_NEAR(20.0 * std::log10(peak), -1.0, 0.05) << name.toStdString();
    }
    EXPECT_NEAR(static_cast<double>(test::samplesOf(in(u"Silence.wav"_qs)).size()),
                1.0 * test::kRate, 45.0);
    EXPECT_TRUE(boxes().isEmpty());

    window().cbClose->click();
    EXPECT_TRUE(form().isVisible());
    EXPECT_EQ(form().lvAudioDetails->topLevelItemCount(), 0);
    EXPECT_EQ(form().lbStatus->text(), u"Status: Idle");
}

TEST_F(Batch, AnInvalidFileStopsTheRunAndNothingIsLost) {
    put(u"1.wav"_qs, test::wavFile(prompt(100, 9000, 100)));
    put(u"2.wav"_qs, {});
    put(u"3.wav"_qs, test::wavFile(prompt(100, 9000, 100)));
    open();
    window().cbProcess->click();
    ASSERT_TRUE(boxIsShown());
    EXPECT_EQ(boxes(),
              QStringList(u"Cannot load file %1 with error -5"_qs.arg(in(u"Raw_Files/2.wav"_qs))));
    test::pass(400);
    EXPECT_EQ(window().lbConversion->text(), u"Batch Processing File 0 of 3 ...");
    EXPECT_FALSE(window().cbClose->isEnabled());
    expectSourcesKept(1);
    EXPECT_EQ(listed(), u"1.wav");
    const std::string why = "it is not a WAV, AIFF or MP3 file, or there is no sound in it";
    EXPECT_EQ(toldBy(notices),
              "1 of 3 files cannot be loaded, and the run would get stuck there: 2.wav (" + why +
                  ").\nThe batch run is stuck at 2.wav: it could not be loaded: " + why +
                  ". 1 of 3 files was written before that.");

    window().parentWidget()->close();  // with its close button
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(find<forms::frmBatchProcessor>(), nullptr);
    EXPECT_TRUE(form().isVisible());
    form().mnuBatchProcessor->trigger();
    EXPECT_TRUE(boxes().value(0).startsWith(u"The Project folder cannot contain"));
    EXPECT_FALSE(window().cbProcess->isHidden());
    EXPECT_THROW(window().cbProcess->click(), test::ProcessEnded);
    EXPECT_TRUE(
        desk.log().contains("frmBatchProcessor.cbProcess_Click: Subscript out of range, Line "));
}

TEST_F(Batch, ClosingTheWindowDuringARunLeavesOnlyCompleteFiles) {
    for (int i = 1; i <= 4; ++i)
        put(u"%1.wav"_qs.arg(i), test::wavFile(prompt(100 * i, 9000, 100)));
    open();
    tickAll();
    window().cbProcess->click();
    ASSERT_TRUE(test::waitUntil([&] { return files.FileExists(in(u"2.wav"_qs)); }));
    window().close();  // the form itself, not its child window
    EXPECT_TRUE(form().isVisible());
    test::pass(700);
    expectSourcesKept(1);
    EXPECT_EQ(listed(), u"1.wav|2.wav");
    for (const QString& name : {u"1.wav"_qs, u"2.wav"_qs})
        EXPECT_NEAR(endsOf(test::samplesOf(in(name))).second, 500.0, 1.0);
}

}  // namespace
