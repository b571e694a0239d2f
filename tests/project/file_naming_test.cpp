#include "project/file_naming.h"

#include <gtest/gtest.h>

#include "forms/frm_main.h"
#include "support/scripted_ports.h"

using namespace tarnwick;

namespace {

TEST(FileNaming, ThePreviewFollowsTheFourBoxesAndFaultsUnderTheirLabels) {
    test::FailureDesk desk;
    forms::frmMain form;
    const project::FileNaming naming(form, desk.failure);
    const std::tuple<QLineEdit*, QString, QString> changes[] = {
        {form.txbSuffix, u"_a"_qs, u"ACME_1000_a.mp3 ACME_1005_a.mp3 ACME_1010_a.mp3"_qs},
        {form.txbPrefix, u"x:"_qs, u"x:1000_a.mp3 x:1005_a.mp3 x:1010_a.mp3"_qs},
        {form.txbIncrement, u"-5"_qs, u"x:1000_a.mp3 x:995_a.mp3 x:990_a.mp3"_qs},
        {form.txbStarting, u"1001.5"_qs, u"x:1002_a.mp3 x:997_a.mp3 x:992_a.mp3"_qs},
        {form.txbStarting, u""_qs, u"x:0_a.mp3 x:-5_a.mp3 x:-10_a.mp3"_qs},
        {form.txbIncrement, u"16383"_qs, u"x:0_a.mp3 x:16383_a.mp3 x:32766_a.mp3"_qs},
        {form.txbIncrement, u"40000"_qs, u"txbIncrement_Change: Overflow, Line 10"_qs},
        {form.txbIncrement, u"32767"_qs, u"txbIncrement_Change: Overflow, Line 20"_qs},
        {form.txbPrefix, u"x"_qs, u"txbPrefix_Change: Overflow, Line 20"_qs},
        {form.txbSuffix, u"x"_qs, u"txbSuffix_Change: Overflow, Line 20"_qs},
        {form.txbStarting, u"3e9"_qs, u"txbStarting_Change: Overflow, Line 10"_qs}};
    for (const auto& [box, text, outcome] : changes) {
        if (outcome.contains(u"Overflow")) {
            EXPECT_THROW(box->setText(text), test::ProcessEnded);
            EXPECT_TRUE(desk.log().contains("frmImport." + outcome.toUtf8() + "\r\n"));
            continue;
        }
        box->setText(text);
        QStringList names;
        for (const QLineEdit* name : form.txbPreview)
            names << name->text();
        EXPECT_EQ(names.join(u' '), outcome);
    }
    QFocusEvent toTheDesktop(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    EXPECT_NO_THROW(QCoreApplication::sendEvent(form.txbStarting, &toTheDesktop));
    QFocusEvent toTheNextBox(QEvent::FocusOut, Qt::TabFocusReason);
    EXPECT_THROW(QCoreApplication::sendEvent(form.txbStarting, &toTheNextBox), test::ProcessEnded);
    EXPECT_TRUE(desk.log().contains("frmImport.txbStarting_LostFocus: Overflow, Line 10\r\n"));

    for (int i : {1, 0}) {
        form.opAutoNaming[i]->setChecked(true);
        EXPECT_EQ(form.frAutoNumber->isEnabled(), i == 1);
    }
    form.opSourceFileFormat[0]->setChecked(true);
    EXPECT_EQ(form.txbPreview[0]->text(), u"x0x.mp3") << "the format waits for a keystroke";
    EXPECT_THROW(form.txbStarting->setText(u"5"_qs), test::ProcessEnded);
    EXPECT_EQ(form.txbPreview[0]->text(), u"x5x.wav") << "the third name fails, not the first";
}

}  // namespace
