#pragma once

#include <vector>

#include "engine/sound_editor.h"
#include "model/script.h"
#include "model/session.h"
#include "segmentation/alignment_row.h"
#include "segmentation/silence_detection.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// Pairs the prompts with the stretches of speech by position and fills the list. UI thread. A fault
// leaves the list partly filled.
class Alignment {
  public:
    struct Inputs {
        const model::Session& session;
        const model::Script& script;
        const SilenceArray& silences;
        const engine::SoundEditor& EDT;
    };

    Alignment(forms::frmMain& form, Inputs inputs) : form_(form), inputs_(inputs) {}

    void Align();

    // The rows as they were compared last; as many as the list got.
    const std::vector<AlignmentRow>& rows() const { return rows_; }

  private:
    void addRow(qint32 i);
    void compareCounters();
    void selectCurrentRow();

    forms::frmMain& form_;
    Inputs inputs_;
    std::vector<AlignmentRow> rows_;
};

}  // namespace tarnwick::segmentation
