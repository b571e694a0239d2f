#include "segmentation/editing.h"

#include <QToolTip>

#include "desk.h"
#include "segmentation/waveform_controls.h"

using namespace tarnwick;

namespace {

struct Edits : test::MainDesk {
    segmentation::WaveformControls controls{form, desk.failure, EDT};
    int asked = 0;
    segmentation::Editing editing{form, desk.failure, session, EDT, [this] { ++asked; }};
};

TEST_F(Edits, StopTheSoundAndHoldBackWhatWouldReadTheList) {
    EDT.display.rangeBegin = 1500;
    form.txbInsertSilence->setText(u"600"_qs);
    form.cbUndo->setEnabled(true);
    const std::tuple<QAbstractButton*, bool, QString, int> edits[] = {
        {form.cbFlattenSelection, true, u"SoundStop|ApplyVolume 2000 2600"_qs, 1},
        {form.cbFlattenSelection, false, u"SoundStop"_qs, 0},
        {form.cbDeleteSelection, true, u"SoundStop|DeleteRange 2000 2600|SetSelection 0 0 0"_qs, 1},
        {form.cbDeleteSelection, false, u"SoundStop"_qs, 0},
        {form.cbInsertSilence, true, u"SoundStop|SetSelection 0 0 0|InsertSilence 2000 600"_qs, 1},
        {form.cbInsertSilence, false, u"SoundStop|SetSelection 0 0 0|InsertSilence 0 600"_qs, 1},
        {form.cbUndo, true, u"Undo"_qs, 1}};
    for (const auto& [edit, selected, calls, held] : edits) {
        select(selected ? 1 : 0, 2000, 2600);
        edit->setEnabled(true);
        asked = 0;
        session.vlSavedRangeBegin = 0;
        edit->click();
        EXPECT_EQ(EDT.taken(), calls);
        EXPECT_EQ(asked, held) << qPrintable(calls);
        EXPECT_EQ(session.vlSavedRangeBegin, edit == form.cbUndo ? 0 : 1500) << "to come back to";
    }
    form.mnuUndo->trigger();
    EXPECT_EQ(EDT.taken(), u"Undo");
}

TEST_F(Edits, OnlyAStretchCanBePlayedOrEdited) {
    for (const auto& [available, end, can] :
         {std::tuple{1, 701, true}, {1, 700, false}, {0, 800, false}}) {
        select(static_cast<qint16>(available), 700, end);
        for (const QPushButton* button :
             {form.CommandPlaySelection, form.cbDeleteSelection, form.cbFlattenSelection})
            EXPECT_EQ(button->isEnabled(), can) << end;
        EXPECT_EQ(form.LabelSelectionBegin->text() + u' ' + form.LabelSelectionEnd->text() + u' ' +
                      form.LabelSelectionDuration->text(),
                  can ? u"700 701 1" : u"700 700 0")
            << "kept where nothing is selected";
    }
    select(1, 700, 1100);
    EXPECT_EQ(form.txbInsertSilence->text(), u"400");
    select(1, 700, 700);
    EXPECT_EQ(form.txbInsertSilence->text(), u"1500");
    select(0, 0, 0);
    for (const auto& [text, length] : std::map<QString, QString>{
             {u"2.5 s"_qs, u"2"_qs}, {u"3.5"_qs, u"4"_qs}, {u"s 2"_qs, u"0"_qs}, {{}, u"0"_qs}}) {
        form.txbInsertSilence->setText(text);
        form.cbInsertSilence->click();
        EXPECT_EQ(EDT.taken(), u"SoundStop|SetSelection 0 0 0|InsertSilence 0 "_qs + length);
    }
}

TEST_F(Edits, TheViewIsZoomedAndTheSelectionClearedByItsGesture) {
    select(1, 100, 200);
    for (const qint16 kind : {1, 2, 3, 4})
        Q_EMIT EDT.WaveMouseNotification(kind, 0, 0);
    EXPECT_EQ(EDT.taken(), u"SetSelection 0 0 0") << "kind 3 alone";
    EDT.display.selected = 0;
    Q_EMIT EDT.WaveMouseNotification(3, 0, 0);
    EXPECT_TRUE(EDT.taken().isEmpty());
    form.cbZoomSelection->setEnabled(true);
    click({form.cbZoomIn, form.cbZoomOut, form.cbZoomFull, form.cbZoomSelection});
    form.mnuZoomIn->trigger();
    form.mnuZoomOut->trigger();
    EXPECT_EQ(EDT.taken(), u"ZoomIn|ZoomOut|ZoomFull|ZoomToSelection 1|ZoomIn|ZoomOut");
    Q_EMIT EDT.WaveRangeChanged(500, 1700);
    EXPECT_EQ(
        form.LabelRangeBegin->text() + form.LabelRangeEnd->text() + form.LabelRangeDuration->text(),
        u"50017001200");
}

TEST_F(Edits, TheScaleSliderStandsUpsideDown) {
    using engine::WaveformSettings;
    WaveformSettings& settings = EDT.display.settings;
    settings.setByteAt(WaveformSettings::kHideRuler, 1);
    settings.setByteAt(WaveformSettings::kHideLevels, 1);
    settings.setByteAt(10, 7);  // another
    form.slWAVFormScale->setValue(60);
    controls.setUp();
    EXPECT_EQ(form.slWAVFormScale->value(), 450);
    EXPECT_FLOAT_EQ(settings.verticalScale(), 1.0f);
    EXPECT_EQ(settings.byteAt(WaveformSettings::kHideRuler) +
                  settings.byteAt(WaveformSettings::kHideLevels),
              0);
    EXPECT_EQ(settings.byteAt(10), 7);
    form.slWAVFormScale->setValue(50);
    EXPECT_FLOAT_EQ(settings.verticalScale(), 5.0f);
    EXPECT_EQ(form.slWAVFormScale->toolTip(), u"500");
    form.slWAVFormScale->setValue(500);
    EXPECT_FLOAT_EQ(settings.verticalScale(), 0.5f);
}

TEST_F(Edits, TheScaleIsShownBesideTheHandleWhileItIsDragged) {
    QSlider& slider = *form.slWAVFormScale;
    controls.setUp();
    EXPECT_FALSE(QToolTip::isVisible()) << "nobody drags";
    slider.setSliderDown(true);
    EXPECT_EQ(QToolTip::text(), u"100");
    const auto place = [] {
        for (const QWidget* window : QApplication::topLevelWidgets())
            if (window->inherits("QTipLabel") && window->isVisible()) return window->geometry();
        return QRect();
    };
    const QRect low = place();
    slider.setSliderPosition(200);
    EXPECT_EQ(QToolTip::text(), u"350");
    EXPECT_LT(place().top(), low.top() - slider.height() / 3) << "it follows the handle";
    EXPECT_GE(place().left(), slider.mapToGlobal(QPoint(slider.width() / 2, 0)).x());
}

}  // namespace
