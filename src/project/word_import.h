#pragma once

#include <functional>

#include "documents/word_document.h"
#include "model/session.h"
#include "project/script_import.h"
#include "runtime/failure_path.h"
#include "runtime/guarded.h"

namespace tarnwick::project {

// Reads the first table of the Word document of the project folder into the prompt rows and then
// has the recording loaded. UI thread.
class WordImport {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        const runtime::ProcessState& state;
        model::Session& session;
        std::function<documents::WordDocument(const QString& path)> openDocument;
    };

    WordImport(forms::frmMain& form, ScriptImport& import, Services services);

    // Guarded. Without a document: a box, and the load ends. The progress bar keeps the bounds that
    // it has, so that a table too long for them is refused on the way: at row 100, unless a
    // workbook with more rows was imported before.
    void Import_Word();

  private:
    qint16 readPrompts(runtime::Line& line);

    forms::frmMain& form_;
    ScriptImport& import_;
    Services services_;
};

}  // namespace tarnwick::project
