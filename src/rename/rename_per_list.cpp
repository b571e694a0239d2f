#include "rename/rename_per_list.h"

#include <QDir>

#include "forms/frm_rename_wiz.h"
#include "rename/bare_name.h"
#include "rename/file_selection.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/fault.h"
#include "runtime/file_names.h"
#include "runtime/system_reason.h"

namespace tarnwick::rename {

using Step = PerListRun::Step;

RenamePerList::RenamePerList(forms::frmRenameWiz& form, WorkingTable& table,
                             FileSelection& selection, const Services& services)
    : form_(form), table_(table), selection_(selection), services_(services) {
    runtime::onEvent(services_.failure, form_.cbRenamePerList, &QPushButton::clicked, this,
                     [this] { cbRenamePerList_Click(); });
    showEnd();
}

// From the dialog on, a failure ends the command without a message. Only the list of notices and
// the button's tool tip give the reason.
void RenamePerList::cbRenamePerList_Click() {
    selection_.cbRemoveAll_Click();
    run_ = {};
    try {
        renameAsListed();
    } catch (const std::exception& error) {
        noteEnd(runtime::reasonOf(error));
    }
}

void RenamePerList::noteEnd(const QString& reason) {
    const platform::Notice notice = perListEnded(run_, reason);
    services_.notices.note(notice);
    services_.state.perListEnd = platform::sentencesOf(notice);
    showEnd();
}

// If the last run ended early, the button's tool tip says why, also in the wizard's next window.
void RenamePerList::showEnd() {
    const QString& end = services_.state.perListEnd;
    form_.cbRenamePerList->setToolTip(
        end.isEmpty() ? end : u"<qt>"_qs + end.toHtmlEscaped() + u"</qt>"_qs);
    form_.cbRenamePerList->setAccessibleDescription(end);
}

void RenamePerList::renameAsListed() {
    services_.cmdlg.setFilter(u"Excel Files (*.xls; *.xlsx)|*.xls; *.xlsx|"_qs);
    const auto choice = services_.cmdlg.ShowOpen();
    if (!choice) return;
    run_.workbook = choice->FileName;
    run_.step = Step::Opening;
    const documents::Workbook book = services_.openWorkbook(choice->FileName);
    const documents::Sheet& sheet = book.sheet(1);
    QString& folder = services_.state.vsProjectFolder;
    folder = platform::folderOf(choice->FileName);
    if (services_.files.FolderExists(platform::pathIn(folder, kOriginals))) {
        services_.boxes.plain(
            u"The Project folder cannot contain an 'Original_Files' folder. Rename or move outside "
            u"of the Project folder before proceeding."_qs);
        return;
    }
    run_.step = Step::Reading;
    const auto records = readList(sheet);
    run_.step = Step::MakingFolder;
    services_.files.createFolder(platform::pathIn(folder, kOriginals));
    run_.step = Step::Moving;
    moveOriginals(records);
    run_.step = Step::Copying;
    copyUnderNewNames(records);
    services_.state.perListEnd.clear();
    showEnd();
    services_.boxes.plain(u"Renaming completed."_qs);
}

std::span<model::RenameRecord> RenamePerList::readList(const documents::Sheet& sheet) {
    std::size_t count = 0;
    for (qint32 row = 1; !sheet.text(row, 1).isEmpty(); ++row) {
        run_.row = row;
        runtime::element(table_.vaFileNames, qint64(count++)) = {sheet.text(row, 1),
                                                                 sheet.text(row, 2)};
    }
    return std::span(table_.vaFileNames).first(count);
}

// A folder cannot be moved. The disk then says "File not found", so the reason is given here.
void RenamePerList::moveToOriginals(const QString& path) {
    const QString originals = platform::pathIn(services_.state.vsProjectFolder, kOriginals);
    try {
        services_.files.MoveFile(path, originals + QDir::separator());
    } catch (const runtime::Fault&) {
        if (!services_.files.FolderExists(path)) throw;
        throw runtime::Fault(u"A folder has that name"_qs, runtime::readableFileName(path));
    }
}

// Moves all files before the first is copied, so that a new name may be another file's old name.
void RenamePerList::moveOriginals(std::span<const model::RenameRecord> records) {
    const QString& folder = services_.state.vsProjectFolder;
    run_.row = 0;
    for (const model::RenameRecord& record : records) {
        ++run_.row;
        run_.names = {record.Original, record.Renamed};
        requireBareName(record.Original);
        moveToOriginals(platform::pathIn(folder, record.Original));
        run_.originals << record.Original;
    }
}

void RenamePerList::copyUnderNewNames(std::span<const model::RenameRecord> records) {
    const QString& folder = services_.state.vsProjectFolder;
    const QString originals = platform::pathIn(folder, kOriginals);
    QSet<QString> written;
    run_.row = 0;
    for (const model::RenameRecord& record : records) {
        ++run_.row;
        run_.names = {record.Original, record.Renamed};
        requireBareName(record.Renamed);
        const QString original = platform::pathIn(originals, record.Original);
        const QString target = platform::pathIn(folder, record.Renamed);
        if (written.contains(target)) {
            services_.files.CopyFile(original, target);
        } else {
            // An existing file that is not on the list is moved to the originals.
            if (services_.files.isTaken(target)) {
                moveToOriginals(target);
                run_.originals << record.Renamed;
            }
            services_.files.copyToNewFile(original, target);
            written.insert(target);
        }
        form_.lbxSelectedFiles->add({record.Renamed});
        form_.lbxSelectedFiles->drawNow();  // so that the operator sees the progress
    }
}

}  // namespace tarnwick::rename
