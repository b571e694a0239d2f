#pragma once

#include <QComboBox>
#include <QDialog>
#include <QPushButton>

namespace tarnwick::forms {

// Asks which worksheet to import, as data; a window of its own, not modal. UI thread only.
class frmSelectImportSheet : public QDialog {
    Q_OBJECT

  public:
    explicit frmSelectImportSheet(QWidget* parent = nullptr);

    QComboBox* cbxSheetNames;
    QPushButton* cbSelectSheet;
};

}  // namespace tarnwick::forms
