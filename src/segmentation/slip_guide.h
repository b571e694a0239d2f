#pragma once

#include <functional>
#include <vector>

#include "engine/sound_editor.h"
#include "model/script.h"
#include "model/session.h"
#include "platform/notices.h"
#include "segmentation/alignment.h"
#include "segmentation/likely_slips.h"
#include "segmentation/silence_detection.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// Shows where script and recording probably disagree: marks on the waveform, tool tips, the way to
// the next doubtful row and to the place to edit. Reads the list and the result of the scan and
// changes neither. UI thread. Nothing throws.
class SlipGuide {
  public:
    struct Services {
        const model::Session& session;
        const model::Script& script;
        const SilenceArray& silences;
        const Alignment& alignment;
        engine::SoundEditor& EDT;
        platform::Notices& notices;
        // Show on the waveform which stretches (from 0) are flagged and where slips (in ms) are.
        std::function<void(const std::vector<bool>& flagged, const std::vector<qint32>& slipsMs)>
            showRows;
        std::function<void(int row)> showPressedRow;  // from 1
        std::function<void(int row)> pressRow;        // from 1, as a key does that moves to it
    };

    SlipGuide(forms::frmMain& form, Services services)
        : form_(form), services_(std::move(services)) {}

    // Call when the list is filled again after a scan.
    void listRebuilt();

    // Call when the sound is dropped: takes back what was shown.
    void forget();

    // Call when a row is pressed, from 1.
    void rowPressed(int row);

    // Presses the next or the previous doubtful row: one with a likely slip or, if there is none in
    // the whole list, one that is flagged. The first one if no row of this sound has been pressed.
    // Does nothing at the end.
    void pressDoubtful(bool forward);

    // Selects and shows the place on the waveform at which an edit would mend slip `slip`, from 0.
    void selectMending(int slip);

    // Tool tips for row and stretch (both from 1; the row of a stretch has its number) and for slip
    // `slip`, from 0. Empty if there is none.
    QString tipOfRow(int row) const;
    QString tipOfStretch(int stretch) const;
    QString tipOfSlip(int slip) const;

  private:
    int stretches() const;
    QString timeText(qint32 ms) const;
    std::vector<LikelySlip> findSlips() const;
    std::vector<int> doubtfulRows() const;
    QStringList linesOf(int row) const;
    void showOnWaveform();
    void showInList();
    void showAtCounters();
    void tellOfSlips();

    forms::frmMain& form_;
    Services services_;
    std::vector<LikelySlip> slips_;
    int pressed_ = 0;  // row pressed last; 0 if none was since the load
    // The settings that the list was filled with.
    double wordsPerMinute_ = 0.0;
    qint32 shortestPauseMs_ = 0;
};

}  // namespace tarnwick::segmentation
