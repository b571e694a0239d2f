#include <sys/resource.h>

#include <QPushButton>
#include <csignal>

#include "journey.h"
#include "support/wav_samples.h"

using namespace tarnwick;
using test::operator+;

namespace {

// Notices about loads and saves that fail on a real disk.
struct LoadNotices : test::Launched {
    void SetUp() override {
        Launched::SetUp();
        writeScript(3);  // the first row is the header
        write(u"take.wav"_qs,
              test::wavFile(test::wave(900, 9000) + test::wave(1800, 100) + test::wave(900, 9000)));
    }
    // The shown notices, which are then dismissed.
    QStringList told() {
        QStringList sentences;
        for (const app::NoticeBoard::Entry& entry : notices.shown())
            sentences << entry.notice.what + u' ' + entry.notice.safe;
        notices.dismiss();
        return sentences;
    }
};

// Limits the size of files in bytes, so that writing a larger file fails as on a full disk.
class SmallFiles {
  public:
    explicit SmallFiles(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit small{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallFiles() { setrlimit(RLIMIT_FSIZE, &before_); }
    SmallFiles(const SmallFiles&) = delete;
    SmallFiles& operator=(const SmallFiles&) = delete;

  private:
    rlimit before_{};
};

TEST_F(LoadNotices, AFailedSaveTellsWhatLiesOnTheDisk) {
    const QByteArray recording = read(u"take.wav"_qs);
    {
        const SmallFiles full(static_cast<rlim_t>(recording.size()) + 10'000);
        load();
        ASSERT_TRUE(settled(2));
    }
    EXPECT_EQ(told(),
              QStringList(u"take.wav was not saved: the file would be larger than is allowed. "
                          u"take.wav is on the disk as it was loaded, without pauses and edits; an "
                          u"untouched copy is take_100.wav in BU_Source_Files."_qs));
    EXPECT_EQ(read(u"take.wav"_qs), recording);
    EXPECT_EQ(read(u"BU_Source_Files/take_100.wav"_qs), recording);

    form().mnuBackupSourceFile->trigger();
    ASSERT_TRUE(settled(2));
    EXPECT_TRUE(told().isEmpty());
    const QByteArray saved = read(u"take.wav"_qs);
    ASSERT_GT(saved.size(), recording.size());
    {
        const SmallFiles full(static_cast<rlim_t>(saved.size()) + 10'000);
        form().txbInsertSilence->setText(u"500"_qs);
        form().cbInsertSilence->click();
        ASSERT_TRUE(test::waitUntil([&] { return !notices.shown().isEmpty(); }));
        ASSERT_TRUE(settled(2));
    }
    EXPECT_EQ(told(),
              QStringList(u"take.wav was not saved: the file would be larger than is allowed. "
                          u"take.wav is on the disk as it was last saved, without the edits "
                          u"made since; a copy of it is take_102.wav in BU_Source_Files."_qs));
    EXPECT_EQ(read(u"take.wav"_qs), saved);
    EXPECT_EQ(read(u"BU_Source_Files/take_102.wav"_qs), saved);
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(LoadNotices, ARecordingThatIsChangedOrBadIsTold) {
    form().chBUSource->setChecked(false);
    load();
    ASSERT_TRUE(settled(2));
    QFile take(in(u"take.wav"_qs));
    ASSERT_TRUE(take.open(QIODevice::ReadWrite) && take.seek(1000));
    take.write("changed");
    take.close();
    form().CommandPlay->click();
    ASSERT_EQ(notices.shown().size(), 1);
    EXPECT_TRUE(told()[0].startsWith(u"Another program has changed take.wav since it was loaded"));

    write(u"take.wav"_qs, "no sound");
    loadAnew();
    EXPECT_EQ(told(), QStringList(u"take.wav was not loaded: it is not a WAV, AIFF or MP3 file, "
                                  u"or there is no sound in it. No sound is loaded now; the "
                                  u"duration and the counts in the window are out of date. "
                                  u"Loading has changed nothing in the file."_qs));
    EXPECT_TRUE(form().lvAudioDetails->toolTip().contains(u"was not loaded"));
    EXPECT_EQ(boxes().size(), 1);
}

}  // namespace
