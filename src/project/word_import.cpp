#include "project/word_import.h"

#include "forms/frm_main.h"
#include "project/file_naming.h"
#include "project/naming_scheme.h"
#include "runtime/numbers.h"

namespace tarnwick::project {

WordImport::WordImport(forms::frmMain& form, ScriptImport& import, Services services)
    : form_(form), import_(import), services_(std::move(services)) {}

void WordImport::Import_Word() {
    runtime::guarded(services_.failure, u"frmMain.Import_Word: ", [&](runtime::Line& line) {
        if (!import_.begin(line, {u"*.doc"_qs, u"*.docx"_qs, u"Word"_qs},
                           services_.session.vsWordFile))
            return;
        const qint16 count = readPrompts(line);
        line(160);
        import_.finish(count);
    });
}

// The document is closed on return, even after a fault.
qint16 WordImport::readPrompts(runtime::Line& line) {
    line(70);
    const NamingScheme scheme = readScheme(form_);
    line(80);
    const documents::WordDocument document = services_.openDocument(
        platform::pathIn(services_.state.vsProjectFolder, services_.session.vsWordFile));
    line(90);
    const documents::WordTable& table =
        runtime::withDetail(u"there is no table"_qs,
                            [&]() -> const documents::WordTable& { return document.firstTable(); });
    line(100);
    const qint16 rows = runtime::withDetail(u"the table has too many rows"_qs, [&] {
        return runtime::roundToInteger(table.rowCount());
    });
    line(110);
    const qint16 columns = runtime::roundToInteger(table.columnCount());
    for (qint32 i = 1; i <= rows; ++i) {
        const auto cell = [&](qint32 column) {
            return runtime::withDetail(u"row %1 of the table has no cell %2"_qs.arg(i).arg(column),
                                       [&] { return table.text(i, column); });
        };
        line(120);
        const QString FileName = columns == 2 ? cell(1) : scheme.nameAt(i - 1);
        line(130);
        const QString Content = cell(columns == 2 ? 2 : 1);
        line(140);
        import_.store(i, FileName, Content);
        line(150);
        import_.showRow(i + 1, u"Importing Word row %1 of %2"_qs.arg(i).arg(rows));
    }
    return rows;
}

}  // namespace tarnwick::project
