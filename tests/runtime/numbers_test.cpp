#include "runtime/numbers.h"

#include <gtest/gtest.h>

#include <limits>

#include "runtime/arithmetic.h"
#include "runtime/levels.h"
#include "support/fault_of.h"
#include "support/in_region.h"

using namespace tarnwick::runtime;
using tarnwick::test::faultOf;

namespace {

TEST(Numbers, LenientReadingTakesTheLeadingNumber) {
    const std::vector<std::pair<QString, double>> cases{
        {u""_qs, 0},        {u"abc"_qs, 0},  {u"1500ms"_qs, 1500},   {u" 12abc"_qs, 12},
        {u"-35"_qs, -35},   {u"+7"_qs, 7},   {u"1000.5"_qs, 1000.5}, {u".5x"_qs, 0.5},
        {u"1e3"_qs, 1000},  {u"2e"_qs, 2},   {u"50 "_qs, 50},        {u"-"_qs, 0},
        {u"1.2.3"_qs, 1.2}, {u"12 5"_qs, 12}};
    for (const auto& [text, value] : cases)
        EXPECT_EQ(val(text), value) << text.toStdString();
}

TEST(Numbers, StrictReadingRefusesAnythingElse) {
    EXPECT_EQ(strictDouble(u" -35 "), -35.0);
    EXPECT_EQ(strictLong(u"2.5"), 2);
    EXPECT_EQ(strictLong(u"3.5"), 4);
    for (const QString& text : {u""_qs, u"12abc"_qs, u"--1"_qs, u"nan"_qs})
        EXPECT_EQ(faultOf([&] { strictDouble(text); }), u"Type mismatch") << text.toStdString();
    EXPECT_EQ(strictInteger(u"32767"), 32767);
    EXPECT_EQ(faultOf([] { strictInteger(u"32768"); }), u"Overflow");
    EXPECT_EQ(faultOf([] { strictLong(u"1e10"); }), u"Overflow");
    EXPECT_EQ(faultOf([] { strictDouble(u"-1e999"); }), u"Overflow");
}

TEST(Numbers, HalvesRoundToTheEvenNumber) {
    EXPECT_EQ(roundToLong(1000.5), 1000);
    EXPECT_EQ(roundToLong(1001.5), 1002);
    EXPECT_EQ(roundToLong(-0.5), 0);
    EXPECT_EQ(roundToLong(2147483647.4), 2147483647);
    EXPECT_EQ(faultOf([] { roundToLong(2147483647.5); }), u"Overflow");
    EXPECT_EQ(faultOf([] { roundToInteger(std::numeric_limits<double>::quiet_NaN()); }),
              u"Overflow");
}

TEST(Numbers, TextsHaveTheProductsForms) {
    EXPECT_EQ(fixedOneDecimal(1.7783), u"1.8");
    EXPECT_EQ(fixedOneDecimal(0.001), u"0.0");
    const std::pair<double, QString> tenths[] = {{0.25, u"0.3"_qs},
                                                 {8.45, u"8.5"_qs},
                                                 {1.15, u"1.2"_qs},
                                                 {-0.25, u"-0.3"_qs},
                                                 {-7e-14, u"0.0"_qs}};
    for (const auto& [value, text] : tenths) {
        EXPECT_EQ(fixedOneDecimal(value), text);
        EXPECT_EQ(patternOneDecimal(value), text);
    }
    EXPECT_EQ(patternOneDecimal(1e15), u"1000000000000000.0");
    EXPECT_EQ(signedText(12), u" 12");
    EXPECT_EQ(signedText(-13), u"-13");
    EXPECT_EQ(signedText(-0.0), u" 0");
    EXPECT_EQ(plainText(589), u"589");
    EXPECT_EQ(plainText(32767), u"32767");
    EXPECT_EQ(plainText(2147483647.0), u"2147483647");
}

// What the program writes is what it reads, and what is no number is read leniently.
TEST(Numbers, RegionsHaveTheirOwnSeparators) {
    const std::tuple<const char*, double, QString, QString> regions[] = {
        {"C.UTF-8", 1234567.89, u"1234567.9"_qs, u"1234567.9"_qs},
        {"POSIX", 1234.56, u"1234.6"_qs, u"1234.6"_qs},
        {"en_US.UTF-8", 1234.56, u"1,234.6"_qs, u"1234.6"_qs},
        {"de_DE.UTF-8", -1234.56, u"-1.234,6"_qs, u"-1234,6"_qs},
        {"de_CH.UTF-8", 1234.56, u"1’234.6"_qs, u"1234.6"_qs},
        {"fr_FR.UTF-8", 1234.56, u"1\u202f234,6"_qs, u"1234,6"_qs},
        {"hi_IN.UTF-8", 1234567.89, u"12,34,567.9"_qs, u"1234567.9"_qs},
        {"fa_IR.UTF-8", 10.56, u"۱۰٫۶"_qs, u"۱۰٫۶"_qs}};
    for (const auto& [locale, value, fixed, pattern] : regions) {
        const tarnwick::test::InRegion region(locale);
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
    EXPECT_EQ(faultOf([] { percentOfDecibels(7000); }), u"Overflow");
    for (const double none : {0.0, -5.0})
        EXPECT_EQ(faultOf([&] { decibelsOfPercent(none); }), u"Invalid procedure call or argument");
    const std::pair<QString, QString> amplitudes[] = {
        {u"5.0"_qs, u"1638"_qs}, {u"100.0"_qs, u"32767"_qs},    {u"0.1"_qs, u"32"_qs},
        {u"-0.1"_qs, u"-33"_qs}, {u"1e307"_qs, u"Overflow"_qs}, {u"5 %"_qs, u"Type mismatch"_qs}};
    for (const auto& [percent, amplitude] : amplitudes)
        EXPECT_EQ(tarnwick::test::resultOf([&] { return amplitudeOfPercent(percent); }), amplitude);
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
