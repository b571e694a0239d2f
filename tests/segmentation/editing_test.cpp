#include "segmentation/editing.h"

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
    select(1, 2000, 2600);
    EXPECT_EQ(form.LabelSelectionDuration->text(), u"600");
    for (QPushButton* edit :
         {form.cbFlattenSelection, form.cbDeleteSelection, form.cbInsertSilence}) {
        edit->click();
        EXPECT_EQ(EDT.taken().first(), u"SoundStop");
    }
    form.mnuUndo->trigger();
    EXPECT_EQ(EDT.taken(), QStringList(u"Undo"_qs));
    EXPECT_EQ(asked, 4);
}

TEST_F(Edits, ACursorOffersThePauseAndNothingSelectedMeansTheStart) {
    select(1, 700, 700);
    EXPECT_FALSE(form.cbDeleteSelection->isEnabled());
    EXPECT_EQ(form.txbInsertSilence->text(), u"1500");
    select(0, 0, 0);
    EXPECT_EQ(form.LabelSelectionBegin->text(), u"700") << "read-outs keep their last values";
    for (const auto& [text, length] : std::map<QString, QString>{
             {u"2.5 s"_qs, u"2"_qs}, {u"3.5"_qs, u"4"_qs}, {u"s 2"_qs, u"0"_qs}, {{}, u"0"_qs}}) {
        form.txbInsertSilence->setText(text);
        form.cbInsertSilence->click();
        EXPECT_EQ(EDT.taken().last(), u"InsertSilence 0 "_qs + length);
    }
}

TEST_F(Edits, TheViewIsZoomedAndTheSelectionClearedByItsGesture) {
    select(1, 100, 200);
    for (const qint16 kind : {1, 2, 3, 4})
        Q_EMIT EDT.WaveMouseNotification(kind, 0, 0);
    EXPECT_EQ(EDT.taken(), QStringList(u"SetSelection 0 0 0"_qs)) << "kind 3 alone";
    EDT.display.selected = 0;
    Q_EMIT EDT.WaveMouseNotification(3, 0, 0);
    EXPECT_TRUE(EDT.taken().isEmpty());
    form.cbZoomSelection->setEnabled(true);
    for (QPushButton* button :
         {form.cbZoomIn, form.cbZoomOut, form.cbZoomFull, form.cbZoomSelection})
        button->click();
    form.mnuZoomIn->trigger();
    form.mnuZoomOut->trigger();
    EXPECT_EQ(EDT.taken(), QStringList({u"ZoomIn"_qs, u"ZoomOut"_qs, u"ZoomFull"_qs,
                                        u"ZoomToSelection 1"_qs, u"ZoomIn"_qs, u"ZoomOut"_qs}));
    Q_EMIT EDT.WaveRangeChanged(500, 1700);
    EXPECT_EQ(
        form.LabelRangeBegin->text() + form.LabelRangeEnd->text() + form.LabelRangeDuration->text(),
        u"50017001200");
}

TEST_F(Edits, TheScaleSliderStandsUpsideDown) {
    controls.setUp();
    form.slWAVFormScale->setValue(50);
    EXPECT_FLOAT_EQ(EDT.display.settings.verticalScale(), 5.0f);
    EXPECT_EQ(form.slWAVFormScale->toolTip(), u"500");
    form.slWAVFormScale->setValue(500);
    EXPECT_FLOAT_EQ(EDT.display.settings.verticalScale(), 0.5f);
}

}  // namespace
