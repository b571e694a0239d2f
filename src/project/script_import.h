#pragma once

#include <functional>

#include "model/script.h"
#include "model/session.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "platform/notices.h"
#include "runtime/guarded.h"
#include "runtime/process_state.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

// Shared by the imports of workbooks and of documents: the prompt rows that they fill, and
// everything except the reading itself. UI thread.
class ScriptImport {
  public:
    struct Services {
        const runtime::ProcessState& state;
        const model::Session& session;
        platform::Boxes& boxes;
        const platform::FileSystem& files;
        platform::Notices& notices;
        std::function<void()> Load_Working_Sound;
        std::function<bool()> soundIsLoaded;
    };

    ScriptImport(forms::frmMain& form, Services services);

    const model::Script& script() const { return script_; }

    // The files that an import looks for.
    struct Kind {
        QString oldForm, newForm;  // file name patterns, in the order of the search
        QString program;
    };

    // Begins an import, steps 10 to 60 of its guarded procedure: stores the script's bare name in
    // `script` and on the form, and shows the progress box. If there is no script, it shows a box,
    // ends the load and returns false.
    bool begin(runtime::Line& line, const Kind& kind, QString& script);

    // Tells that no sheet of the workbook was chosen.
    void tellNoSheetChosen() const;

    // Faults with "Subscript out of range" if there are no more rows.
    void store(qint32 i, const QString& FileName, const QString& Content);

    // Faults with "Invalid property value" if `value` is above the maximum of the progress bar.
    void showRow(qint32 value, const QString& caption);

    // Ends an import after all prompts are stored, and starts loading the recording. First tells of
    // unusable file names, then passes on the notices of the import.
    void finish(qint16 viPromptCount, const QList<platform::Notice>& ofImport = {});

    QString vsImportResult;  // emptied by each load; "Abort" if there was no script

  private:
    QString firstFile(const QString& pattern) const;
    void abort(const QString& program);
    void tell(const QList<platform::Notice>& notices) const;
    QStringList fileNames() const;

    forms::frmMain& form_;
    Services services_;
    model::Script script_;
};

}  // namespace tarnwick::project
