#pragma once

#include <functional>

#include "model/script.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "runtime/process_state.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

// What the imports of workbooks and of documents share: the prompt rows that they fill, and all
// that is not the reading itself. UI thread.
class ScriptImport {
  public:
    struct Services {
        const runtime::ProcessState& state;
        platform::Boxes& boxes;
        const platform::FileSystem& files;
        std::function<void()> Load_Working_Sound;
    };

    ScriptImport(forms::frmMain& form, Services services);

    const model::Script& script() const { return script_; }

    // The bare name of the first file in the project folder that matches, or nothing. The small
    // files by which the office programs tell that a script is open ("~$script.docx") are none.
    QString firstFile(const QString& pattern) const;

    // There is no script: a box that names the program, and the load ends.
    void abort(const QString& program);

    void showProgress();

    // Faults with "Subscript out of range" where there are no more rows.
    void store(qint32 i, const QString& FileName, const QString& Content);

    // A value above what the bar goes to faults with "Invalid property value".
    void showRow(qint32 value, const QString& caption);

    // All prompts are in: the recording is loaded.
    void finish(qint16 viPromptCount);

    QString vsImportResult;  // emptied by each load; "Abort" when there was no script

  private:
    forms::frmMain& form_;
    Services services_;
    model::Script script_;
};

}  // namespace tarnwick::project
