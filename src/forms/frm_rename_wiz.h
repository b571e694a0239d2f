#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "forms/name_list.h"
#include "forms/units.h"

namespace tarnwick::forms {

// The Rename Wizard's window as data: every control, its caption and its state at start, which is
// that of cleared fields with nothing previewed. The behaviour is elsewhere. UI thread only.
class frmRenameWiz : public QWidget {
    Q_OBJECT

  public:
    explicit frmRenameWiz(QWidget* parent = nullptr);

    // Where the lists and the buttons between them stand; a width and height of 0 leave a size as
    // it is. Twips.
    struct Arrangement {
        Place lbxAvailableFiles, lbxSelectedFiles;
        Place cbAdd, cbAddAll, cbRemove, cbRemoveAll, cbFlip;
    };
    static const Arrangement kSideBySide;  // as the form is designed
    static const Arrangement kOneAboveTheOther;
    void arrange(const Arrangement& arrangement);

    // Folder and filter.
    QComboBox* Drivelb;
    QListWidget* Directorylb;  // the chain of folders down to the chosen one, then its sub-folders
    QLabel* Label1;
    QLineEdit* txbFileExtFilter;
    QCheckBox* chRecurse;
    NameList* Filelb;  // out of sight

    // The two lists.
    QLabel* Label2;
    NameList* lbxAvailableFiles;
    NameList* lbxSelectedFiles;
    QPushButton* cbAdd;
    QPushButton* cbAddAll;
    QPushButton* cbRemove;
    QPushButton* cbRemoveAll;
    QPushButton* cbFlip;

    // The rules.
    QLabel* Label3;
    QLineEdit* txbAddPrefix;
    QCheckBox* chIncrNumberPrefix;
    QCheckBox* chIncrLetterPrefix;
    QLabel* Label4;
    QLineEdit* txbAddSuffix;
    QCheckBox* chIncrNumberSuffix;
    QCheckBox* chIncrLetterSuffix;
    QLabel* Label5;
    QLineEdit* txbSearchFor;
    QLabel* Label6;
    QLineEdit* txbReplaceWith;
    QCheckBox* chCaseSensitive;
    QLabel* Label7;
    QLabel* Label8;
    QLineEdit* txbInsert;
    QLabel* Label9;
    QLineEdit* txbRemove;
    QLabel* Label10;
    QLineEdit* txbStartingAt;
    QLabel* Label11;
    QLineEdit* txbSourceExt;
    QLabel* Label12;
    QLineEdit* txbTargetExt;
    QPushButton* cbPreview;
    QPushButton* cbCancel;
    QPushButton* cbRename;

    // Dates.
    QLineEdit* txbDateModified;
    QLabel* Label13;
    QLineEdit* txbNewDate;
    QPushButton* cbReDatePreview;
    QPushButton* cbReDateCancel;
    QPushButton* cbReDate;

    QPushButton* cbRenamePerList;
    QPushButton* cbClear;
    QPushButton* cbClose;

    // Separating rules.
    QPushButton* Command1;
    QPushButton* Command2;
    QPushButton* Command3;
    QPushButton* Command4;
    QPushButton* Command5;
    QPushButton* Command6;

  private:
    void makeFolder();
    void makeLists();
    void makeAffixRules();
    void makeTextRules();
    void makeExtensionRule();
    void makeReDating();
    void makeWindowButtons();
};

}  // namespace tarnwick::forms
