#pragma once

#include <QObject>

#include "batch/services.h"

class QLineEdit;

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

// The two levels that the operator enters in decibels or in percent: the silence threshold and the
// normalisation maximum. In each pair, the box that last got the focus drives the other. UI thread.
class LevelBoxes : public QObject {
  public:
    LevelBoxes(forms::frmBatchProcessor& form, const Services& services);

    // From now on the decibel boxes drive the others, wherever the focus is.
    void decibelsDrive();

    // Whether the level allows a run. If not, a message box says why and the pair's decibel box
    // turns red; otherwise that box gets its normal colours back. The number is read as displayed,
    // in the desktop's format; a text without a number counts as 0.
    bool silenceThresholdAllowed();
    bool normMaximumAllowed();

    // Sets txbSilenceThreshold, 0 to 32767, from the percent box. Strict: faults with "Type
    // mismatch".
    void writeSilenceThreshold();
    // Percent of full scale. Strict: faults with "Type mismatch" or "Overflow".
    float normPercent() const;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void txbSilencedB_Change();
    void txbSilencePerc_Change();
    void txbNormdB_Change();
    void txbNormPerc_Change();
    void gotFocus(const QObject* box);
    void lostFocus(const QObject* box);

    forms::frmBatchProcessor& form_;
    const Services& services_;
    QString vsSilenceUnit;  // "dB" or "Perc", the box that drives the other; empty before a load
    QString vsNormUnit;
};

}  // namespace tarnwick::batch
