#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFont>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QRect>
#include <QString>
#include <QStringList>

// What every form is made with: design units, the one font, and makers for the usual controls.
// A maker gives the control its parent, object name, place, caption and accessible name, and
// leaves everything else as Qt has it. UI thread only; the parent owns what is made.
namespace tarnwick::forms {

// Design units in a logical pixel.
inline constexpr double kTwipsPerPixel = 15.0;

// Twips as logical pixels, rounded to the nearest, halves away from zero.
int px(double twips);

// A place inside the parent in twips. A width or height of 0 takes the control's size hint.
struct Place {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

QRect rectOf(const Place& place);
void put(QWidget* control, const Place& place);

// The one font of all windows: a fixed pixel size, never scaled with the window.
QFont uiFont();

// The same a little smaller, where the design leaves little room: the list, the narrow buttons.
QFont smallFont();

// "opFormat", 0 -> "opFormat(0)": the object name of an array element.
QString elementName(const QString& array, int index);

// A caption as it is announced: no outer blanks, no closing colon, no mnemonic mark.
QString announced(const QString& caption);

// Gives a control another caption, shown and announced.
template <class Control>
void setCaption(Control* control, const QString& caption) {
    control->setText(caption);
    control->setAccessibleName(announced(caption));
}

// Gives a text box a background that stands for a state, with text that is readable on it in a dark
// scheme too.
void setBackground(QLineEdit* box, const QColor& colour);

// Takes such a background away again: the box follows its window, in light and dark.
void clearBackground(QLineEdit* box);

void setBold(QWidget* control, bool bold);

// Whether texts are lighter than the ground on which they stand.
bool isDark(const QPalette& palette);

// Sets a text as code does it: that is a change, even to the same, and who follows the box is told.
void assign(QLineEdit* box, const QString& text);

// The press that the toolkit raises as a double click because another came shortly before.
QMouseEvent pressOf(const QMouseEvent& doubleClick);

// For a read-out: it announces the value of the moment; `description` says what the value is.
void announceValue(QWidget* control, const QString& description);

// A push button whose caption breaks into lines when it is too wide for one. text() stays as given.
class CaptionButton : public QPushButton {
  public:
    using QPushButton::QPushButton;
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// A combo box that takes any text as it is typed, and whose value a passing wheel does not change.
class PlainCombo : public QComboBox {
  public:
    explicit PlainCombo(QWidget* parent);

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

// A frame with its title in the upper line. It needs less height than the style's own group box,
// and its contents may begin 15 pixels below its top. An empty title closes the line; flat hides
// it.
class TitledFrame : public QGroupBox {
  public:
    using QGroupBox::QGroupBox;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

// An opaque box with a title bar, to be laid over other controls.
class OverlayFrame : public QGroupBox {
  public:
    using QGroupBox::QGroupBox;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

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
