#include "platform/disk.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <csignal>
#include <cstdlib>
#include <fstream>

#include "platform/desktop_open_dialog.h"
#include "platform/disk_fault.h"
#include "support/fault_of.h"
#include "support/files.h"
#include "support/plain_user.h"

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
    void write(const QStringList& names) const {
        for (const QString& name : names)
            write(name, "x");
    }
    QByteArray read(const QString& name) const { return test::contentOf(at(name)); }
    QString listed(const QString& patterns) const {
        return disk.list(folder.path(), patterns.split(u';')).join(u' ');
    }
    // The outcome: the fault, or "none".
    QString copied(const QString& from, const QString& to) {
        return faultOf([&] { disk.CopyFile(at(from), at(to)); });
    }
    QString moved(const QString& from, const QString& to) {
        return faultOf([&] { disk.MoveFile(at(from), at(to)); });
    }
    struct stat statusOf(const QString& name) const {
        struct stat state {};
        EXPECT_EQ(stat(at(name).toStdString().c_str(), &state), 0);
        return state;
    }
    bool dated(const QString& name, qint64 seconds) {
        return disk.setDateLastModified(at(name), QDateTime::fromSecsSinceEpoch(seconds));
    }
    QStringList names() const {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
};

TEST_F(DiskTest, ListsWithoutRegardToCase) {
    write({u"b.XLS"_qs, u"A.xls"_qs, u"c.xlsx"_qs, u"a.wav"_qs, u".h.xls"_qs});
    EXPECT_EQ(listed(u"*.xls"_qs), u"A.xls b.XLS");
    EXPECT_EQ(listed(u"*.xlsx"_qs), u"c.xlsx");
    EXPECT_TRUE(disk.list(at(u"gone"_qs), u"*"_qs).isEmpty());
    write({u"take"_qs, u"take."_qs, u"b.w[v]"_qs, u"b.wv"_qs});
    EXPECT_EQ(listed(u"*."_qs), u"take");
    EXPECT_EQ(listed(u"?.w[v]"_qs), u"b.w[v]");
}

TEST(DiskFault, KeepsTheClassicWordsAndNamesTheTrueCause) {
    const std::tuple<int, QString, QString> cases[] = {
        {EACCES, u"Permission denied"_qs, u"/a"_qs},
        {EROFS, u"Permission denied"_qs, u"/a: the disk is read-only"_qs},
        {ENOSPC, u"Disk full"_qs, u"/a"_qs},
        {EDQUOT, u"Disk full"_qs, u"/a: your disk quota is used up"_qs}};
    for (const auto& [error, words, detail] : cases)
        try {
            platform::throwDiskFault({error, std::generic_category()}, u"/a"_qs);
        } catch (const runtime::Fault& fault) {
            EXPECT_EQ(fault.description(), words);
            EXPECT_EQ(fault.detail(), detail);
        }
}

TEST_F(DiskTest, WildcardsTakeWhatIsCustomary) {
    const QStringList all{u"A.TXT"_qs, u"b.doc"_qs, u"c"_qs, u"d."_qs, u"l\ni.txt"_qs, u"🎤.a.b"_qs};
    write(all + QStringList{u".h.txt"_qs});
    EXPECT_EQ(disk.list(folder.path(), u"*.*"_qs), all);
    EXPECT_EQ(disk.list(folder.path(), u"*"_qs), all);
    EXPECT_EQ(listed(u"*.txt;*.doc;*.t*"_qs), u"A.TXT b.doc l\ni.txt");
    const std::pair<QString, QString> cases[] = {{u"*.txt; *.doc"_qs, u"A.TXT l\ni.txt"_qs},
                                                 {u"c.*"_qs, u"c"_qs},
                                                 {u".*"_qs, u".h.txt"_qs},
                                                 {u"?.a.?"_qs, u"🎤.a.b"_qs},
                                                 {u"*.*.b;?.a"_qs, u"🎤.a.b"_qs},
                                                 {u"*b.*"_qs, u"b.doc"_qs},
                                                 {u"*.d*"_qs, u"b.doc"_qs},
                                                 {u"*a*b"_qs, u"🎤.a.b"_qs},
                                                 {u"?"_qs, u"c"_qs},
                                                 {u""_qs, u""_qs}};
    for (const auto& [patterns, names] : cases)
        EXPECT_EQ(listed(patterns), names) << patterns.toStdString();
}

TEST_F(DiskTest, NamesThatAreNoTextAreListedAndMovedAsTheyAre) {
    const std::string bytes = folder.path().toStdString() + "/a\xff'\"\n.wav";
    std::ofstream(bytes) << "sound";
    const QString name = disk.list(folder.path(), u"*.wav"_qs).value(0);
    ASSERT_TRUE(disk.FileExists(at(name)));
    disk.createFolder(at(name) + u"_d"_qs);
    EXPECT_EQ(disk.listFolders(folder.path()), QStringList(name + u"_d"_qs));
    disk.MoveFile(at(name), at(u"p_"_qs + name));
    disk.CopyFile(at(u"p_"_qs + name), at(name));
    EXPECT_EQ(disk.list(folder.path(), u"*"_qs), QStringList({name, u"p_"_qs + name}));
    EXPECT_TRUE(std::filesystem::exists(bytes));
    std::filesystem::remove_all(folder.path().toStdString());  // Qt would leave them behind
}

TEST_F(DiskTest, OnlyTheDateOfLastModificationIsSet) {
    write(u"a"_qs, "x");
    const timespec times[] = {{.tv_sec = 1000, .tv_nsec = 5}, {.tv_sec = -5, .tv_nsec = 999999999}};
    ASSERT_EQ(utimensat(AT_FDCWD, at(u"a"_qs).toStdString().c_str(), times, 0), 0);
    EXPECT_EQ(disk.DateLastModified(at(u"a"_qs)).toMSecsSinceEpoch(), -5000);
    EXPECT_TRUE(dated(u"a"_qs, -7));
    const struct stat state = statusOf(u"a"_qs);
    EXPECT_EQ(state.st_atim.tv_sec, 1000);
    EXPECT_EQ(state.st_atim.tv_nsec, 5);
    EXPECT_EQ(state.st_mtim.tv_sec, -7);
    EXPECT_EQ(state.st_mtim.tv_nsec, 0);
    EXPECT_FALSE(dated(u"gone"_qs, 7));
    for (const QString& other : {at(u"gone"_qs), folder.path()})
        EXPECT_EQ(faultOf([&] { disk.DateLastModified(other); }), u"File not found");
}

TEST_F(DiskTest, SizesAndFreeSpaceAreKnownOfWhatIsThere) {
    write(u"a"_qs, "four");
    EXPECT_EQ(disk.fileBytes(at(u"a"_qs)), 4);
    EXPECT_EQ(disk.fileBytes(at(u"gone"_qs)), 0);
    EXPECT_EQ(disk.fileBytes(folder.path()), 0);
    EXPECT_GT(disk.freeBytes(folder.path()), 0);
    EXPECT_EQ(disk.freeBytes(u"/proc"_qs), 0) << "a volume that nothing fits on";
    EXPECT_EQ(disk.freeBytes(at(u"gone"_qs)), -1);
    EXPECT_EQ(disk.freeBytes({}), -1);
}

TEST_F(DiskTest, WhatMayNotBeWrittenKeepsItsDate) {
    const uid_t owner = test::PlainUser::id();
    const auto date = [&](const QString& name) {
        const test::PlainUser user;
        const bool set = dated(name, 7);
        return set ? QString::number(statusOf(name).st_mtim.tv_sec) : u"no"_qs;
    };
    const std::pair<QString, mode_t> files[] = {{u"own"_qs, 0644}, {u"no"_qs, 0444}};
    for (const auto& [name, mode] : files) {
        write(name, "kept");
        ASSERT_EQ(chmod(at(name).toStdString().c_str(), mode), 0);
        ASSERT_EQ(chown(at(name).toStdString().c_str(), owner, getegid()), 0);
    }
    ASSERT_EQ(chown(folder.path().toStdString().c_str(), owner, getegid()), 0);
    EXPECT_EQ(date(u"own"_qs) + u' ' + date(u"no"_qs), u"7 no");
    EXPECT_EQ(read(u"own"_qs), "kept");
    const std::string pipe = at(u"pipe"_qs).toStdString();
    ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
    EXPECT_FALSE(dated(u"pipe"_qs, 7));
    const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
    EXPECT_FALSE(dated(u"pipe"_qs, 7));
    pollfd end{.fd = reader, .events = POLLIN, .revents = 0};
    EXPECT_EQ(poll(&end, 1, 0), 0) << "the reader saw a writer come and go";
    close(reader);
}

TEST(Paths, AreJoinedAndTakenApartAlsoAtTheRoot) {
    const std::pair<QString, QString> files[] = {{u"/a/b"_qs, u"c"_qs}, {u"/"_qs, u"a.wav"_qs}};
    for (const auto& [folder, name] : files) {
        const QString path = platform::pathIn(folder, name);
        EXPECT_FALSE(path.contains(u"//"));
        EXPECT_EQ(platform::folderOf(path), folder);
    }
    const platform::Disk disk;
    EXPECT_TRUE(disk.FolderExists(platform::folderOf(u"/a.wav"_qs)));
    EXPECT_TRUE(disk.listFolders(platform::folderOf(u"/a.wav"_qs)).contains(u"usr"));
    EXPECT_FALSE(disk.FolderExists({}));
}

TEST_F(DiskTest, DrivesAreTheRootAndPlacesForFiles) {
    const std::pair<QString, bool> mountPoints[] = {
        {u"/"_qs, true},        {u"/mnt/usb"_qs, true},  {u"/run/media/me/usb"_qs, true},
        {u"/devices"_qs, true}, {u"/dev"_qs, false},     {u"/sys/fs/cgroup"_qs, false},
        {u"/run"_qs, false},    {u"/run/lock"_qs, false}};
    for (const auto& [mountPoint, isPlace] : mountPoints)
        EXPECT_EQ(platform::isPlaceForFiles(mountPoint), isPlace) << mountPoint.toStdString();
    const QStringList drives = disk.drives();
    EXPECT_EQ(drives.value(0), u"/");
    EXPECT_EQ(QStringList(drives).removeDuplicates(), 0);
    for (const QString& drive : drives) {
        EXPECT_TRUE(disk.FolderExists(drive)) << drive.toStdString();
        EXPECT_FALSE(drive.startsWith(u"/proc") || drive.startsWith(u"/dev"));
    }
}

TEST_F(DiskTest, DrivesAreWatched) {
    int changes = 0;
    auto watch = disk.watchDrives([&] { ++changes; });
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 0);
    const std::string place = folder.path().toStdString();
    if (mount("none", place.c_str(), "tmpfs", 0, nullptr) != 0) GTEST_SKIP() << "needs root";
    EXPECT_TRUE(disk.drives().contains(folder.path()));
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 1);
    ASSERT_EQ(umount(place.c_str()), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(changes, 2);
    watch.reset();
}

TEST_F(DiskTest, HomeIsAFolderInAnyCase) {
    const QByteArray before = qgetenv("HOME");
    const std::pair<QString, QString> homes[] = {{folder.path() + u"//"_qs, folder.path()},
                                                 {at(u"gone"_qs), u"/"_qs},
                                                 {u"."_qs, u"/"_qs},
                                                 {u""_qs, u"/"_qs}};
    for (const auto& [home, shown] : homes) {
        qputenv("HOME", home.toUtf8());
        EXPECT_EQ(disk.homeFolder(), shown) << home.toStdString();
    }
    qputenv("HOME", before);
}

TEST_F(DiskTest, WhyADateCannotBeSetIsKnownBefore) {
    write(u"a"_qs, "x");
    // A running program cannot be written.
    QFile::link(u"/proc/self/exe"_qs, at(u"program"_qs));
    const std::pair<QString, int> cases[] = {{at(u"a"_qs), 0},
                                             {at(u"gone"_qs), ENOENT},
                                             {folder.path(), EISDIR},
                                             {u"/dev/null"_qs, EINVAL},
                                             {at(u"program"_qs), ETXTBSY}};
    for (const auto& [path, reason] : cases) {
        EXPECT_EQ(disk.dateError(path), reason) << path.toStdString();
        int error = -1;
        EXPECT_EQ(disk.setDateLastModified(path, QDateTime::currentDateTime(), error), reason == 0);
        EXPECT_EQ(error, reason) << path.toStdString();
    }
}

TEST_F(DiskTest, CopiesOverWhatIsThere) {
    const QByteArray big((2 << 20) + 1, 'q');
    write(u"a"_qs, big);
    write(u"b"_qs, "old");
    dated(u"a"_qs, 1000);
    disk.CopyFile(at(u"a"_qs), at(u"b"_qs));
    EXPECT_EQ(read(u"b"_qs), big);
    EXPECT_EQ(disk.DateLastModified(at(u"b"_qs)).toSecsSinceEpoch(), 1000);
    chmod(at(u"a"_qs).toStdString().c_str(), 0640);
    disk.CopyFile(at(u"a"_qs), at(u"b"_qs));
    EXPECT_EQ(QFile::permissions(at(u"b"_qs)), QFile::permissions(at(u"a"_qs)));
    EXPECT_EQ(copied(u"no"_qs, u"c"_qs), u"File not found");
    EXPECT_EQ(copied(u"a"_qs, u"no/c"_qs), u"Path not found");
    write(u"b"_qs, "another's");
    EXPECT_EQ(faultOf([&] { disk.copyToNewFile(at(u"a"_qs), at(u"b"_qs)); }),
              u"File already exists");
    EXPECT_EQ(read(u"b"_qs), "another's");
    disk.copyToNewFile(at(u"b"_qs), at(u"c"_qs));
    EXPECT_EQ(read(u"c"_qs), "another's");
    ASSERT_EQ(mkfifo(at(u"d"_qs).toStdString().c_str(), 0666), 0);
    EXPECT_NE(copied(u"d"_qs, u"e"_qs), u"none") << "no waiting";
    EXPECT_EQ(listed(u"*"_qs), u"a b c");
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
    const QString fault = copied(u"a"_qs, u"b"_qs);
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
    EXPECT_EQ(moved(u"a"_qs, u"F/"_qs), u"File already exists");
    EXPECT_EQ(read(u"F/a"_qs), "new");
    EXPECT_EQ(read(u"a"_qs), "second");
    EXPECT_EQ(moved(u"gone"_qs, u"F/"_qs), u"File not found");
    EXPECT_EQ(moved(u"F"_qs, u"G"_qs), u"File not found");
    EXPECT_EQ(moved(u"a"_qs, u"no/"_qs), u"Path not found");
    EXPECT_TRUE(disk.FileExists(at(u"a"_qs)));
    EXPECT_FALSE(disk.FileExists(at(u"gone"_qs)) || disk.FileExists(at(u"F"_qs)));
    EXPECT_NE(faultOf([&] { disk.createFolder(at(u"F"_qs)); }), u"none");
    QFile::link(u"nowhere"_qs, at(u"link"_qs));
    disk.MoveFile(at(u"link"_qs), at(u"F/"_qs));
    EXPECT_TRUE(QFileInfo(at(u"F/link"_qs)).isSymLink());
}

TEST_F(DiskTest, AnOpenDialogForRecordingsOffersTheOnlyOne) {
    const QStringList sounds{u"Audio Files (*.wav)"_qs, u"All Files (*)"_qs};
    const QStringList texts{u"Scripts (*.TXT)"_qs, u"Audio Files (*.wav)"_qs};
    write(u"a.mp3"_qs, "x");
    EXPECT_EQ(platform::readyName(folder.path(), sounds), u"a.mp3");
    EXPECT_EQ(platform::readyName(folder.path(), texts), QString());
    write(u"b.wav"_qs, "x");
    EXPECT_EQ(platform::readyName(folder.path(), sounds), QString());
    EXPECT_EQ(platform::nameFilters(u"Audio Files (*.wav)|*.wav"_qs),
              QStringList(u"Audio Files (*.wav)"_qs));
    EXPECT_EQ(platform::nameFilters(u"Audio Files (*.aif; *.aiff)|*.aif; *aiff|All|*"_qs),
              QStringList({u"Audio Files (*.aif *aiff)"_qs, u"All (*)"_qs}));
    EXPECT_EQ(platform::nameFilters(u"Excel|*.xls|"_qs), QStringList(u"Excel (*.xls)"_qs));
}

}  // namespace
