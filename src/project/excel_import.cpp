#include "project/excel_import.h"

#include "forms/frm_main.h"
#include "forms/frm_select_import_sheet.h"
#include "project/file_naming.h"
#include "project/script_notices.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/guarded.h"

namespace tarnwick::project {

ExcelImport::ExcelImport(forms::frmMain& form, forms::frmSelectImportSheet& chooser,
                         ScriptImport& import, Services services)
    : form_(form), chooser_(chooser), import_(import), services_(std::move(services)) {
    runtime::onEvent(services_.failure, chooser_.cbSelectSheet, &QPushButton::clicked,
                     chooser_.cbSelectSheet, [this] { sheetChosen(); });
    runtime::onEvent(services_.failure, &chooser_, &QDialog::rejected, &chooser_,
                     [this] { import_.tellNoSheetChosen(); });
}

void ExcelImport::Import_Excel() {
    runtime::guarded(services_.failure, u"frmMain.Import_Excel: ", [&](runtime::Line& line) {
        QString& script = services_.session.vsScriptFile;
        if (!import_.begin(line, {u"*.xls"_qs, u"*.xlsx"_qs, u"Excel"_qs}, script)) return;
        line(70);
        xlBook = services_.openWorkbook(platform::pathIn(services_.state.vsProjectFolder, script));
        line(80);
        if (form_.chPromptSheet->isChecked()) return askForSheet();
        line(90);
        Continue_Import_Excel();
    });
}

void ExcelImport::askForSheet() {
    chooser_.cbxSheetNames->clear();
    chooser_.show();
    for (int i = 1; i <= xlBook->sheetCount(); ++i)
        chooser_.cbxSheetNames->addItem(xlBook->sheetName(i));
    chooser_.cbxSheetNames->setEditText(xlBook->sheetName(1));
}

void ExcelImport::sheetChosen() {
    services_.state.vsSelectedSheet = chooser_.cbxSheetNames->currentText();
    chooser_.hide();
    if (xlBook) Continue_Import_Excel();
}

void ExcelImport::Continue_Import_Excel() {
    const documents::Sheet& xlSheet =
        form_.chPromptSheet->isChecked() ? sheetByName() : xlBook->sheet(1);
    const RowRange rows = rowsToRead(xlSheet);
    form_.pbLoadingScript->setRange(rows.viFirstRow, rows.viLastRow + 1);
    form_.pbLoadingScript->setValue(rows.viFirstRow);
    scheme_ = readScheme(form_);

    const qint32 count = std::max(0, rows.viLastRow - rows.viFirstRow + 1);
    for (qint32 i = 1; i <= count; ++i) {
        const qint32 row = i + rows.viFirstRow - 1;
        readPrompt(xlSheet, i, row);
        import_.showRow(i + rows.viFirstRow,
                        u"Importing Excel row %1 of %2"_qs.arg(row).arg(rows.viLastRow));
    }
    const auto notices = formulaNotices(xlSheet, rows, !form_.chImportSpecifiedRows->isChecked());
    xlBook.reset();
    import_.finish(static_cast<qint16>(count), notices);
}

const documents::Sheet& ExcelImport::sheetByName() const {
    const QString& name = services_.state.vsSelectedSheet;
    return runtime::withDetail(u"there is no sheet \"%1\""_qs.arg(name),
                               [&]() -> const documents::Sheet& { return xlBook->sheet(name); });
}

RowRange ExcelImport::rowsToRead(const documents::Sheet& xlSheet) const {
    if (form_.chImportSpecifiedRows->isChecked())
        return specifiedRows(form_.txbImportStartRow->text(), form_.txbImportEndRow->text());
    RowRange rows;
    runtime::withDetail(u"the sheet has too many rows"_qs, [&] {
        while (!xlSheet.text(rows.viLastRow + 1, 1).isEmpty())
            rows.viLastRow = runtime::add<qint16>(rows.viLastRow, 1);
    });
    rows.viFirstRow = form_.chIgnoreFirstRow->isChecked() ? 2 : 1;
    return rows;
}

void ExcelImport::readPrompt(const documents::Sheet& xlSheet, qint32 i, qint32 row) {
    if (row < 1)
        throw runtime::Fault(u"Application-defined or object-defined error"_qs,
                             u"a sheet has no row %1"_qs.arg(row));
    const bool twoColumns = !xlSheet.text(1, 2).isEmpty();
    import_.store(i, fileNameOf(xlSheet, twoColumns, i, row),
                  xlSheet.text(row, twoColumns ? 2 : 1));
}

QString ExcelImport::fileNameOf(const documents::Sheet& xlSheet, bool twoColumns, qint32 i,
                                qint32 row) const {
    if (!twoColumns)
        return scheme_.nameAt(i - 2);  // the first prompt lies one step below the start
    return form_.opAutoNaming[0]->isChecked() ? xlSheet.text(row, 1) : scheme_.nameAt(i - 1);
}

}  // namespace tarnwick::project
