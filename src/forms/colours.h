#pragma once

class QColor;
class QLineEdit;
class QPalette;

// Colours that stand for a state, in light and dark schemes. UI thread only.
namespace tarnwick::forms {

// Whether texts are lighter than the ground on which they stand.
bool isDark(const QPalette& palette);

// A text colour that stands for a state, adapted to the background: lighter on a dark background,
// where a pure colour is hard to read.
QColor readableOn(const QColor& ground, const QColor& colour);

// Gives a text box a background that stands for a state, with text that is readable on it in a dark
// scheme too.
void setBackground(QLineEdit* box, const QColor& colour);

// Takes such a background away again: the box follows its window, in light and dark.
void clearBackground(QLineEdit* box);

}  // namespace tarnwick::forms
