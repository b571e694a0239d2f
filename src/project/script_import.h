#pragma once

#include <functional>

#include "model/script.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "runtime/guarded.h"
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

    // What an import looks for.
    struct Kind {
        QString oldForm, newForm;  // patterns of file names, in the order of the search
        QString program;
    };

    // The opening of an import, steps 10 to 60 of its guarded procedure: the script's bare name
    // goes to `script` and on the form, and the progress box comes up. False when there is no
    // script: then a box tells, and the load ends.
    bool begin(runtime::Line& line, const Kind& kind, QString& script);

    // Faults with "Subscript out of range" where there are no more rows.
    void store(qint32 i, const QString& FileName, const QString& Content);

    // A value above what the bar goes to faults with "Invalid property value".
    void showRow(qint32 value, const QString& caption);

    // All prompts are in: the recording is loaded.
    void finish(qint16 viPromptCount);

    QString vsImportResult;  // emptied by each load; "Abort" when there was no script

  private:
    QString firstFile(const QString& pattern) const;
    void abort(const QString& program);

    forms::frmMain& form_;
    Services services_;
    model::Script script_;
};

}  // namespace tarnwick::project
