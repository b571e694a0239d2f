#include "rename/re_dating.h"

#include "forms/frm_rename_wiz.h"
#include "rename/file_dates.h"
#include "rename/rename_notices.h"
#include "runtime/events.h"
#include "runtime/numbers.h"
#include "runtime/system_reason.h"

namespace tarnwick::rename {

ReDating::ReDating(forms::frmRenameWiz& form, WorkingTable& table, const Services& services)
    : form_(form),
      table_(table),
      services_(services),
      buttons_{form.cbReDatePreview, form.cbReDateCancel, form.cbReDate} {
    const runtime::FailurePath& failure = services_.failure;
    runtime::onEvent(failure, form_.cbReDatePreview, &QPushButton::clicked, this,
                     [this] { cbReDatePreview_Click(); });
    runtime::onEvent(failure, form_.cbReDateCancel, &QPushButton::clicked, this,
                     [this] { cbReDateCancel_Click(); });
    runtime::onEvent(failure, form_.cbReDate, &QPushButton::clicked, this,
                     [this] { cbReDate_Click(); });
}

void ReDating::emptyFields() {
    form_.txbNewDate->clear();
    form_.txbDateModified->clear();
}

// Shows only the new date of the first file.
void ReDating::cbReDatePreview_Click() {
    const QString hours = form_.txbDateModified->text();
    if (form_.lbxSelectedFiles->count() == 0) return services_.boxes.plain(u"No file selected."_qs);
    if (runtime::val(hours) == 0.0) {
        services_.boxes.plain(u"No Hours indicated."_qs);
        form_.txbDateModified->clear();
        return;
    }
    const QString path = table_.vsFolder + form_.lbxSelectedFiles->names().front();
    const QDateTime date =
        shifted(services_.files.DateLastModified(path), runtime::strictDouble(hours));
    form_.txbNewDate->setText(date.toString(u"MM/dd/yyyy  hh:mm:ss"));
    buttons_.showPreviewing(true);
    markProtected();
}

// The selected files that the run takes, or those after them, which it leaves out.
QStringList ReDating::taken() const {
    return form_.lbxSelectedFiles->names().mid(0, table_.viLastFile + 1);
}

QStringList ReDating::leftOut() const {
    return form_.lbxSelectedFiles->names().mid(table_.viLastFile + 1);
}

// Marks the files whose date the run could not or would not change.
void ReDating::markProtected() {
    QHash<QString, QString> marks;
    for (const QString& name : leftOut())
        marks[name] = markOfLeftOut();
    for (const QString& name : taken())
        if (const int error = services_.files.dateError(table_.vsFolder + name))
            marks[name] = markOfProtected(runtime::systemReason(error));
    form_.lbxSelectedFiles->mark(marks);
}

void ReDating::cbReDateCancel_Click() {
    buttons_.showPreviewing(false);
    form_.lbxSelectedFiles->mark({});
    emptyFields();
}

void ReDating::cbReDate_Click() {
    if (form_.lbxSelectedFiles->count() == 0) {
        buttons_.showPreviewing(false);
        return services_.boxes.plain(u"No file selected."_qs);
    }
    takeSelection();
    QList<platform::NameAndReason> passedOver;
    for (const model::RenameRecord& record : table_.used()) {
        const QString path = table_.vsFolder + record.Original;
        const QDateTime date = shifted(services_.files.DateLastModified(path),
                                       runtime::val(form_.txbDateModified->text()));
        int error = 0;
        if (!SetFileDateTime(services_.files, path, textOfDate(date), &error))
            passedOver << platform::NameAndReason{record.Original, runtime::systemReason(error)};
    }
    buttons_.showPreviewing(false);
    emptyFields();
    form_.lbxSelectedFiles->mark({});
    if (const QStringList rest = leftOut(); !passedOver.isEmpty() || !rest.isEmpty())
        services_.notices.note(
            datesNotSet(passedOver, rest, form_.lbxSelectedFiles->count(), table_.vsFolder));
}

// Records beyond the end of the list get an empty name, which stops the run.
void ReDating::takeSelection() {
    const QStringList names = form_.lbxSelectedFiles->names();
    qsizetype viIndex = 0;
    for (model::RenameRecord& record : table_.used())
        record = {names.value(viIndex++), QString()};
}

}  // namespace tarnwick::rename
