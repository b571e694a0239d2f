#pragma once

#include <QObject>

#include "batch/services.h"

class QLineEdit;

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

// The two levels that the operator gives in decibels or in percent: the silence threshold and the
// normalisation maximum. Of each pair, the box that the operator is in drives the other. UI thread.
class LevelBoxes : public QObject {
  public:
    LevelBoxes(forms::frmBatchProcessor& form, const Services& services);

    // The decibel boxes drive from now on, whatever has the keyboard.
    void decibelsDrive();

    // May a run start? When not, a box says why and the pair's decibel box turns red; when so, that
    // box has the window's own colours again. What the box shows counts, in the desktop's way of
    // writing numbers; a text without a number counts as 0.
    bool silenceThresholdAllowed();
    bool normMaximumAllowed();

    // txbSilenceThreshold from the percent box, 0 to 32767. Strict: faults with "Type mismatch".
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
    QString vsSilenceUnit;  // "dB" or "Perc", the box that the operator is in; empty before a load
    QString vsNormUnit;
};

}  // namespace tarnwick::batch
