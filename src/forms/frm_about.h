#pragma once

#include <QDialog>
#include <QLabel>

#include "forms/logo.h"
#include "forms/units.h"

namespace tarnwick::forms {

// The About box as data; a window of its own, not modal. UI thread only.
class frmAbout : public QDialog {
    Q_OBJECT

  public:
    explicit frmAbout(QWidget* parent = nullptr);

    // Size and spot on the screen at each show, whatever the scale factor. Twips.
    static constexpr Place kPlace{2000, 2000, 7320, 3885};

    Logo* imgLogo;
    QLabel* Label1;
    QLabel* lbVersion;
    QLabel* Label2;
};

}  // namespace tarnwick::forms
