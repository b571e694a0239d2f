#include "forms/scaling.h"

#include <gtest/gtest.h>

#include <QHeaderView>
#include <QMdiSubWindow>

#include "forms/fonts.h"
#include "forms/form_checks.h"
#include "forms/units.h"
#include "model/list_columns.h"
#include "support/text_table.h"

namespace tarnwick::forms {
namespace {

struct ScalingTest : testing::TestWithParam<double> {
    ScalingTest() {
        Scaling(frame, form, GetParam());
        placePicture(form, GetParam());
    }
    QRect scaled(double left, double top, double width, double height) const {
        const double scale = GetParam();
        return rectOf({left * scale, top * scale, width * scale, height * scale});
    }

    frmFrame frame;
    frmMain form;
};

INSTANTIATE_TEST_SUITE_P(Scales, ScalingTest, testing::Values(1.0, 1.5, 1.53, 2.0));

TEST_P(ScalingTest, ListedControlsAreScaledFromTheirDesign) {
    EXPECT_EQ(frame.size(), scaled(0, 0, 14075, 11200).size());
    EXPECT_EQ(form.size(), scaled(0, 0, 13750, 10250).size());
    EXPECT_EQ(form.frTarnwick->geometry(), scaled(3 * 15, 1 * 15, 900 * 15, 684 * 15));
    const auto even = [](double value) { return static_cast<int>(std::nearbyint(value)); };
    EXPECT_EQ(form.Picture1->geometry(), QRect(even(50 * GetParam()), even(20 * GetParam()),
                                               even(725 * GetParam()), even(225 * GetParam())));
    EXPECT_EQ(form.cbZoomSelection->geometry(), scaled(3240, 0, 1400, 360));
    EXPECT_EQ(form.frSpecs->geometry(), scaled(840, 5100, 12450, 660));
    EXPECT_EQ(form.lvAudioDetails->geometry(), scaled(120, 5880, 13200, 4215));
    EXPECT_EQ(form.cbContent->geometry(), scaled(11880, 4660, 1360, 440));
    EXPECT_EQ(form.txbInsertSilence->width(), scaled(0, 0, 735, 0).width());
    EXPECT_EQ(form.txbInsertSilence->height(), px(300));  // not listed, so not scaled
    setListHeight(form, kListHeightAboveContent, GetParam());
    EXPECT_EQ(form.lvAudioDetails->geometry(), scaled(120, 5880, 13200, 3255));
    EXPECT_EQ(form.txbSilence->font().pixelSize(), uiFont().pixelSize());
}

TEST_P(ScalingTest, CaptionsEndWhereTheirValueBegins) {
    const char* const captions = R"(
Label37|LabelTotalDuration|Label36|LabelSelectionDuration|Label34|LabelSelectionBegin|
Label18|LabelSelectionEnd|Label32|txbSilence|Label10|txbThreshold|Label38|txbSpeed|
Label16|txbVariance|Label41|txbNberFileNames|Label42|txbNberAudioFiles)";
    const int top = scaled(0, 260, 0, 0).y();
    for (const QStringList& names : test::rowsOf(captions, 2)) {
        const QRect caption = form.findChild<QWidget*>(names[0])->geometry();
        EXPECT_EQ(caption.right() + 1, form.findChild<QWidget*>(names[1])->x())
            << qPrintable(names[0]);
        EXPECT_EQ(caption.y(), top);
        EXPECT_GE(caption.x(), 0);
    }
    EXPECT_EQ(form.txbThreshold->pos(), scaled(3600, 240, 0, 0).topLeft());
    EXPECT_EQ(form.Label13->pos(), QPoint(form.txbThreshold->geometry().right() + 1, top));
    EXPECT_EQ(form.Label33->x(), form.txbSilence->geometry().right() + 1);
}

TEST_P(ScalingTest, ControlsDoNotOverlap) {
    QWidgetList parents{form.frTarnwick,   form.frAction, form.frLocations,    form.frTransport,
                        form.frEdit,       form.frFiles,  form.frSpecs,        form.frPreferences,
                        form.frAutoNumber, form.Frame10,  form.frExcelSpecific};
    for (const QWidget* parent : parents) {
        const QWidgetList all =
            parent->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QWidget* one : all) {
            if (one->isHidden() && one != form.Picture1) continue;
            const std::string name = one->objectName().toStdString();
            EXPECT_TRUE(one == form.lbSpecs || parent->rect().contains(one->geometry())) << name;
            for (const QWidget* other : all) {
                EXPECT_TRUE(other == one || other->isHidden() ||
                            !other->geometry().intersects(one->geometry()))
                    << name << " and " << other->objectName().toStdString();
            }
        }
    }
}

TEST_P(ScalingTest, NothingIsCutOff) {
    form.txbInsertSilence->setText(QStringLiteral("60000"));
    form.txbCalculating->setText(QStringLiteral("Adding Initial Pause..."));
    form.CommandPause->setText(QStringLiteral("Resume"));
    for (QLineEdit* counter : {form.txbNberFileNames, form.txbNberAudioFiles})
        counter->setText(QStringLiteral("500"));
    for (const QWidget* control : form.findChildren<QWidget*>())
        if (isControl(control) && !control->objectName().startsWith(u"qt_")) expectRoom(*control);
    for (const char* status : {"Status7: Analyzing waveform... 100%",
                               "Status14: Paused at 00:00:00.000", "Status9: Playback paused"}) {
        form.lbStatus->setText(QLatin1String(status));
        expectRoom(*form.lbStatus);
    }
}

TEST(FrameTest, StaysOnTheScreenAndScrollsToWhatIsCutOff) {
    frmFrame frame;
    frame.resize(1436, 1142);
    frame.keepWithin({0, 32, 1366, 736});
    EXPECT_TRUE(QRect(0, 32, 1366, 736).contains(frame.geometry().adjusted(-4, -28, 4, 4)));
    QMdiSubWindow* child = frame.mdiArea->addSubWindow(new QWidget, Qt::FramelessWindowHint);
    child->setGeometry(0, 0, 1402, 1046);
    auto* corner = new QPushButton(child->widget());
    corner->setGeometry(1300, 1000, 90, 30);
    frame.show();
    const QWidget& view = *frame.mdiArea->viewport();
    frame.reveal(*corner);
    EXPECT_TRUE(view.rect().contains(QRect(corner->mapTo(&view, QPoint()), corner->size())));
    frame.reveal(*child);  // larger than the view
    EXPECT_EQ(child->pos(), QPoint(0, 0));
}

TEST_P(ScalingTest, ColumnsAreRecreatedAndFitTheTimes) {
    Scaling(frame, form, GetParam());
    const QTreeWidget& list = *form.lvAudioDetails;
    ASSERT_EQ(list.columnCount(), model::kListColumns);
    EXPECT_EQ(list.headerItem()->text(model::kStartMsec), QStringLiteral("Start_msec"));
    EXPECT_EQ(list.headerItem()->textAlignment(model::kWords) & Qt::AlignHCenter, Qt::AlignHCenter);
    EXPECT_EQ(list.columnWidth(model::kContent), scaled(0, 0, 4400, 0).width());
    EXPECT_EQ(list.columnWidth(model::kStartMsec), 1);
    EXPECT_EQ(list.columnWidth(model::kEndMsec), 1);
    EXPECT_GE(list.columnWidth(model::kActual),
              QFontMetrics(list.font()).horizontalAdvance(QStringLiteral("00:00:04.000")));
    EXPECT_LE(list.header()->length(), list.width() - 20);  // room for the scroll bar
}

}  // namespace
}  // namespace tarnwick::forms
