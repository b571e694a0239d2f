#pragma once

#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>

// The forms' own kinds of controls. UI thread only.
namespace tarnwick::forms {

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

}  // namespace tarnwick::forms
