#include "rename/folder_lists.h"

#include <QDir>

#include "forms/frm_rename_wiz.h"
#include "runtime/events.h"

namespace tarnwick::rename {

namespace {

constexpr int kPathRole = forms::kLevelRole + 1;

// Splits "*.txt;*.doc" into wildcards. An empty filter accepts all files.
QStringList patternsOf(const QString& filter) {
    const QStringList patterns = filter.split(u';', Qt::SkipEmptyParts);
    return patterns.isEmpty() ? QStringList(u"*"_qs) : patterns;
}

}  // namespace

FolderLists::FolderLists(forms::frmRenameWiz& form, WorkingTable& table, const Services& services)
    : form_(form), table_(table), services_(services) {
    const runtime::FailurePath& failure = services_.failure;
    runtime::onEvent(failure, form_.Drivelb, &QComboBox::currentTextChanged, this,
                     [this] { Drivelb_Change(); });
    runtime::onEvent(failure, form_.Directorylb, &QListWidget::activated, this,
                     [this](const QModelIndex& index) { enter(index.row()); });
    runtime::onEvent(failure, form_.txbFileExtFilter, &QLineEdit::textChanged, this,
                     [this] { Directorylb_Change(); });
}

void FolderLists::open() { form_.Drivelb->addItems(services_.files.drives()); }

void FolderLists::Drivelb_Change() {
    const QString drive = form_.Drivelb->currentText();
    if (!services_.files.FolderExists(drive)) throw runtime::Fault(u"Device unavailable"_qs);
    setFolder(drive);
}

// Opens the folder of a row; if it no longer exists, refreshes the list.
void FolderLists::enter(int row) {
    const QString path = form_.Directorylb->item(row)->data(kPathRole).toString();
    if (services_.files.FolderExists(path))
        setFolder(path);
    else
        showFolders();
}

void FolderLists::setFolder(const QString& path) {
    const bool changed = path != folder_;
    folder_ = path;
    showFolders();
    if (changed) Directorylb_Change();
}

// Lists the folders from the drive down to the chosen one, then the folders inside it.
void FolderLists::showFolders() {
    const QString drive = form_.Drivelb->currentText();
    const QStyle& style = *form_.style();
    const QIcon open = style.standardIcon(QStyle::SP_DirOpenIcon);
    const QIcon closed = style.standardIcon(QStyle::SP_DirClosedIcon);
    form_.Directorylb->clear();
    addFolder(style.standardIcon(QStyle::SP_DriveHDIcon), drive, drive, 0);
    int level = 0;
    QString path = drive;
    for (const QString& name :
         folder_.mid(drive.size()).split(QDir::separator(), Qt::SkipEmptyParts)) {
        path = platform::pathIn(path, name);
        addFolder(open, name, path, ++level);
    }
    form_.Directorylb->setCurrentRow(level);
    for (const QString& name : services_.files.listFolders(folder_))
        addFolder(closed, name, platform::pathIn(folder_, name), level + 1);
    form_.Directorylb->scrollToItem(form_.Directorylb->currentItem());
}

void FolderLists::addFolder(const QIcon& icon, const QString& name, const QString& path,
                            int level) {
    auto* item = new QListWidgetItem(icon, name, form_.Directorylb);
    item->setData(forms::kLevelRole, level);
    item->setData(kPathRole, path);
}

void FolderLists::Directorylb_Change() {
    form_.lbxSelectedFiles->clear();
    form_.Filelb->setNames(
        services_.files.list(folder_, patternsOf(form_.txbFileExtFilter->text())));
    table_.vsFolder = folder_ + QDir::separator();
    form_.lbxAvailableFiles->setNames(form_.Filelb->names());
}

}  // namespace tarnwick::rename
