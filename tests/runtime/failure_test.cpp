#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "runtime/events.h"
#include "runtime/guarded.h"

using namespace tarnwick::runtime;

namespace {

struct Ended {};

struct Desk {
    QTemporaryDir folder;
    QStringList boxes;
    FailurePath failure{folder.path(),
                        {.criticalBox = [this](const QString& title,
                                               const QString& text) { boxes << title << text; },
                         .endProcess = [] { throw Ended(); },
                         .now = [] { return QDateTime(QDate(2020, 3, 7), QTime(9, 5, 59)); }}};

    QByteArray log() const {
        QFile file(folder.filePath(u"Error.log"_qs));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};

TEST(ErrorLog, StampsWhatIsNotBlank) {
    Desk desk;
    desk.failure.Write_Log(u"Program launched"_qs);
    desk.failure.Write_Log(QString());
    desk.failure.Write_Log(u"   "_qs);
    desk.failure.Write_Log(u"\t"_qs);
    desk.failure.Write_Log(u"  inner  and outer "_qs);
    EXPECT_EQ(desk.log(),
              "09:05 Program launched\r\n\r\n   \r\n09:05 \t\r\n09:05   inner  and outer \r\n");
}

TEST(FailurePath, AGuardedFaultLeavesItsRecordAndEnds) {
    Desk desk;
    desk.failure.vsBuild = u"Build 682"_qs;
    const auto procedure = [&](Line& line) {
        line(10);
        line(20);
        typeMismatch();
    };
    EXPECT_THROW(guarded(desk.failure, u"frmMain.Import_Excel: ", procedure), Ended);
    EXPECT_EQ(desk.log(),
              "09:05 frmMain.Import_Excel: Type mismatch, Line 20\r\n09:05 Build 682\r\n"
              "09:05 Program terminated with error\r\n09:05 07-Mar-2020\r\n\r\n");
    EXPECT_EQ(
        desk.boxes,
        QStringList({u"An error has occured in the program execution!"_qs,
                     u"Error: frmMain.Import_Excel: Type mismatch, Line 20\r\n\r\nIf this "
                     u"error persists after restarting the program and/or the PC,\r\nplease "
                     u"e-mail the Error.log file (located in the %1 folder)\r\nto "
                     u"support@tarnwick.example for assistance."_qs.arg(desk.folder.path())}));
}

TEST(FailurePath, AMissingDatabaseHasItsOwnWords) {
    Desk desk;
    EXPECT_THROW(desk.failure.Database_Missing(), Ended);
    EXPECT_EQ(desk.log(), "09:05 Database file Tarnwick.mdb must be in " +
                              desk.folder.path().toUtf8() +
                              "\r\n09:05 Program execution terminated - No database!\r\n");
    EXPECT_EQ(desk.boxes.value(0), u"Database Cannot Be Found!");
    EXPECT_EQ(desk.boxes.value(1),
              u"The database Tarnwick.mdb cannot be found.\r\nIt has been moved or renamed.\r\nIt "
              u"must be located in the same directory as Tarnwick.exe.\r\nPlease correct before "
              u"restarting the application.");
}

TEST(FailurePath, AnUnguardedHandlerTakesTheDefaultPathWithoutALogLine) {
    Desk desk;
    QObject sender;
    onEvent(desk.failure, &sender, &QObject::objectNameChanged, &sender,
            [&] { sender.objectName() == u"bad" ? overflow() : void(); });
    sender.setObjectName(u"good"_qs);
    EXPECT_TRUE(desk.boxes.isEmpty());
    EXPECT_THROW(sender.setObjectName(u"bad"_qs), Ended);
    EXPECT_EQ(desk.boxes.value(1), u"Overflow");
    EXPECT_EQ(desk.log(), "");
}

TEST(FailurePath, ALogThatCannotBeWrittenIsAFault) {
    FailurePath failure(u"/nowhere/at/all"_qs, {.criticalBox = {}, .endProcess = {}, .now = [] {
                                                    return QDateTime::currentDateTime();
                                                }});
    EXPECT_THROW(failure.Write_Log(u"x"_qs), Fault);
}

}  // namespace
