#include "platform/desktop_opener.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <QDir>
#include <QTemporaryDir>

#include "platform/program_folder.h"
#include "runtime/file_names.h"
#include "support/files.h"
#include "support/wait_until.h"

using namespace tarnwick;

namespace {

TEST(DesktopOpener, HandsOverWhatIsThereAndIsSilentAboutTheRest) {
    const QTemporaryDir desktop;
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", desktop.path().toLocal8Bit());
    const auto backAgain = qScopeGuard([&] { qputenv("PATH", path); });
    const QString odd = desktop.filePath(u"-a #1 100% \"b\" 'é' $x;?&"_qs);
    ASSERT_TRUE(QDir().mkdir(odd));
    const QString noText = odd + u'/' + runtime::textOfFileName("\xff.pdf");
    std::filesystem::create_directory(runtime::pathOf(noText));
    const auto tidied = qScopeGuard([&] { std::filesystem::remove_all(runtime::pathOf(odd)); });
    const QString noted = desktop.filePath(u"noted"_qs);
    platform::DesktopOpener opener;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    opener.open(odd);  // no opener is installed

    const QString script = desktop.filePath(u"xdg-open"_qs);
    test::writeFile(script, "#!/bin/sh\necho noise; echo noise >&2\nprintf '%s\\n' \"$#:$1\" >> '" +
                                noted.toLocal8Bit() + "'\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner);
    for (const QString& none : {u""_qs, u"."_qs, u"-v"_qs, odd + u'x', u"mailto:a@b"_qs})
        opener.open(none);
    QByteArray expected;
    for (const QString& target : {odd, noText, u"https://tarnwick.example/a?b=c#d"_qs}) {
        opener.open(target);
        expected += "1:" + QByteArray::fromStdString(runtime::bytesOfFileName(target)) + '\n';
        EXPECT_TRUE(test::waitUntil([&] { return test::contentOf(noted) == expected; }, 5000));
    }
    EXPECT_EQ(testing::internal::GetCapturedStdout() + testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "no child is left behind";
}

TEST(ProgramFolder, IsWhereTheExecutableLiesWhateverBytesItHas) {
    EXPECT_EQ(platform::programFolder(), QCoreApplication::applicationDirPath());
    EXPECT_EQ(platform::programFolder("/nowhere"), QCoreApplication::applicationDirPath());
    const QTemporaryDir folder;
    const std::string link = folder.path().toStdString() + "/exe";
    for (const char* place : {"/a\xff\xc3", "/\xef\xbb\xbf.x", "/"}) {
        std::filesystem::create_symlink(std::filesystem::path(place) / "Tarnwick", link);
        EXPECT_EQ(runtime::bytesOfFileName(platform::programFolder(link)), place);
        std::filesystem::remove(link);
    }
}

}  // namespace
