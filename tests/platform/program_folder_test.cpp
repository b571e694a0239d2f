#include "platform/program_folder.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <csignal>

#include "runtime/file_names.h"
#include "support/fault_of.h"
#include "support/files.h"
#include "support/plain_user.h"

using namespace tarnwick;

namespace {

namespace fs = std::filesystem;

TEST(ExecutableFolder, IsFoundWhateverBytesItHas) {
    EXPECT_EQ(platform::executableFolder(), QCoreApplication::applicationDirPath());
    EXPECT_EQ(platform::executableFolder("/nowhere"), QCoreApplication::applicationDirPath());
    const QTemporaryDir folder;
    const std::string link = folder.path().toStdString() + "/exe";
    for (const char* place : {"/a\xff\xc3", "/\xef\xbb\xbf.x", "/"}) {
        std::filesystem::create_symlink(std::filesystem::path(place) / "Tarnwick", link);
        EXPECT_EQ(runtime::bytesOfFileName(platform::executableFolder(link)), place);
        std::filesystem::remove(link);
    }
}

// An installation, and the home of one of its users.
class ProgramFolder : public ::testing::Test {
  protected:
    ProgramFolder() {
        fs::permissions(root, fs::perms(0755));
        fs::create_directories(installed);
        for (const char* name : {"Tarnwick.mdb", "Tarnwick_Manual.pdf", "Lame.exe"})
            put(installed / name, std::string("delivered ") + name);
        fs::permissions(installed / "Tarnwick.mdb", fs::perms(0444));
        fs::permissions(installed, fs::perms(0555));
        fs::create_directory(home);
        chownToUser(home);
    }
    ~ProgramFolder() override { fs::permissions(installed, fs::perms(0755)); }

    static void put(const fs::path& file, const std::string& text) {
        test::writeFile(QString::fromStdString(file), QByteArray::fromStdString(text));
    }
    static std::string get(const fs::path& file) {
        return test::contentOf(QString::fromStdString(file)).toStdString();
    }
    static void chownToUser(const fs::path& path) {
        ASSERT_EQ(lchown(path.c_str(), test::PlainUser::id(), getegid()), 0);
    }
    QString found() const {
        const test::PlainUser user;
        return platform::programFolder(QString::fromStdString(installed),
                                       QString::fromStdString(own));
    }
    // The fault of found(), as the operator reads it.
    QString fault() const {
        return test::faultOf([&] { found(); }).replace(QString::fromStdString(own), u"OWN"_qs);
    }

    const QTemporaryDir folder;
    const fs::path root = folder.path().toStdString();
    const fs::path installed = root / "lib";
    const fs::path home = root / "home";
    const fs::path own = home / "share/Tarnwick";
};

TEST_F(ProgramFolder, IsTheExecutablesOwnWhereItCanBeWritten) {
    fs::permissions(installed, fs::perms(0755));
    chownToUser(installed);
    fs::remove(installed / "Tarnwick.mdb");
    EXPECT_EQ(found(), QString::fromStdString(installed));
    EXPECT_FALSE(fs::exists(installed / "Tarnwick.mdb")) << "its loss has a box of its own";
    EXPECT_TRUE(fs::is_empty(home));
    fs::permissions(installed, fs::perms(0755));
    EXPECT_EQ(platform::programFolder(u"/nowhere/at/all"_qs, u"/nowhere"_qs), u"/nowhere/at/all");
}

TEST_F(ProgramFolder, IsElseTheUsersAndGetsWhatItLacks) {
    EXPECT_EQ(found(), QString::fromStdString(own));
    EXPECT_EQ(fs::status(own).permissions(), fs::perms(0700));
    EXPECT_EQ(get(own / "Tarnwick.mdb"), "delivered Tarnwick.mdb");
    EXPECT_NE(fs::status(own / "Tarnwick.mdb").permissions() & fs::perms::owner_write,
              fs::perms::none);
    EXPECT_EQ(fs::read_symlink(own / "Lame.exe"), installed / "Lame.exe");

    // An update, and a user who changed her settings and brought her own encoder.
    put(own / "Tarnwick.mdb", "mine");
    fs::remove(own / "Lame.exe");
    put(own / "Lame.exe", "my encoder");
    fs::permissions(installed, fs::perms(0755));
    fs::rename(installed / "Tarnwick_Manual.pdf", root / "old.pdf");
    put(installed / "Tarnwick_Manual.pdf", "new manual");
    fs::permissions(installed, fs::perms(0555));
    fs::remove(own / "Tarnwick_Manual.pdf");
    fs::create_symlink(root / "old.pdf", own / "Tarnwick_Manual.pdf");
    found();
    EXPECT_EQ(get(own / "Tarnwick.mdb"), "mine");
    EXPECT_EQ(get(own / "Lame.exe"), "my encoder");
    EXPECT_EQ(get(own / "Tarnwick_Manual.pdf"), "new manual");
    EXPECT_EQ(get(root / "old.pdf"), "delivered Tarnwick_Manual.pdf");

    // A folder that lost everything is filled again; an empty installation gives nothing.
    fs::remove_all(own);
    fs::create_directory(own);
    chownToUser(own);
    found();
    EXPECT_EQ(get(own / "Tarnwick.mdb"), "delivered Tarnwick.mdb");
    fs::remove_all(own);
    fs::permissions(installed, fs::perms(0755));
    fs::remove(installed / "Tarnwick.mdb");
    fs::permissions(installed, fs::perms(0555));
    EXPECT_EQ(found(), QString::fromStdString(own));
    EXPECT_FALSE(fs::exists(own / "Tarnwick.mdb"));
}

TEST_F(ProgramFolder, IsNotHalfMadeAndTheReasonIsTold) {
    const auto sentence = [](const QString& reason) {
        return u"Tarnwick cannot keep its settings in the folder\r\nOWN:\r\n%1.\r\n\r\nRemove the "
               u"cause and start Tarnwick again."_qs.arg(reason);
    };
    fs::permissions(home, fs::perms(0555));
    EXPECT_EQ(fault(), sentence(u"permission denied"_qs));
    fs::permissions(home, fs::perms(0755));

    // No room for the database.
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit tight{.rlim_cur = 3, .rlim_max = before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &tight), 0);
    const QString full = fault();
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(full, sentence(u"the file would be larger than is allowed"_qs));
    EXPECT_FALSE(fs::exists(own));

    found();
    fs::permissions(own, fs::perms(0555));
    EXPECT_EQ(fault(), sentence(u"permission denied"_qs));
    fs::remove_all(own);
    put(own, "a file");
    EXPECT_EQ(fault(), sentence(u"another file has that name"_qs));
    EXPECT_EQ(get(own), "a file");
}

TEST_F(ProgramFolder, CanBeMadeByManyProgramsAtTheSameMoment) {
    const std::string delivered(300'000, 'x');
    fs::permissions(installed / "Tarnwick.mdb", fs::perms(0644));
    put(installed / "Tarnwick.mdb", delivered);
    for (int round = 0; round < 10; ++round) {
        for (int program = 0; program < 8; ++program) {
            if (fork() != 0) continue;
            const bool whole = fault() == u"none" && get(own / "Tarnwick.mdb") == delivered &&
                               get(own / "Lame.exe") == "delivered Lame.exe";
            std::_Exit(whole ? 0 : 1);
        }
        int state = 0;
        while (wait(&state) > 0)
            EXPECT_EQ(state, 0);
        EXPECT_EQ(std::distance(fs::directory_iterator(own), {}), 3);
        fs::remove_all(own);
    }
}

}  // namespace
