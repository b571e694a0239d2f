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

// The line with the times of a stretch: "0:01 to 0:06, 5.2 s". The length is in ms.
QString timesText(const QString& begin, const QString& end, qint32 length);

// Lines as a tool tip that wraps and shows every character as it is.
QString wrappedTip(const QStringList& lines);

}  // namespace tarnwick::segmentation
