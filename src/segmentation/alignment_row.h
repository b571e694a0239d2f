#pragma once

#include <QString>

#include "model/prompt_row.h"
#include "model/silence_record.h"

namespace tarnwick::segmentation {

// One prompt compared with the stretch of speech at its position. All times in milliseconds.
struct AlignmentRow {
    qint32 Start;      // end of the silence before the stretch
    qint32 End;        // start of the silence after it; 0 if no silence was found
    qint32 Actual;     // End minus Start; negative if the stretch has no end
    qint32 Projected;  // time that the words take at the reading speed
    QString Variance;  // deviation in whole percent, rounded down: " 12 %", "-13 %"
    bool flagged;      // the deviation is beyond the tolerance
};

// `wordsPerMinute` and `tolerancePercent` are read leniently. Faults with "Division by zero" if the
// speed reads as 0 or the projection is 0, with "Type mismatch" if the words are not a number.
AlignmentRow alignRow(const model::PromptRow& prompt, const model::SilenceRecord& before,
                      const model::SilenceRecord& behind, const QString& wordsPerMinute,
                      const QString& tolerancePercent);

}  // namespace tarnwick::segmentation
