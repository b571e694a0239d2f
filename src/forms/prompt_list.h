#pragma once

#include <QTreeWidget>

namespace tarnwick::forms {

// An empty report list of prompts, without columns: one row picked at a time, nothing edited,
// dragged or sorted. Every press picks its row, also the second of a double click. Cells align as
// model::kListDesign tells, whoever writes them; the two millisecond columns keep their text and
// draw none. Red text set on a cell stays red when picked.
QTreeWidget* makePromptList(QWidget* parent);

// Empties the headers and makes them afresh, with the widths of model::kListDesign x vvScale.
void makePromptColumns(QTreeWidget& list, double vvScale);

}  // namespace tarnwick::forms
