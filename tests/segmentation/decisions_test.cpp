#include <gtest/gtest.h>

#include "runtime/fault.h"
#include "segmentation/alignment_row.h"
#include "segmentation/export_run.h"
#include "segmentation/row_view.h"

using namespace tarnwick;
using namespace tarnwick::segmentation;

namespace {

TEST(AlignmentRow, DeviationAndFlag) {
    struct Case {
        const char16_t* words;
        int start, end;
        const char16_t* tolerance;
        int projected;
        const char16_t* variance;
        bool flagged;
    };
    for (const Case& c :
         std::initializer_list<Case>{{u"10", 1500, 6500, u"50", 4000, u" 25 %", false},
                                     {u"10", 1500, 7600, u"50", 4000, u" 52 %", true},
                                     {u"10", 1500, 5500, u"50", 4000, u" 0 %", false},
                                     {u"10", 1500, 5499, u"50", 4000, u"-1 %", false},
                                     {u"10", 1500, 5499, u"none", 4000, u"-1 %", true},
                                     {u"10", 1500, 6000, u"50", 4000, u" 12 %", false},
                                     {u"10", 1500, 5000, u"50", 4000, u"-13 %", false},
                                     {u"10", 0, 6000, u"50", 4000, u" 50 %", false},
                                     {u"10", 0, 6001, u"50", 4000, u" 50 %", true},
                                     {u"10", 0, 0, u"50", 4000, u"-100 %", true},
                                     {u"10", 0, 0, u"100", 4000, u"-100 %", false},
                                     {u"10", 9000, 0, u"50", 4000, u"-325 %", true},
                                     {u"1", 0, 400, u"50", 400, u" 0 %", false},
                                     {u"1000", 0, 400000, u"50", 400000, u" 0 %", false}}) {
        const AlignmentRow row =
            alignRow({{}, {}, QString::fromUtf16(c.words)}, {0, 0, c.start}, {0, c.end, 0},
                     u"150"_qs, QString::fromUtf16(c.tolerance));
        EXPECT_EQ(row.Projected, c.projected);
        EXPECT_EQ(row.Actual, c.end - c.start);
        EXPECT_EQ(row.Variance, QString::fromUtf16(c.variance));
        EXPECT_EQ(row.flagged, c.flagged) << c.end;
    }
    const model::PromptRow ten{{}, {}, u"10"_qs};
    EXPECT_THROW(alignRow(ten, {}, {}, u"fast"_qs, u"50"_qs), runtime::Fault);
    EXPECT_THROW(alignRow({{}, {}, u"0"_qs}, {}, {}, u"150"_qs, u"50"_qs), runtime::Fault);
    EXPECT_THROW(alignRow({{}, {}, u"ten"_qs}, {}, {}, u"150"_qs, u"50"_qs), runtime::Fault);
}

TEST(RowView, ARowStandsAQuarterIntoTheView) {
    EXPECT_EQ(viewOfRow(5000, {0, 8000}), (ViewRange{3000, 11000}));
    EXPECT_EQ(viewOfRow(2000, {0, 8000}), std::nullopt);
    EXPECT_EQ(viewOfRow(2001, {1000, 9000}), (ViewRange{1, 8001}));
    EXPECT_EQ(viewOfRow(10, {0, 2}), (ViewRange{10, 12})) << "halves go to the even number";
}

TEST(RowView, TheViewJumpsBeforeTheHeadLeavesIt) {
    EXPECT_EQ(viewAfterJump(8999, {0, 10000}), std::nullopt);
    EXPECT_EQ(viewAfterJump(9000, {0, 10000}), (ViewRange{8000, 18000}));
    EXPECT_EQ(playedPercent(333, 1000), 33);
    EXPECT_EQ(playedPercent(1, 200), 0);
    EXPECT_EQ(playedPercent(3, 200), 2);
    EXPECT_EQ(playedPercent(2000, 1000), 100);
    EXPECT_EQ(playedPercent(21474836, 21474836), 100);
    EXPECT_THROW(playedPercent(21474837, 30000000), runtime::Fault);
}

TEST(ExportRun, GoesOnOnlyWhereTheNextRowIsKnown) {
    using enum ExportStep;
    struct Case {
        ExportMoment moment;
        ExportStep step;
        bool stuck = false;
    };
    for (const Case& c : std::initializer_list<Case>{
             {{.rowsOfRun = 3, .rowsInList = 3}, Nothing},
             {{.runOpen = true}, Finish},
             {{.runOpen = true, .rowsOfRun = 1, .rowsInList = 1}, NextRow},
             {{.runOpen = true, .rowsOfRun = 1}, Wait, true},
             {{.runOpen = true, .rowsOfRun = 1, .listIsChanging = true}, Wait},
             {{.runOpen = true, .rowsOfRun = 1, .rowsInList = 1, .exportsPending = 1}, Nothing},
             {{.runOpen = true, .vfExportIndex = 3, .rowsOfRun = 3, .rowsInList = 4}, Finish},
             {{.runOpen = true, .vfExportIndex = 3, .rowsOfRun = 4, .rowsInList = 3}, Wait, true},
             {{.runOpen = true, .vfExportIndex = 2, .rowsOfRun = 3, .rowsInList = 3}, NextRow}}) {
        EXPECT_EQ(nextExportStep(c.moment), c.step) << c.moment.vfExportIndex;
        EXPECT_EQ(isStuck(c.moment), c.stuck) << c.moment.vfExportIndex;
    }
}

}  // namespace
