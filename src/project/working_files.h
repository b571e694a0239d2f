#pragma once

#include <exception>
#include <functional>
#include <memory>

#include "engine/sound_editor.h"
#include "model/session.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "platform/notices.h"
#include "platform/open_dialog.h"
#include "project/sound_reports.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

// The project folder: chooses the recording, loads it, and backs up its file. UI thread.
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
        platform::Notices& notices;
        // Clears the last import\'s result before the list is emptied.
        std::function<void()> startImport;
        std::function<bool()> isExporting;  // until the window that an export opens is closed
        std::function<void()> Import_Excel;
        std::function<void()> Import_Word;
    };

    WorkingFiles(forms::frmMain& form, Services services);

    // The command "Load Working Files...". If the dialog is cancelled or a step faults, it ends
    // without a message and leaves only a quiet note. A file chosen during an export waits until
    // the export has ended; only the last one chosen is loaded.
    void mnuLoadFiles_Click();

    // The same command with a file that was dropped on the window instead of chosen in the dialog.
    void loadDropped(const platform::OpenDialog::Choice& choice);

    // Loads the waiting file, if any.
    void loadWhatWaits();

    // Starts a save that waits for another one; call before the sound is closed. Faults as
    // mnuBackupSourceFile_Click does. Without a sound there is nothing to save.
    void saveWhatWaits();

    // Starts the load of the working file; the chain continues at SoundLoadingDone.
    void Load_Working_Sound();

    // Copies the file on disk to BU_Source_Files and then overwrites it with the current sound.
    // Faults if the copy fails, and then overwrites nothing. Waits until an earlier save has been
    // written, so that every state of the file is copied.
    void mnuBackupSourceFile_Click();

  private:
    using Choice = platform::OpenDialog::Choice;

    void loadAnswer(const std::function<std::optional<Choice>()>& answer);
    void chooseFilter();
    void load(const Choice& choice);
    void endedBy(const std::exception& error);
    void emptyList();
    bool tellOfEmptyList(const QString& reason);  // returns whether there was something to tell
    void makeBackupFolder();
    void save();
    std::function<bool()> copyBeforeSave(const QString& source, const QString& copy);
    [[noreturn]] void copyFailed(const QString& source, const std::exception_ptr& error) const;
    QString copyName() const;

    forms::frmMain& form_;
    Services services_;
    SoundReports reports_;
    bool rowsAreGone_ = false;      // the last command has emptied a list that had rows
    float vfBackupCount = 0;        // copies made in this run
    bool backupWaits_ = false;      // until the pending exports are written
    std::optional<Choice> chosen_;  // waiting for the end of an export
    const std::shared_ptr<const bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace tarnwick::project
