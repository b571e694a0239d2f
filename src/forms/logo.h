#pragma once

#include <QWidget>

class QPainter;

namespace tarnwick::forms {

// Draws the product's sign, a wave on a rounded tile, into a square at any size.
void paintLogo(QPainter& painter, const QRectF& square);

// The sign as a picture on a form.
class Logo : public QWidget {
    Q_OBJECT

  public:
    explicit Logo(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarnwick::forms
