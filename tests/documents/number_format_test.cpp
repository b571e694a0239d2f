#include "documents/number_format.h"

#include <gtest/gtest.h>

#include "support/text_table.h"

using tarnwick::documents::NumberFormat;

namespace {

// Code, value and text in turn, behind a bar each.
void expectShown(const char* table) {
    for (const QStringList& row : tarnwick::test::rowsOf(table, 3))
        EXPECT_EQ(NumberFormat(row[0]).format(row[1].toDouble(), false), row[2])
            << qPrintable(row[0]);
}

}  // namespace

TEST(NumberFormat, ShowsDatesTimesAndCodes) {
    expectShown(R"(
General|1500|1500|General|0.333333333333333333|0.333333333333333|#,##0.00|1234.5|1234.5|
[Red]0.0;"d"0|-2|d2|0000|42|0042|0000|-42|-0042|0|2.5|2.5|0%|0.256|26%|0.00%|-0.5|-50.00%|
dd/mm/yyyy|43897.5|07/03/2020|d.m.yy;@|43897.5|7.3.20|ddd mmm mmmmm|43897.5|Sat Mar M|
[$-409]dddd, mmmm d\, yyyy|43897.5|Saturday, March 7, 2020|yyyy"year"|43897.5|2020year|
h:mm AM/PM|43897.5|12:00 PM|h a/p|0.01|12 A|mm:ss.0|0.00073|01:03.1|yy\|43897.5|20|
yyyy-mm-dd hh:mm|43897.9999999|2020-03-08 00:00|[h]:mm:ss|1.5|36:00:00|[mm]:ss|0.5|720:00|
d-mmm-yyyy|59|28-Feb-1900|d-mmm-yyyy|61|1-Mar-1900|d-mmm-yyyy|1|1-Jan-1900|d-mmm-yyyy|-1|-1|
h:mm|0.50046|12:01|AM/PM h|0.75|PM 6|yyy|43897.5|2020|d-mmm-yyyy|1e300|1E+300|d-mmm-yyyy|60|28-Feb-1900|
h:mm|0|0:00|yyyy|2958465|9999|yyyy|2958466|2958466|mm:ss.000|0.00073|01:03.072|hhh|0.2|04|
h mmm|43897.5|12 Mar|mmm ss|43897.5|Mar 00|[h]:mm|1.5|36:00|mm:[ss]|0.5|00:43200|[ss]|0.00001|01|
"WAHR";"WAHR";"FALSCH"|1|True|"unclosed|3|3|[|3|3||3|3)");
    EXPECT_EQ(NumberFormat(QStringLiteral("d-m-yyyy")).format(42435, true), "7-3-2020");
}

TEST(NumberFormat, CodesThatAWorkbookNamesByNumber) {
    const char* const codes = R"(
0|43897.54321|8|43897.54321|9|4389754%|10|4389754.32%|11|43897.54321|13|43897.54321|
14|07/03/2020|15|7-Mar-20|16|7-Mar|17|Mar-20|18|1:02 PM|19|1:02:13 PM|20|13:02|
21|13:02:13|22|07/03/2020 13:02|26|43897.54321|27|2020/03/07|36|2020/03/07|37|43897.54321|
44|43897.54321|45|02:13|46|1053541:02:13|47|02:13.3|48|43897.54321|49|43897.54321|
50|2020/03/07|58|2020/03/07|59|43897.54321)";
    for (const QStringList& row : tarnwick::test::rowsOf(codes, 2))
        EXPECT_EQ(NumberFormat::builtIn(row[0].toInt()).format(43897.54321, false), row[1])
            << qPrintable(row[0]);
}

// As an office program shows them.
TEST(NumberFormat, ZerosAndTextAroundANumberAreMeant) {
    expectShown(R"(
"VO_"0000|12|VO_0012|0000"_a"|12|0012_a|000-000|12|000-012|000-000|1234567|1234-567|
000\-000|12|000-012|00":"00|1234|12:34|000"."000|1234|001.234|000 000|12|000 012|
"VO_"0000|12345|VO_12345|"VO_"0000|-12|-VO_0012|0000|2.5|0003|0000|11.999999999999999|0012|
0000|-0.3|0000|0000.00|12.345|0012.35|00.##|5|05|00.##|5.126|05.13|0#|5|05|#000|12|012|
"VO_"0|12|VO_12|"VO_"#|0|VO_|0" kg"|-5|-5 kg|+0;-0|5|+5|"VO_"General|12|VO_12|
General" kg"|-12.5|-12.5 kg|[$VO_-409]000|12|VO_012|[$€-407]000|12|€012|[$VO_]0|12|VO_12|
[Color5]000|12|012|[$-407]000|12|012|""000|12|012|000"a|12|012a|000\|12|012|Ab000|12|Ab012|
0000_)|12|0012|* 0000|12|0012|000*-|12|012|0000;(0000)|-12|(0012)|000;-000|-5|-005|
000;@|-5|-005|"x"00;"x"00;"z"00|1|x01|"VO"00;"neg"00;"zero"00|0|zero00|000;0;0;"n"|1|001|
0\ %|0.256|26 %|"ca. "0%|0.256|ca. 26%|0%" done"|0.25|25% done|#.##%|0.256|25.6%|
.0%|0.5|50.0%|0%;[Red]-0%|-0.5|-50%|0\%|12|12%|(###) ###-####|5551234|() 555-1234)");
}

// What groups, rounds or hides the number, and what stands for its sign.
TEST(NumberFormat, OtherCodesShowThePlainValue) {
    expectShown(R"(
"€"#,##0.00|1234.5|1234.5|#,##0.00\ [$€-407]|12|12|0.00" kg"|12.5|12.5|0" kg"|2.5|2.5|
0,000|12|12|0000,|12000|12000|# ##0|1234|1234|#"'"##0|1234|1234|0_);(0)|-12|-12|[$-407]0|12|12|
00E+00|12|12|00/00|12|12|[<100]"VO_"00;"X"000|12|12|[Red]General|12|12|General%|0.5|0.5|
0000;|-5|-5|000;;"z"|0|0|;;;|3|3|"only"|12|12|"%"|12|12|@|12|12|"VO_"@|12|12|
000|1e15|1E+15|00.0000000000000000|1|1)");
    EXPECT_EQ(NumberFormat(QString(255, u'0')).format(1.0, false).size(), 255);
    EXPECT_EQ(NumberFormat(QString(256, u'0')).format(1.0, false), "1") << "no office program's";
}

TEST(NumberFormat, TextsHaveWhatTheCodePutsAroundThem) {
    const char* const cases = R"(
"VO_"@|intro|VO_intro|0;0;0;@".wav"|a|a.wav|0;@_)|a|a|"VO_"@|||"VO_"0|a|a|;;;|a|a)";
    for (const QStringList& row : tarnwick::test::rowsOf(cases, 3))
        EXPECT_EQ(NumberFormat(row[0]).format(row[1]), row[2]) << qPrintable(row[0]);
}
