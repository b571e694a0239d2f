#pragma once

#include <functional>

#include "documents/word_document.h"
#include "model/session.h"
#include "project/script_import.h"
#include "runtime/failure_path.h"
#include "runtime/guarded.h"

namespace tarnwick::project {

// Reads the first table of the Word document in the project folder into the prompt rows, then
// starts loading the recording. UI thread.
class WordImport {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        const runtime::ProcessState& state;
        model::Session& session;
        std::function<documents::WordDocument(const QString& path)> openDocument;
    };

    WordImport(forms::frmMain& form, ScriptImport& import, Services services);

    // Guarded. If there is no document, shows a box and ends the load. The bounds of the progress
    // bar are not changed, so the import of a table too long for them faults: at row 100, unless a
    // workbook with more rows was imported before.
    void Import_Word();

  private:
    qint16 readPrompts(runtime::Line& line);

    forms::frmMain& form_;
    ScriptImport& import_;
    Services services_;
};

}  // namespace tarnwick::project
