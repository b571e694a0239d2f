#pragma once

#include <QStringList>

#include "model/prompt_row.h"
#include "segmentation/alignment_row.h"

namespace tarnwick::segmentation {

// What is known of a row of the list and of its stretch of speech.
struct RowFacts {
    int row;  // from 1
    const model::PromptRow& prompt;
    const AlignmentRow& timing;
    QString begin, end;  // times, as texts
    double wordsPerMinute;
    bool hasStretch;  // false: there are more rows than stretches
};

// The lines that explain a row while the pointer rests on it: row and file name, the prompt (its
// start, if it is long), the time, why it is red.
QStringList rowTip(const RowFacts& facts);

// Lines as a tool tip that wraps and shows every character as it is.
QString wrappedTip(const QStringList& lines);

}  // namespace tarnwick::segmentation
