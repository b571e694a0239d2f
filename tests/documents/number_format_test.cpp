#include "documents/number_format.h"

#include <gtest/gtest.h>

#include <QStringList>

using tarnwick::documents::NumberFormat;

TEST(NumberFormat, ShowsDatesTimesAndCodes) {
    // Code, value and text in turn.
    const auto cases = QString::fromUtf8(R"(
General|1500|1500|General|0.333333333333333333|0.333333333333333|#,##0.00|1234.5|1234.5|
[Red]0.0;"d"0|-2|-2|0000|42|0042|0000|-42|-42|0|2.5|2.5|0%|0.256|26%|0.00%|-0.5|-50.00%|
dd/mm/yyyy|43897.5|07/03/2020|d.m.yy;@|43897.5|7.3.20|ddd mmm mmmmm|43897.5|Sat Mar M|
[$-409]dddd, mmmm d\, yyyy|43897.5|Saturday, March 7, 2020|yyyy"year"|43897.5|2020year|
h:mm AM/PM|43897.5|12:00 PM|h a/p|0.01|12 A|mm:ss.0|0.00073|01:03.1|yy\|43897.5|20|
yyyy-mm-dd hh:mm|43897.9999999|2020-03-08 00:00|[h]:mm:ss|1.5|36:00:00|[mm]:ss|0.5|720:00|
d-mmm-yyyy|59|28-Feb-1900|d-mmm-yyyy|61|1-Mar-1900|d-mmm-yyyy|1|1-Jan-1900|d-mmm-yyyy|-1|-1|
d-mmm-yyyy|1e300|1E+300|"WAHR";"WAHR";"FALSCH"|1|True|"unclosed|3|3|[|3|3||3|3)")
                           .remove(u'\n')
                           .split(u'|');
    for (qsizetype i = 0; i < cases.size(); i += 3)
        EXPECT_EQ(NumberFormat(cases[i]).format(cases[i + 1].toDouble(), false), cases[i + 2])
            << cases[i].toStdString();
    EXPECT_EQ(NumberFormat(QStringLiteral("d-m-yyyy")).format(42435, true), "7-3-2020");
    EXPECT_EQ(NumberFormat::builtIn(14).format(43897.5, false), "07/03/2020");
    EXPECT_EQ(NumberFormat::builtIn(2).format(1.5, false), "1.5");
    EXPECT_EQ(NumberFormat::builtIn(9999).format(1.5, false), "1.5");
}
