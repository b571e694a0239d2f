#pragma once

#include <functional>

#include "engine/sound_editor.h"
#include "model/session.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "platform/open_dialog.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

// The project folder: choosing the recording, loading it, and the backup of its file. UI thread.
class WorkingFiles {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        runtime::ProcessState& state;
        model::Session& session;
        engine::SoundEditor& EDT;
        platform::Boxes& boxes;
        platform::OpenDialog& cmdlg;
        platform::FileSystem& files;
        std::function<void()>
            startImport;  // forgets the last import's result, before the list goes
        std::function<bool()> isExporting;  // from the start of an export to its window's closing
        std::function<void()> Import_Excel;
        std::function<void()> Import_Word;
    };

    WorkingFiles(forms::frmMain& form, Services services);

    // The command "Load Working Files...". Ends without a word on a cancelled dialog and on any
    // other fault. A file that is chosen in the middle of an export waits until that has come to
    // its end; the one chosen last counts.
    void mnuLoadFiles_Click();

    // Loads the file that waits, if any.
    void loadWhatWaits();

    // Starts the load of the working file; the chain goes on with SoundLoadingDone.
    void Load_Working_Sound();

    // Copies the file on disk to BU_Source_Files and has it overwritten by the sound as it stands.
    // Faults when the copy fails, and then overwrites nothing. While an earlier save is still being
    // written it waits for that to end, so that no state of the file goes uncopied.
    void mnuBackupSourceFile_Click();

  private:
    void chooseFilter();
    void load(const platform::OpenDialog::Choice& choice);
    void save();
    void saveWhatWaits();
    QString copyName() const;

    forms::frmMain& form_;
    Services services_;
    float vfBackupCount = 0;                              // copies made in this run
    bool backupWaits_ = false;                            // for the exports that are on their way
    std::optional<platform::OpenDialog::Choice> chosen_;  // waits for the end of an export
};

}  // namespace tarnwick::project
