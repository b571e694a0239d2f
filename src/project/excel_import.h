#pragma once

#include <functional>
#include <optional>

#include "documents/workbook.h"
#include "model/session.h"
#include "project/naming_scheme.h"
#include "project/script_import.h"
#include "project/script_rows.h"
#include "runtime/failure_path.h"
#include "runtime/process_state.h"

namespace tarnwick::forms {
class frmMain;
class frmSelectImportSheet;
}  // namespace tarnwick::forms

namespace tarnwick::project {

// Reads the workbook in the project folder into the prompt rows, then starts loading the recording.
// UI thread.
class ExcelImport {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        runtime::ProcessState& state;
        model::Session& session;
        std::function<documents::Workbook(const QString& path)> openWorkbook;
    };

    ExcelImport(forms::frmMain& form, forms::frmSelectImportSheet& chooser, ScriptImport& import,
                Services services);

    // Guarded. If there is no workbook, shows a box and ends the load.
    void Import_Excel();

  private:
    void askForSheet();
    void sheetChosen();
    void Continue_Import_Excel();
    const documents::Sheet& sheetByName() const;
    RowRange rowsToRead(const documents::Sheet& xlSheet) const;
    void readPrompt(const documents::Sheet& xlSheet, qint32 i, qint32 row);
    QString fileNameOf(const documents::Sheet& xlSheet, bool twoColumns, qint32 i,
                       qint32 row) const;

    forms::frmMain& form_;
    forms::frmSelectImportSheet& chooser_;
    ScriptImport& import_;
    Services services_;
    NamingScheme scheme_;
    std::optional<documents::Workbook> xlBook;  // open only while an import runs
};

}  // namespace tarnwick::project
