#include "segmentation/alignment_row.h"

#include <cmath>

#include "runtime/arithmetic.h"
#include "runtime/numbers.h"

namespace tarnwick::segmentation {

AlignmentRow alignRow(const model::PromptRow& prompt, const model::SilenceRecord& before,
                      const model::SilenceRecord& behind, const QString& wordsPerMinute,
                      const QString& tolerancePercent) {
    AlignmentRow row;
    row.Start = before.FinishAt;
    row.End = behind.StartAt;
    row.Actual = runtime::subtract(row.End, row.Start);
    const double speed = runtime::val(wordsPerMinute);
    const double words = runtime::strictDouble(prompt.Words);
    row.Projected = runtime::roundToLong(runtime::divide(words * 60000.0, speed));
    const double ratio =
        runtime::divide(runtime::subtract(row.Actual, row.Projected), row.Projected);
    row.Variance = runtime::signedText(std::floor(ratio * 100.0)) + u" %"_qs;
    row.flagged = std::abs(ratio * 100.0) > runtime::val(tolerancePercent);
    return row;
}

}  // namespace tarnwick::segmentation
