#pragma once

#include <QObject>

#include "batch/services.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

class LevelBoxes;

// The window's settings, stored in rows 12, 13 and 14, and the tick boxes that enable some of them
// and highlight the steps of a run. UI thread.
class BatchSettings : public QObject {
  public:
    BatchSettings(forms::frmBatchProcessor& form, const Services& services, LevelBoxes& levels);

    // Fills the controls, whose change handlers run as usual. Guarded.
    void Save_LoadProcessor_Data();
    // Stores one row after the other; if one fails, the earlier ones stay stored. Guarded.
    void Save_BatchProcessor_Data();

  private:
    void showSilence(const settings::Record& row);
    void showLevels(const settings::Record& row);
    void showOutput(const settings::Record& row);
    void clickAll();
    void chCutEnd_Click();
    void chSilenceEnds_Click();
    void chNormalize_Click();
    void chHissFilter_Click();
    void chConvert_Click();
    QString updateOfRow12() const;
    QString updateOfRow13() const;
    QString updateOfRow14() const;

    forms::frmBatchProcessor& form_;
    const Services& services_;
    LevelBoxes& levels_;
};

}  // namespace tarnwick::batch
