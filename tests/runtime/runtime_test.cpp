#include <gtest/gtest.h>

#include <QSet>
#include <fstream>
#include <limits>

#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/file_names.h"
#include "runtime/guarded.h"
#include "runtime/levels.h"
#include "runtime/numbers.h"
#include "runtime/product.h"
#include "support/fault_of.h"
#include "support/in_region.h"
#include "support/scripted_ports.h"
#include "support/text_table.h"

using namespace tarnwick::runtime;
using tarnwick::test::FailureDesk;
using tarnwick::test::faultOf;
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
                          u"%2 for assistance."_qs.arg(
                              desk.folder.path(), QString::fromUtf16(product::kSupportAddress))));
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
    std::filesystem::remove_all(folder);  // Qt cannot remove a folder with such a name
}

TEST(FailurePath, ALogThatCannotBeWrittenIsAFaultAndKeepsTheProgramNeitherAliveNorSilent) {
    FailurePath nowhere(u"/nowhere/at/all"_qs,
                        {.criticalBox = {}, .endProcess = {}, .now = &QDateTime::currentDateTime});
    EXPECT_EQ(tarnwick::test::faultOf([&] { nowhere.Write_Log(u"x"_qs); }),
              u"No such file or directory");

    FailureDesk desk;
    QFile::link(u"/dev/full"_qs, desk.folder.filePath(u"Error.log"_qs));
    EXPECT_THROW(desk.failure.Write_Log(u"x"_qs), Fault);
    EXPECT_THROW(desk.failure.Fatal_Error(u"x"_qs), ProcessEnded);
    EXPECT_EQ(desk.boxes.shown.size(), 1);
}

TEST(FileNames, EveryNameLeadsBackToItsBytesAndNoTwoShareAText) {
    std::vector<std::string> names{"take01.wav",   "l\xc3\xa4nge.txt",   "\xf0\x9f\x8e\xa4.wav",
                                   "\xef\xbb\xbf", "x\xed\xb2\x80y.wav", "\xe2\x82",
                                   "\xf0\x9f\x8e", "\xf3\xb0\x80\x80"};
    for (int a = 1; a < 256; ++a)
        for (int b = 1; b < 256; ++b)
            names.push_back({static_cast<char>(a), static_cast<char>(b), '.', 'w'});
    QSet<QString> texts;
    for (const std::string& name : names) {
        texts << textOfFileName(name);
        ASSERT_EQ(bytesOfFileName(textOfFileName(name)), name);
    }
    EXPECT_EQ(texts.size(), static_cast<qsizetype>(names.size()));
    EXPECT_EQ(textOfFileName("l\xc3\xa4nge.txt"), u"länge.txt");
    EXPECT_EQ(textOfFileName("\xc3\xa4\xff\xe0\xa4\x85\xff\xf0\x9f\x8e\xa4\xff"),
              u"ä\xDCFF\u0905\xDCFF🎤\xDCFF");
    EXPECT_EQ(textOfFileName("\xef\xbb\xbf.x").size(), 3) << "a byte order mark is part of it";
    EXPECT_EQ(pathOf(u"/a/"_qs + textOfFileName("\xff")).native(), "/a/\xff");
    EXPECT_EQ(readableFileName(textOfFileName("\na\x7f\xff.wav")), u"\uFFFDa\uFFFD\uFFFD.wav");
    EXPECT_EQ(readableFileName(u"é\u2028'\"🎤"_qs), u"é\uFFFD'\"🎤");
}

TEST(FileNames, AreOrderedWithoutRegardToCaseUnlessTheyAreEqualThen) {
    const QStringList ordered{u"A.wav"_qs, u"a.wav"_qs, u"ab"_qs, u"B"_qs,
                              u"ba"_qs,    u"𐐨a"_qs,    u"𐐀z"_qs};
    for (qsizetype a = 0; a < ordered.size(); ++a)
        for (qsizetype b = 0; b < ordered.size(); ++b)
            EXPECT_EQ(nameLess(ordered[a], ordered[b]), a < b) << a << " and " << b;
}

TEST(Numbers, LenientReadingTakesTheLeadingNumber) {
    const char* const cases = R"(
|0|abc|0|1500ms|1500| 12abc|12|-35|-35|+7|7|1000.5|1000.5|.5x|0.5|1e3|1000|2e|2|50 |50|-|0|
1.2.3|1.2|12 5|12|9.9|9.9|1.x5|1|.|0|12e-1|1.2|1E+2|100|1e-|1)";
    for (const QStringList& row : tarnwick::test::rowsOf(cases, 2))
        EXPECT_EQ(val(row[0]), row[1].toDouble()) << qPrintable(row[0]);
}

TEST(Numbers, StrictReadingRefusesAnythingElse) {
    EXPECT_EQ(strictDouble(u" -35 "), -35.0);
    EXPECT_EQ(strictLong(u"2.5"), 2);
    EXPECT_EQ(strictLong(u"3.5"), 4);
    for (const QString& text :
         {u""_qs, u"12abc"_qs, u"--1"_qs, u"nan"_qs, u"-"_qs, u"."_qs, u"1e"_qs})
        EXPECT_EQ(faultOf([&] { strictDouble(text); }), u"Type mismatch") << text.toStdString();
    EXPECT_EQ(strictInteger(u"32767"), 32767);
    EXPECT_EQ(faultOf([] { strictInteger(u"32768"); }), u"Overflow");
    EXPECT_EQ(faultOf([] { strictLong(u"1e10"); }), u"Overflow");
    EXPECT_EQ(faultOf([] { strictDouble(u"-1e999"); }), u"Overflow");
    EXPECT_EQ(roundToLong(1000.5), 1000);
    EXPECT_EQ(roundToLong(1001.5), 1002);
    EXPECT_EQ(roundToLong(-0.5), 0);
    EXPECT_EQ(roundToLong(2147483647.4), 2147483647);
    EXPECT_EQ(roundToLong(-2147483648.0), std::numeric_limits<qint32>::min());
    for (const double outside : {2147483647.5, -2147483649.0})
        EXPECT_EQ(faultOf([&] { roundToLong(outside); }), u"Overflow");
    EXPECT_EQ(faultOf([] { roundToInteger(std::numeric_limits<double>::quiet_NaN()); }),
              u"Overflow");
}

TEST(Numbers, TextsHaveTheProductsForms) {
    EXPECT_EQ(fixedOneDecimal(1.7783), u"1.8");
    EXPECT_EQ(fixedOneDecimal(0.001), u"0.0");
    const std::pair<double, QString> tenths[] = {
        {0.25, u"0.3"_qs}, {8.45, u"8.5"_qs},   {8.449999999999999, u"8.5"_qs},
        {1.15, u"1.2"_qs}, {-0.25, u"-0.3"_qs}, {-7e-14, u"0.0"_qs}};
    for (const auto& [value, text] : tenths) {
        EXPECT_EQ(fixedOneDecimal(value), text);
        EXPECT_EQ(patternOneDecimal(value), text);
    }
    EXPECT_EQ(patternOneDecimal(1e15), u"1000000000000000.0");
    EXPECT_EQ(signedText(12), u" 12");
    EXPECT_EQ(signedText(-13), u"-13");
    EXPECT_EQ(signedText(-0.0), u" 0");
    EXPECT_EQ(plainText(-0.0), u"0");
    EXPECT_EQ(plainText(0.1 + 0.2), u"0.3");
    EXPECT_EQ(plainText(2147483647.0), u"2147483647");
}

// The program reads the numbers that it writes, and reads other texts leniently.
TEST(Numbers, RegionsHaveTheirOwnSeparators) {
    const char* const regions = R"(
C.UTF-8|1234567.89|1234567.9|1234567.9|POSIX|1234.56|1234.6|1234.6|
en_US.UTF-8|1234.56|1,234.6|1234.6|de_DE.UTF-8|-1234.56|-1.234,6|-1234,6|
de_CH.UTF-8|1234.56|1’234.6|1234.6|fr_FR.UTF-8|1234.56|1 234,6|1234,6|
hi_IN.UTF-8|1234567.89|12,34,567.9|1234567.9|fa_IR.UTF-8|10.56|۱۰٫۶|۱۰٫۶)";
    for (const QStringList& row : tarnwick::test::rowsOf(regions, 4)) {
        const std::string locale = row[0].toStdString();
        const double value = row[1].toDouble();
        const QString &fixed = row[2], &pattern = row[3];
        const tarnwick::test::InRegion region(locale.c_str());
        EXPECT_EQ(fixedOneDecimal(value), fixed) << locale;
        EXPECT_EQ(patternOneDecimal(value), pattern) << locale;
        for (const QString& text : {fixed, pattern}) {
            EXPECT_NEAR(shownValue(text), value, 0.05) << locale;
            EXPECT_NEAR(strictDouble(text), value, 0.05) << locale;
        }
        EXPECT_EQ(shownValue(u"-10.5"), -10.5) << locale;
        EXPECT_EQ(shownValue(u" 61 %"), 61.0) << locale;
        EXPECT_EQ(shownValue(u"none"), 0.0) << locale;
        EXPECT_EQ(shownValue(u"1e999"), std::numeric_limits<double>::infinity()) << locale;
        for (const QString& text : {u""_qs, u"nan"_qs, u"61 %"_qs, u"--1"_qs})
            EXPECT_EQ(faultOf([&] { strictDouble(text); }), u"Type mismatch") << locale;
    }
}

TEST(Levels, DecibelsPercentAndTheEnginesScale) {
    EXPECT_NEAR(percentOfDecibels(-20), 10.0, 1e-12);
    EXPECT_NEAR(decibelsOfPercent(10), -20.00000000000003, 2e-14) << "as stored levels have it";
    EXPECT_NEAR(decibelsOfPercent(0.1), -60.0, 1e-9);
    EXPECT_EQ(faultOf([] { percentOfDecibels(7000); }), u"Overflow");
    for (const double none : {0.0, -5.0})
        EXPECT_EQ(faultOf([&] { decibelsOfPercent(none); }), u"Invalid procedure call or argument");
    const char* const amplitudes = R"(
5.0|1638|100.0|32767|0.1|32|1000|327670|-0.1|-33|1e307|Overflow|5 %|Type mismatch)";
    for (const QStringList& row : tarnwick::test::rowsOf(amplitudes, 2))
        EXPECT_EQ(tarnwick::test::resultOf([&] { return amplitudeOfPercent(row[0]); }), row[1]);
}

TEST(Arithmetic, FaultsWhereItWouldWrap) {
    EXPECT_EQ(add<qint16>(32766, 1), 32767);
    EXPECT_EQ(faultOf([] { add<qint16>(32767, 1); }), u"Overflow");
    EXPECT_EQ(faultOf([] { subtract<qint32>(-2147483647, 2); }), u"Overflow");
    EXPECT_EQ(faultOf([] { multiply<qint32>(21474837, 100); }), u"Overflow");
    EXPECT_EQ(faultOf([] { divide(1.0, 0.0); }), u"Division by zero");
    std::array<int, 3> three{1, 2, 3};
    EXPECT_EQ(element(three, 2), 3);
    EXPECT_EQ(faultOf([&] { element(three, 3); }), u"Subscript out of range");
    EXPECT_EQ(faultOf([&] { element(three, -1); }), u"Subscript out of range");
}

}  // namespace
