#pragma once

#include <QObject>

#include "engine/sound_editor.h"
#include "model/session.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"

class QKeyEvent;
class QTreeWidgetItem;

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// Playing from the list: pressing the mouse on a row plays from there, releasing it stops playback
// or not, depending on the mode, and the pane shows the whole prompt. A key that moves to another
// row acts like a press, so the highlighted row is always the one pressed last. Other keys:
//
//   Space   stops what plays or is paused; otherwise presses the current row again
//   Esc     stops what plays or is paused
//   Ctrl+C  copies the cells of the current row, separated by tabs
//
// UI thread.
class PromptList : public QObject {
  public:
    PromptList(forms::frmMain& form, const runtime::FailurePath& failure,
               const runtime::ProcessState& state, model::Session& session,
               engine::SoundEditor& EDT);

    void cbContent_Click();
    void mnuPlayfromListView_Click();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool keyPressed(const QKeyEvent& key);
    void keyReleased(int key);
    bool stopped();
    void playOrStop();
    void copyRow() const;
    void lvAudioDetails_ItemClick(QTreeWidgetItem& item);
    void lvAudioDetails_MouseUp();
    void moveView();

    forms::frmMain& form_;
    const runtime::FailurePath& failure_;
    const runtime::ProcessState& state_;
    model::Session& session_;
    engine::SoundEditor& EDT_;
    qint32 vlRowStart = 0;  // start of the last clicked row, in ms
    qint32 nResult = 0;
    int handledKey_ = 0;  // that keyPressed has handled and that is still held; 0 for none
};

}  // namespace tarnwick::segmentation
