#include "batch/level_boxes.h"

#include <QFocusEvent>

#include "desk.h"
#include "support/fault_of.h"

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
    struct Case {
        QLineEdit* box;
        const char16_t* typed;
        const char16_t* silence;
        const char16_t* norm;
    };
    for (const Case& c : std::initializer_list<Case>{
             {form.txbSilencedB, u"-40", u"-40|1.0|327", u"0.0|100.0"},
             {form.txbSilencedB, u"-26", u"-26|5.0|1638", u"0.0|100.0"},
             {form.txbSilencedB, u"20", u"20|1,000.0|327670", u"0.0|100.0"},
             {form.txbSilencedB, u"-26dB", u"-26dB|1,000.0|327670", u"0.0|100.0"},
             {form.txbSilencedB, u"7000", u"7000|1,000.0|327670", u"0.0|100.0"},
             {form.txbSilencePerc, u"10", u"-20.0|10|3276", u"0.0|100.0"},
             {form.txbSilencePerc, u"0", u"-20.0|0|0", u"0.0|100.0"},
             {form.txbSilencePerc, u"0.", u"-20.0|0.|0", u"0.0|100.0"},
             {form.txbSilencePerc, u"0.2", u"-54.0|0.2|65", u"0.0|100.0"},
             {form.txbSilencePerc, u"soft", u"-54.0|soft|65", u"0.0|100.0"},
             {form.txbNormdB, u"20", u"-54.0|soft|65", u"20|1000.0"},
             {form.txbNormdB, u"-", u"-54.0|soft|65", u"-|1000.0"},
             {form.txbNormPerc, u"100", u"-54.0|soft|65", u"0.0|100"},
             {form.txbNormPerc, u"-5", u"-54.0|soft|65", u"0.0|-5"},
             {form.txbNormPerc, u"5", u"-54.0|soft|65", u"-26.0|5"}}) {
        enter(c.box);
        c.box->setText(QString::fromUtf16(c.typed));
        EXPECT_EQ(silence(), QString::fromUtf16(c.silence));
        EXPECT_EQ(norm(), QString::fromUtf16(c.norm));
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
    const auto ground = [](const QLineEdit* box) { return box->palette().color(QPalette::Base); };
    const QColor plain = ground(form.txbFileToConvert);
    const std::pair<QString, bool> thresholds[] = {
        {u"10.1"_qs, false}, {u"10.0"_qs, true}, {u"1e999"_qs, false}, {u"none"_qs, true}};
    for (const auto& [percent, allowed] : thresholds) {
        form.txbSilencePerc->setText(percent);
        EXPECT_EQ(levels.silenceThresholdAllowed(), allowed) << percent.toStdString();
        EXPECT_EQ(ground(form.txbSilencedB), allowed ? plain : QColor(255, 0, 0));
        EXPECT_EQ(boxes(), allowed ? QStringList()
                                   : QStringList(u"Silence Threshold is too high. Typical values "
                                                 u"are -26 dB to -40 dB."_qs));
    }
    const std::pair<QString, bool> maxima[] = {
        {u"59.9"_qs, false}, {u"60.0"_qs, true}, {u"loud"_qs, false}, {u"61 %"_qs, true}};
    for (const auto& [percent, allowed] : maxima) {
        form.txbNormPerc->setText(percent);
        EXPECT_EQ(levels.normMaximumAllowed(), allowed) << percent.toStdString();
        EXPECT_EQ(ground(form.txbNormdB), allowed ? plain : QColor(255, 0, 0));
        EXPECT_EQ(boxes(), allowed ? QStringList()
                                   : QStringList(u"Normalization Maximum is too low. Typical "
                                                 u"values are -1.4 dB to -0.3 dB."_qs));
    }
    EXPECT_EQ(faultOf([&] { levels.writeSilenceThreshold(); }), u"Type mismatch");
    EXPECT_EQ(faultOf([&] { levels.normPercent(); }), u"Type mismatch");
    form.txbNormPerc->setText(u"1e39"_qs);
    EXPECT_EQ(faultOf([&] { levels.normPercent(); }), u"Overflow");
    form.txbNormPerc->setText(u"84.1"_qs);
    EXPECT_EQ(levels.normPercent(), 84.1F);
}

}  // namespace
