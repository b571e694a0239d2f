#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStringList>

#include "forms/texts.h"
#include "forms/units.h"

// Makers of the usual controls. A maker gives the control its parent, object name, place, caption
// and accessible name, and leaves everything else as Qt has it. UI thread only; the parent owns
// what is made.
namespace tarnwick::forms {

// "opFormat", 0 -> "opFormat(0)": the object name of an array element.
QString elementName(const QString& array, int index);

// A width of 0 is that of the caption with its trailing blanks.
QLabel* makeLabel(QWidget* parent, const QString& name, const QString& caption, const Place& place,
                  Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignVCenter);
QPushButton* makeButton(QWidget* parent, const QString& name, const QString& caption,
                        const Place& place, const QString& toolTip = {});
// `caption` is what is announced: the text of the label beside the box.
QLineEdit* makeText(QWidget* parent, const QString& name, const QString& text, const Place& place,
                    const QString& caption);
// A read-only box for a name or path that may be longer than the box: its end is shown, and all of
// it in the tool tip.
QLineEdit* makeReadOut(QWidget* parent, const QString& name, const Place& place,
                       const QString& caption);
QCheckBox* makeCheck(QWidget* parent, const QString& name, const QString& caption,
                     const Place& place, bool on = false);
QRadioButton* makeOption(QWidget* parent, const QString& name, const QString& caption,
                         const Place& place, bool on = false);
// An editable combo box: `text` need not be in the list and nothing typed is added to it.
QComboBox* makeCombo(QWidget* parent, const QString& name, const QStringList& items,
                     const QString& text, const Place& place, const QString& caption);
QListWidget* makeList(QWidget* parent, const QString& name, const Place& place,
                      const QString& caption);
// A bar of 0 to 100 at 0, without a text of its own.
QProgressBar* makeProgress(QWidget* parent, const QString& name, const Place& place);
QGroupBox* makeFrame(QWidget* parent, const QString& name, const QString& title,
                     const Place& place);

}  // namespace tarnwick::forms
