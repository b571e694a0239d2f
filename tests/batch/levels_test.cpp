#include "batch/level_boxes.h"

#include <QFocusEvent>

#include "desk.h"
#include "support/fault_of.h"
#include "support/in_region.h"

using namespace tarnwick;
using test::faultOf;

namespace {

struct Levels : test::BatchDesk {
    batch::LevelBoxes levels{form, services};

    Levels() { levels.decibelsDrive(); }
    static void focus(QLineEdit* box, QEvent::Type type, Qt::FocusReason reason) {
        QFocusEvent event(type, reason);
        QCoreApplication::sendEvent(box, &event);
    }
    static void enter(QLineEdit* box) { focus(box, QEvent::FocusIn, Qt::TabFocusReason); }
    static void leave(QLineEdit* box, Qt::FocusReason reason = Qt::TabFocusReason) {
        focus(box, QEvent::FocusOut, reason);
    }
    QString silence() const {
        return form.txbSilencedB->text() + u'|' + form.txbSilencePerc->text() + u'|' +
               form.txbSilenceThreshold->text();
    }
    QString norm() const { return form.txbNormdB->text() + u'|' + form.txbNormPerc->text(); }
};

TEST_F(Levels, TheBoxThatTheOperatorIsInDrivesTheOther) {
    const std::tuple<QLineEdit*, QString, QString> entries[] = {
        {form.txbSilencedB, u"-40"_qs, u"-40|1.0|327"_qs},
        {form.txbSilencedB, u"20"_qs, u"20|1000.0|327670"_qs},
        {form.txbSilencedB, u"-26dB"_qs, u"-26dB|1000.0|327670"_qs},
        {form.txbSilencedB, u"7000"_qs, u"7000|1000.0|327670"_qs},
        {form.txbSilencePerc, u"10"_qs, u"-20.0|10|3276"_qs},
        {form.txbSilencePerc, u"0"_qs, u"-20.0|0|0"_qs},
        {form.txbSilencePerc, u"0.2"_qs, u"-54.0|0.2|65"_qs},
        {form.txbSilencePerc, u"soft"_qs, u"-54.0|soft|65"_qs},
        {form.txbNormdB, u"20"_qs, u"20|1000.0"_qs},
        {form.txbNormdB, u"-"_qs, u"-|1000.0"_qs},
        {form.txbNormPerc, u"100"_qs, u"0.0|100"_qs},
        {form.txbNormPerc, u"-5"_qs, u"0.0|-5"_qs},
        {form.txbNormPerc, u"5"_qs, u"-26.0|5"_qs}};
    for (const auto& [box, typed, expected] : entries) {
        enter(box);
        box->setText(typed);
        EXPECT_EQ(expected.count(u'|') == 2 ? silence() : norm(), expected);
    }
}

TEST_F(Levels, AFaultEndsItsStatementOnly) {
    form.txbSilencePerc->setText(u"3.0"_qs);
    EXPECT_EQ(silence(), u"-26|3.0|0") << "not the box that the operator is in";
    form.txbSilencedB->setText(u"-26 dB"_qs);
    EXPECT_EQ(silence(), u"-26 dB|3.0|983");
}

TEST_F(Levels, LeavingABox) {
    enter(form.txbSilencePerc);
    form.txbSilencePerc->clear();
    for (const auto reason :
         {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason, Qt::MenuBarFocusReason})
        leave(form.txbSilencePerc, reason);
    EXPECT_EQ(silence(), u"-26||0") << "the box was not left";
    leave(form.txbSilencePerc);
    EXPECT_EQ(silence(), u"-100.0|0.001|0");
    leave(form.txbSilencedB);
    enter(form.txbNormPerc);
    form.txbNormPerc->setText(u"full"_qs);
    leave(form.txbNormPerc);
    EXPECT_EQ(norm(), u"-100.0|0.001");
    enter(form.txbNormdB);
    const std::pair<QString, QString> left[] = {{u"-1.25"_qs, u"-1.3|86.1"_qs},
                                                {u"-6"_qs, u"-6.0|50.1"_qs},
                                                {u"loud"_qs, u"loud|50.1"_qs},
                                                {u""_qs, u"|50.1"_qs}};
    for (const auto& [typed, expected] : left) {
        form.txbNormdB->setText(typed);
        leave(form.txbNormdB);
        EXPECT_EQ(norm(), expected);
    }
}

TEST_F(Levels, ARunWantsAQuietThresholdAndALoudMaximum) {
    const std::tuple<QString, QString, bool, bool> cases[] = {
        {u"10.1"_qs, u"60.0"_qs, false, true},
        {u"10.0"_qs, u"59.9"_qs, true, false},
        {u"1e999"_qs, u"61 %"_qs, false, true},
        {u"none"_qs, u"loud"_qs, true, false},
        {u"5.0"_qs, u"100.0"_qs, true, true}};
    const auto red = [](const QLineEdit* box) {
        return box->palette().color(QPalette::Base) == QColor(255, 0, 0);
    };
    for (const auto& [silencePercent, normPercent, quiet, loud] : cases) {
        form.txbSilencePerc->setText(silencePercent);
        form.txbNormPerc->setText(normPercent);
        EXPECT_EQ(levels.silenceThresholdAllowed(), quiet);
        EXPECT_EQ(red(form.txbSilencedB), !quiet);
        EXPECT_EQ(levels.normMaximumAllowed(), loud);
        EXPECT_EQ(red(form.txbNormdB), !loud);
        EXPECT_EQ(boxes().size(), (quiet ? 0 : 1) + (loud ? 0 : 1));
    }
    form.txbSilencePerc->setText(u"none"_qs);
    form.txbNormPerc->setText(u"loud"_qs);
    EXPECT_EQ(faultOf([&] { levels.writeSilenceThreshold(); }), u"Type mismatch");
    EXPECT_EQ(faultOf([&] { levels.normPercent(); }), u"Type mismatch");
    form.txbNormPerc->setText(u"1e39"_qs);
    EXPECT_EQ(faultOf([&] { levels.normPercent(); }), u"Overflow");
    form.txbNormPerc->setText(u"84.1"_qs);
    EXPECT_EQ(levels.normPercent(), 84.1F);
}

TEST_F(Levels, WhatTheBoxShowsIsWhatIsChecked) {
    const struct {
        const char* locale;
        QString silence, silencePercent, norm, normPercent;
        bool quiet, loud;
    } cases[] = {{"C.UTF-8", u"20"_qs, u"1000.0"_qs, u"20"_qs, u"1000.0"_qs, false, true},
                 {"en_US.UTF-8", u"20"_qs, u"1,000.0"_qs, u"20"_qs, u"1000.0"_qs, false, true},
                 {"de_DE.UTF-8", u"-19,5"_qs, u"10,6"_qs, u"-4,5"_qs, u"59,6"_qs, false, false},
                 {"de_DE.UTF-8", u"40"_qs, u"10.000,0"_qs, u"-4.4"_qs, u"60,3"_qs, false, true},
                 {"fr_FR.UTF-8", u"20"_qs, u"1\u202f000,0"_qs, u"-1"_qs, u"89,1"_qs, false, true},
                 {"fa_IR.UTF-8", u"-20"_qs, u"۱۰٫۰"_qs, u"0"_qs, u"۱۰۰٫۰"_qs, true, true}};
    for (const auto& [locale, silence, silencePercent, norm, normPercent, quiet, loud] : cases) {
        const test::InRegion region(locale);
        form.txbSilencedB->clear();
        form.txbNormdB->clear();
        form.txbSilencedB->setText(silence);
        form.txbNormdB->setText(norm);
        EXPECT_EQ(form.txbSilencePerc->text(), silencePercent) << locale;
        EXPECT_EQ(form.txbNormPerc->text(), normPercent) << locale;
        EXPECT_EQ(levels.silenceThresholdAllowed(), quiet) << locale;
        EXPECT_EQ(levels.normMaximumAllowed(), loud) << locale;
        boxes();
    }
    const test::InRegion german("de_DE.UTF-8");
    enter(form.txbSilencePerc);
    form.txbSilencePerc->setText(u"0,5"_qs);
    leave(form.txbSilencePerc);
    EXPECT_EQ(silence(), u"-46,0|0,5|163") << "that is not 0";
}

}  // namespace
