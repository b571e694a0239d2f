#include <gtest/gtest.h>

#include <fstream>

#include "runtime/events.h"
#include "runtime/file_names.h"
#include "runtime/guarded.h"
#include "support/fault_of.h"
#include "support/scripted_ports.h"

using namespace tarnwick::runtime;
using tarnwick::test::FailureDesk;
using tarnwick::test::ProcessEnded;

namespace {

TEST(ErrorLog, StampsWhatIsNotBlank) {
    FailureDesk desk;
    desk.failure.Write_Log(u"Program launched"_qs);
    desk.failure.Write_Log(QString());
    desk.failure.Write_Log(u"   "_qs);
    desk.failure.Write_Log(u"\t"_qs);
    desk.failure.Write_Log(u"  inner  and outer "_qs);
    EXPECT_EQ(desk.log(),
              "09:05 Program launched\r\n\r\n   \r\n09:05 \t\r\n09:05   inner  and outer \r\n");
}

TEST(FailurePath, AGuardedFaultLeavesItsRecordAndEnds) {
    FailureDesk desk;
    desk.failure.vsBuild = u"Build 682"_qs;
    const auto procedure = [&](Line& line) {
        line(10);
        line(20);
        typeMismatch();
    };
    EXPECT_THROW(guarded(desk.failure, u"frmMain.Import_Excel: ", procedure), ProcessEnded);
    EXPECT_EQ(desk.log(),
              "09:05 frmMain.Import_Excel: Type mismatch, Line 20\r\n09:05 Build 682\r\n"
              "09:05 Program terminated with error\r\n09:05 07-Mar-2020\r\n\r\n");
    EXPECT_EQ(desk.boxes.shown,
              QStringList(u"An error has occured in the program execution!|"
                          u"Error: frmMain.Import_Excel: Type mismatch, Line 20\r\n\r\nIf this "
                          u"error persists after restarting the program and/or the PC,\r\nplease "
                          u"e-mail the Error.log file (located in the %1 folder)\r\nto "
                          u"support@tarnwick.example for assistance."_qs.arg(desk.folder.path())));
}

TEST(FailurePath, AMissingDatabaseHasItsOwnWords) {
    FailureDesk desk;
    EXPECT_THROW(desk.failure.Database_Missing(), ProcessEnded);
    EXPECT_EQ(desk.log(), "09:05 Database file Tarnwick.mdb must be in " +
                              desk.folder.path().toUtf8() +
                              "\r\n09:05 Program execution terminated - No database!\r\n");
    EXPECT_EQ(desk.boxes.shown.last(),
              u"Database Cannot Be Found!|The database Tarnwick.mdb cannot be found.\r\nIt has "
              u"been moved or renamed.\r\nIt "
              u"must be located in the same directory as Tarnwick.exe.\r\nPlease correct before "
              u"restarting the application.");
}

TEST(FailurePath, AnUnguardedHandlerTakesTheDefaultPathWithoutALogLine) {
    FailureDesk desk;
    QObject sender;
    onEvent(desk.failure, &sender, &QObject::objectNameChanged, &sender,
            [&] { sender.objectName() == u"bad" ? overflow() : void(); });
    sender.setObjectName(u"good"_qs);
    EXPECT_TRUE(desk.boxes.shown.isEmpty());
    EXPECT_THROW(sender.setObjectName(u"bad"_qs), ProcessEnded);
    EXPECT_EQ(desk.boxes.shown, QStringList(u"Tarnwick|Overflow"_qs));
    EXPECT_EQ(desk.log(), "");
}

TEST(FailurePath, AProgramFolderWhoseNameIsNoTextHasItsLogAndIsShownReadably) {
    const QTemporaryDir parent;
    const std::filesystem::path folder = parent.path().toStdString() + "/a\xff b";
    std::filesystem::create_directory(folder);
    FailureDesk desk;
    const FailurePath failure(
        textOfFileName(folder.native()),
        {.criticalBox = [&](auto& title, auto& text) { desk.boxes.critical(title, text); },
         .endProcess = [] { throw ProcessEnded(); },
         .now = [&] { return desk.clock.now(); }});
    EXPECT_THROW(failure.Database_Missing(), ProcessEnded);
    EXPECT_THROW(failure.Fatal_Error(u"x"_qs), ProcessEnded);
    std::ifstream log(folder / "Error.log", std::ios::binary);
    std::string line;
    std::getline(log, line);
    const QString shown = parent.path() + u"/a\uFFFD b"_qs;
    EXPECT_EQ(line, "09:05 Database file Tarnwick.mdb must be in " + shown.toStdString() + '\r');
    EXPECT_TRUE(desk.boxes.shown.last().contains(u"(located in the "_qs + shown + u" folder)"_qs));
    std::filesystem::remove_all(folder);  // Qt would leave it behind
}

TEST(FailurePath, ALogThatCannotBeWrittenIsAFault) {
    FailurePath failure(u"/nowhere/at/all"_qs, {.criticalBox = {}, .endProcess = {}, .now = [] {
                                                    return QDateTime::currentDateTime();
                                                }});
    EXPECT_EQ(tarnwick::test::faultOf([&] { failure.Write_Log(u"x"_qs); }),
              u"No such file or directory");
}

TEST(FailurePath, AFullDiskKeepsTheProgramNeitherAliveNorSilent) {
    FailureDesk desk;
    QFile::link(u"/dev/full"_qs, desk.folder.filePath(u"Error.log"_qs));
    EXPECT_THROW(desk.failure.Write_Log(u"x"_qs), Fault);
    EXPECT_THROW(desk.failure.Fatal_Error(u"x"_qs), ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.size(), 1);
}

}  // namespace
