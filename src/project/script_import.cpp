#include "project/script_import.h"

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "forms/texts.h"
#include "platform/file_system.h"
#include "project/load_notices.h"
#include "project/script_notices.h"
#include "project/script_rows.h"
#include "runtime/arithmetic.h"

namespace tarnwick::project {

ScriptImport::ScriptImport(forms::frmMain& form, Services services)
    : form_(form), services_(std::move(services)) {}

bool ScriptImport::begin(runtime::Line& line, const Kind& kind, QString& script) {
    line(10);
    QString found = firstFile(kind.oldForm);
    line(20);
    if (found.isEmpty()) found = firstFile(kind.newForm);
    line(30);
    script = found;
    line(40);
    if (found.isEmpty()) {
        abort(kind.program);
        return false;
    }
    line(50);
    form_.txbScript->setText(found);
    line(60);
    forms::showOverlay(form_, *form_.frLoadFiles);
    return true;
}

// Skips the lock files that office programs keep beside an open document ("~$script.docx").
QString ScriptImport::firstFile(const QString& pattern) const {
    for (const QString& name : services_.files.list(services_.state.vsProjectFolder, pattern))
        if (!name.startsWith(u"~$"_qs)) return name;
    return {};
}

void ScriptImport::abort(const QString& program) {
    services_.boxes.plain(
        u"No %1 file in Project folder.\rPlease fix and reload working files."_qs.arg(program));
    form_.frLoadFiles->hide();
    vsImportResult = u"Abort"_qs;
    if (services_.soundIsLoaded())
        services_.notices.note(listEmptied(
            u"There is no %1 file in the project folder, so nothing was loaded."_qs.arg(program)));
}

void ScriptImport::store(qint32 i, const QString& FileName, const QString& Content) {
    const QString most = QString::number(model::kPromptSlots - 1);
    runtime::withDetail(u"the script has more than %1 prompts"_qs.arg(most), [&] {
        runtime::element(script_.Prompts, i) = {FileName, Content, wordCount(Content)};
    });
}

void ScriptImport::showRow(qint32 value, const QString& caption) {
    const qint32 most = form_.pbLoadingScript->maximum();
    if (value > most)
        runtime::withDetail(u"the script has more than %1 rows"_qs.arg(most - 1),
                            runtime::invalidPropertyValue);
    form_.pbLoadingScript->setValue(value);
    forms::setCaption(form_.lbImporting, caption);
    forms::repaintNow(form_);
}

QStringList ScriptImport::fileNames() const {
    QStringList names;
    for (int i = 1; i <= script_.viPromptCount; ++i)
        names << script_.Prompts.at(static_cast<std::size_t>(i)).FileName;
    return names;
}

void ScriptImport::tell(const QList<platform::Notice>& notices) const {
    for (const platform::Notice& notice : notices)
        services_.notices.tell(notice);
}

void ScriptImport::tellNoSheetChosen() const {
    tell({noSheetChosen(
        platform::pathIn(services_.state.vsProjectFolder, services_.session.vsScriptFile),
        services_.soundIsLoaded())});
}

void ScriptImport::finish(qint16 viPromptCount, const QList<platform::Notice>& ofImport) {
    script_.viPromptCount = viPromptCount;
    tell(nameNotices(fileNames(), services_.session.vsWorkingFile) + ofImport);
    form_.mnuProjectFolder->setEnabled(true);
    form_.frLoadFiles->hide();
    forms::repaintNow(form_);
    services_.Load_Working_Sound();
}

}  // namespace tarnwick::project
