#pragma once

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTextEdit>
#include <QTimer>
#include <QTreeWidget>
#include <QWidget>
#include <array>

namespace tarnwick::forms {

// The main window as data: the work area with its waveform place, buttons and prompt list, the
// preferences page, the two progress frames, the menu tree and the timers. Every control is a
// public member with its own name as object name; the window owns them all. No behaviour: who
// reacts to a control connects to it. Places and sizes of the work area are set by Scaling.
//
// Every timer has an interval of 100 ms and is at rest. Qt::UserRole and the cells of
// lvAudioDetails are the behaviour's; the waveform display is made by the engine over Picture1.
class frmMain : public QWidget {
  public:
    explicit frmMain(QWidget* parent = nullptr);

    // The menu tree. The frame adopts the bar (QMainWindow::setMenuBar).
    QMenuBar* menuBar;
    QMenu *mnuFile, *mnuWindows, *mnuTools, *mnuHelp, *mnuTutorials;
    QAction *mnuLoadFiles, *mnuBackupSourceFile, *mnuExport, *mnuQuit;
    QAction *mnuBatchProcessor, *mnuRenameWizard, *mnuProjectFolder, *mnuPreferences;
    QAction *mnuPlayfromListView, *mnuZoomIn, *mnuZoomOut, *mnuUndo;
    QAction *mnuHelpAbout, *mnuManual, *mnuHistory;
    QAction *mnuTutorialPresentation, *mnuTutorialBP, *mnuTutorialBasicScriptFormatting;

    QTimer *TimerMenuEnabler, *TimerReload, *TimerDisplayWaveform, *TimerPlaybackPos;
    QTimer *EDTTimerSilencePosDetectionDone, *EDTTimerSoundExportDone;

    QFrame* frTarnwick;  // the work area

    // Waveform. Picture1 only lends its rectangle and is never shown. The slider's low end is up.
    QWidget* Picture1;
    QSlider* slWAVFormScale;
    QProgressBar* pbWAVFormBuilding;
    QLabel* lbStatus;

    QFrame* frAction;
    QPushButton *cbZoomIn, *cbZoomOut, *cbZoomSelection, *cbZoomFull, *cbUndo;

    QGroupBox* frLocations;
    QLabel *Label37, *LabelTotalDuration;
    QLabel *Label36, *LabelSelectionDuration;
    QLabel *Label34, *LabelSelectionBegin;
    QLabel *Label18, *LabelSelectionEnd;

    QGroupBox* Frame4;  // kept up to date, never shown
    QLabel *Label3, *Label4, *LabelRangeBegin, *Label5, *LabelRangeEnd, *Label6,
        *LabelRangeDuration;

    QGroupBox* frTransport;
    QPushButton *CommandPlay, *CommandPause, *CommandStop;
    QPushButton* CommandPlaySelection;  // never shown

    QGroupBox* frEdit;
    QPushButton *cbDeleteSelection, *cbFlattenSelection, *cbInsertSilence;
    QLineEdit* txbInsertSilence;

    QGroupBox* frFiles;
    QLabel *Label41, *Label42;
    QLineEdit *txbNberFileNames, *txbNberAudioFiles;

    QGroupBox* frSpecs;
    QLabel *Label32, *Label33, *Label10, *Label13, *Label38, *Label16;
    QLineEdit *txbSilence, *txbThreshold, *txbSpeed, *txbVariance;
    QLineEdit *txbSilencePerc, *txbSilenceThreshold;  // working fields, never shown
    QPushButton* cbProcess;

    // The prompt list: columns as model::ListColumn, made by Scaling.
    QTreeWidget* lvAudioDetails;
    QLineEdit* txbCalculating;  // laid over the list
    QTextEdit* txbContent;      // the strip below the list while that is shortened
    QPushButton* cbContent;

    // The progress of a script import and of an export, laid over the work area. Hidden.
    QGroupBox* frLoadFiles;
    QLabel *lbImporting, *Label29, *Label28;
    QProgressBar* pbLoadingScript;
    QLineEdit *txbScript, *txbAudio;
    QGroupBox* frExportFiles;
    QLabel* lbExporting;
    QProgressBar* pbExporting;

    QFrame* frPreferences;  // the preferences page, hidden

    // Each array of options has its group, of which at most one is on.
    QGroupBox* frScript;
    std::array<QRadioButton*, 2> OpScriptFormat;
    QButtonGroup* OpScriptFormatGroup;
    std::array<QRadioButton*, 2> opRowEach;
    QButtonGroup* opRowEachGroup;
    QGroupBox* frExcelSpecific;
    QCheckBox *chIgnoreFirstRow, *chPromptSheet, *chImportSpecifiedRows;
    QLineEdit *txbImportStartRow, *txbImportEndRow;
    QLabel* Label43;

    QGroupBox *Frame10, *frFileSpecs;  // "Source File Format" and the file specs in it
    std::array<QRadioButton*, 4> opSourceFileFormat;
    QButtonGroup* opSourceFileFormatGroup;
    QLabel *lbSpecs, *lbFrequency, *lbBits, *lbChannels, *lbBitRate;
    QComboBox *cbxFrequency, *cbxBits, *cbxChannels, *cbxBitRate;
    QCheckBox* chBUSource;

    QGroupBox* Frame8;  // "Play Individual Files"
    std::array<QRadioButton*, 2> opPlayfromlistview;
    QButtonGroup* opPlayfromlistviewGroup;
    QLineEdit* Text2;

    QGroupBox* frNaming;
    std::array<QRadioButton*, 2> opAutoNaming;
    QButtonGroup* opAutoNamingGroup;
    QGroupBox* frAutoNumber;
    QLabel *lbPrefix, *lbStart, *lbIncr, *lbSuffix, *lbPreview;
    QLineEdit *txbPrefix, *txbStarting, *txbIncrement, *txbSuffix;
    std::array<QLineEdit*, 3> txbPreview;
    QLineEdit* txbFormat;  // never shown

    QGroupBox* Frame7;  // "Exported Files"
    QCheckBox* chAddPading;
    QLineEdit* txbPading;
    QLabel* Label35;

    QGroupBox* frScaling;
    QSlider* slScaling;  // percent
    QLineEdit* txbScaling;

    QGroupBox* frRecalcTimer;
    QCheckBox* chRecalcTimer;
    QLineEdit* txbRecalcTimer;
    QLabel* lbRecalcTimer;

    QPushButton *cbPreferencesSave, *cbPreferencesIgnore, *cbPreferencesLoad;

  private:
    void makeMenus();
    void makeFileMenu();
    void makeWindowsMenu();
    void makeToolsMenu();
    void makeHelpMenu();
    void makeWaveform();
    void makeAction();
    void makeLocations();
    void makePositions();
    void makeTransport();
    void makeEdit();
    void makeFiles();
    void makeSpecs();
    void makeList();
    void makeLoadFiles();
    void makeExportFiles();
    void makePreferences();
    void makeScriptGroup();
    void makeExcelGroup();
    void makeSourceGroup();
    void makeSourceCombos();
    void makePlayGroup();
    void makeNamingGroup();
    void makeAutoNumberGroup();
    void makeExportedGroup();
    void makeScalingGroup();
    void makeTimerGroup();
    void makePageButtons();
};

}  // namespace tarnwick::forms
