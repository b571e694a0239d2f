#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QWidget>
#include <array>

#include "forms/units.h"

namespace tarnwick::forms {

// The Batch Processor's window as data: every control, its caption and its state at start. The
// behaviour that fills and moves them is elsewhere. UI thread only.
class frmBatchProcessor : public QWidget {
    Q_OBJECT

  public:
    explicit frmBatchProcessor(QWidget* parent = nullptr);

    // Where the trace box stands once it is shown; it parks beyond the right edge. Twips.
    static constexpr Place kTraceShown{8760, 1320, 4335, 3405};
    // The top that cbClose takes when a run has ended. Twips.
    static constexpr double kCloseTopAfterRun = 8520;
    // The dark green of lbConversion; a lighter one where the window is dark.
    static QColor progressColour(const QPalette& palette);

    // Gives lbConversion the colour for the window as it is now. Unasked when the palette changes.
    void colourProgress();

    // The files in work.
    QGroupBox* frDirectories;
    QLabel* Label4;
    QLineEdit* txbProjectFolder;
    QPushButton* cbBrowse;
    QLabel* Label10;
    QLineEdit* txbProjectFiles;
    QLabel* lbConcatenationText;

    // Cut and silence.
    QGroupBox* frSilenceFunction;
    QCheckBox* chCutEnd;
    QLineEdit* txbCutStart;
    QLabel* Label20;
    QLineEdit* txbCutEnd;
    QLabel* Label17;
    QCheckBox* chSilenceEnds;
    QLineEdit* txbSetSilenceStart;
    QLabel* Label8;
    QLineEdit* txbSetSilenceEnd;
    QLabel* Label3;
    QLabel* Label9;
    QLineEdit* txbSilencedB;
    QLabel* Label1;
    QLineEdit* txbSilencePerc;
    QLabel* Label2;
    QLineEdit* txbSilenceThreshold;
    QLabel* Label14;

    // Normalisation and filter.
    QGroupBox* frNormalizationFunction;
    QCheckBox* chNormalize;
    QLineEdit* txbNormdB;
    QLabel* Label13;
    QLineEdit* txbNormPerc;
    QLabel* Label12;
    QCheckBox* chHissFilter;
    QPushButton* cbRecordBackgroundNoise;

    // Output format.
    QGroupBox* frOutputSpecs;
    QCheckBox* chConvert;
    QGroupBox* frFormat;
    std::array<QRadioButton*, 4> opFormat;
    QGroupBox* frResampleSettings;
    std::array<QRadioButton*, 8> opFrequency;
    QGroupBox* frRate;
    std::array<QRadioButton*, 5> opRate;
    QGroupBox* Frame11;
    std::array<QRadioButton*, 2> opChannel;
    QGroupBox* frKbps;
    QComboBox* cbxOutputCBR;
    QGroupBox* frACMCodecs;
    QLabel* Label6;
    QComboBox* cbxCodecs;
    QLabel* Label7;
    QComboBox* cbxCodecFormats;

    // Progress.
    QGroupBox* frStatus;
    QLabel* Label15;
    QLabel* lbCutEnd;
    QLabel* lbSetSilences;
    QLabel* lbNormalize;
    QLabel* lbHissFilter;
    QLabel* lbResample;
    QLineEdit* txbFileToConvert;
    QLabel* lbConversion;
    QProgressBar* pbConversion;
    QLabel* Label19;
    QLineEdit* txbDelay;
    QPushButton* cbProcess;
    QPushButton* cbClose;

    // Out of sight.
    QPlainTextEdit* txbDebug;
    QLabel* lbTitle;
    std::array<QRadioButton*, 2> opBPMode;
    QPushButton* cbRefresh;
    QLineEdit* txbBackupFiles;
    QLineEdit* txbRawFiles;
    QLineEdit* txbFileName;
    QLabel* Label5;
    QGroupBox* frLame;
    QLabel* Label21;
    QPushButton* cbOK;

    // 100 ms, at rest.
    QTimer* EDTXTimerSoundLoadingDone;
    QTimer* TimerEDTXSoundEditDone;
    QTimer* EDTXTimerSoundExportDone;
    QTimer* EDTXTimerAppendAutomationDone;
    QTimer* TimerEDTXSilencePosDetectionDone;
    QTimer* ASRXTimerSoundExportDone;
    QTimer* ASRXTimerRecordingFinalizationDone;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void makeDirectories();
    void makeSteps();
    void makeProgressGroup();
    void makeButtons();
    void makeParked();
    void makeLame();
    void makeSilence();
    void makeNormalization();
    void makeOutput();
    void makeResampleSettings();
    void makeCodecs();
};

}  // namespace tarnwick::forms
