#include "platform/disk.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QTemporaryDir>
#include <csignal>

#include "platform/desktop_open_dialog.h"
#include "support/fault_of.h"
#include "support/files.h"

using namespace tarnwick;
using test::faultOf;

namespace {

struct DiskTest : ::testing::Test {
    QTemporaryDir folder;
    platform::Disk disk;

    QString at(const QString& name) const { return folder.filePath(name); }
    void write(const QString& name, const QByteArray& bytes) const {
        test::writeFile(at(name), bytes);
    }
    QByteArray read(const QString& name) const { return test::contentOf(at(name)); }
    QStringList names() const {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(DiskTest, ListsWithoutRegardToCase) {
    for (const QString& name : {u"b.XLS"_qs, u"A.xls"_qs, u"c.xlsx"_qs, u"a.wav"_qs, u".h.xls"_qs})
        write(name, "x");
    EXPECT_EQ(disk.list(folder.path(), u"*.xls"_qs), QStringList({u"A.xls"_qs, u"b.XLS"_qs}));
    EXPECT_EQ(disk.list(folder.path(), u"*.xlsx"_qs), QStringList({u"c.xlsx"_qs}));
    EXPECT_TRUE(disk.list(at(u"gone"_qs), u"*"_qs).isEmpty());
    for (const QString& name : {u"take"_qs, u"take."_qs, u"b.w[v]"_qs, u"b.wv"_qs})
        write(name, "x");
    EXPECT_EQ(disk.list(folder.path(), u"*."_qs), QStringList({u"take"_qs}));
    EXPECT_EQ(disk.list(folder.path(), u"?.w[v]"_qs), QStringList({u"b.w[v]"_qs}));
}

TEST_F(DiskTest, CopiesOverWhatIsThere) {
    const QByteArray big(3'000'000, 'q');
    write(u"a"_qs, big);
    write(u"b"_qs, "old");
    disk.CopyFile(at(u"a"_qs), at(u"b"_qs));
    EXPECT_EQ(read(u"b"_qs), big);
    EXPECT_EQ(faultOf([&] { disk.CopyFile(at(u"no"_qs), at(u"c"_qs)); }), u"File not found");
    EXPECT_EQ(faultOf([&] { disk.CopyFile(at(u"a"_qs), at(u"no/c"_qs)); }), u"Path not found");
    EXPECT_EQ(names(), QStringList({u"a"_qs, u"b"_qs}));
}

TEST_F(DiskTest, ACopyThatRunsOutOfSpaceLeavesTheOldFileAndNoLitter) {
    write(u"a"_qs, QByteArray(200'000, 'q'));
    write(u"b"_qs, "old");
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 65536;  // further writes fail as they do on a full disk
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    const QString fault = faultOf([&] { disk.CopyFile(at(u"a"_qs), at(u"b"_qs)); });
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_NE(fault, u"none");
    EXPECT_EQ(read(u"b"_qs), "old");
    EXPECT_EQ(names(), QStringList({u"a"_qs, u"b"_qs}));
}

TEST_F(DiskTest, MovesIntoAFolderButNeverOverAFile) {
    write(u"a"_qs, "new");
    disk.createFolder(at(u"F"_qs));
    disk.MoveFile(at(u"a"_qs), at(u"F"_qs) + QDir::separator());
    EXPECT_EQ(read(u"F/a"_qs), "new");
    write(u"a"_qs, "second");
    EXPECT_EQ(faultOf([&] { disk.MoveFile(at(u"a"_qs), at(u"F/"_qs)); }), u"File already exists");
    EXPECT_EQ(read(u"F/a"_qs), "new");
    EXPECT_EQ(read(u"a"_qs), "second");
    EXPECT_EQ(faultOf([&] { disk.MoveFile(at(u"gone"_qs), at(u"F/"_qs)); }), u"File not found");
    EXPECT_NE(faultOf([&] { disk.createFolder(at(u"F"_qs)); }), u"none");
}

TEST_F(DiskTest, AnOpenDialogForRecordingsOffersTheOnlyOne) {
    const QStringList sounds{u"Audio Files (*.wav)"_qs, u"All Files (*)"_qs};
    const QStringList texts{u"Scripts (*.TXT)"_qs, u"Audio Files (*.wav)"_qs};
    write(u"a.mp3"_qs, "x");
    EXPECT_EQ(platform::readyName(folder.path(), sounds), u"a.mp3");
    EXPECT_EQ(platform::readyName(folder.path(), texts), QString());
    write(u"b.wav"_qs, "x");
    EXPECT_EQ(platform::readyName(folder.path(), sounds), QString());
}

TEST(OpenDialog, UnderstandsTheClassicFilters) {
    EXPECT_EQ(platform::nameFilters(u"Audio Files (*.wav)|*.wav"_qs),
              QStringList(u"Audio Files (*.wav)"_qs));
    EXPECT_EQ(platform::nameFilters(u"Audio Files (*.aif; *.aiff)|*.aif; *aiff|"_qs),
              QStringList(u"Audio Files (*.aif *aiff)"_qs));
}

}  // namespace
