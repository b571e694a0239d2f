#include "segmentation/alignment_row.h"

#include <cmath>

#include "runtime/arithmetic.h"
#include "runtime/numbers.h"
#include "segmentation/field_value.h"

namespace tarnwick::segmentation {

AlignmentRow alignRow(const model::PromptRow& prompt, const model::SilenceRecord& before,
                      const model::SilenceRecord& behind, const QString& wordsPerMinute,
                      const QString& tolerancePercent) {
    const qint32 actual = runtime::subtract(behind.StartAt, before.FinishAt);
    const double words = runtime::strictDouble(prompt.Words);
    const qint32 projected = fieldValue(u"Words/min"_qs, wordsPerMinute, [&](const QString& speed) {
        return runtime::roundToLong(runtime::divide(words * 60000.0, runtime::val(speed)));
    });
    const double percent = runtime::divide(runtime::subtract(actual, projected), projected) * 100.0;
    return {.Start = before.FinishAt,
            .End = behind.StartAt,
            .Actual = actual,
            .Projected = projected,
            .Variance = runtime::signedText(std::floor(percent)) + u" %"_qs,
            .flagged = std::abs(percent) > runtime::val(tolerancePercent)};
}

}  // namespace tarnwick::segmentation
