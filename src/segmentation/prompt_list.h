#pragma once

#include <QObject>
#include <functional>

#include "engine/sound_editor.h"
#include "model/session.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"

class QTreeWidgetItem;

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// Playing from the list: pressing the mouse on a row plays from there, releasing it stops playback
// or not, depending on the mode, and the pane shows the whole prompt. A key that moves to another
// row acts like a press, so the highlighted row is always the one pressed last. UI thread.
class PromptList : public QObject {
  public:
    // `rowPressed` is called with the number of each row that is pressed, from 1.
    PromptList(forms::frmMain& form, const runtime::FailurePath& failure,
               const runtime::ProcessState& state, model::Session& session,
               engine::SoundEditor& EDT, std::function<void(int row)> rowPressed = {});

    // Presses row `row`, from 1, as a key does that moves to it. There must be one.
    void pressRow(int row);

    void cbContent_Click();
    void mnuPlayfromListView_Click();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void keyReleased(int key);
    void lvAudioDetails_ItemClick(QTreeWidgetItem& item);
    void lvAudioDetails_MouseUp();
    void moveView();

    forms::frmMain& form_;
    const runtime::FailurePath& failure_;
    const runtime::ProcessState& state_;
    model::Session& session_;
    engine::SoundEditor& EDT_;
    std::function<void(int row)> rowPressed_;
    qint32 vlRowStart = 0;  // start of the last clicked row, in ms
    qint32 nResult = 0;
};

}  // namespace tarnwick::segmentation
