#include "rename/folder_lists.h"

#include <QApplication>
#include <QDir>
#include <QSignalBlocker>
#include <QTimer>
#include <chrono>

#include "forms/frm_rename_wiz.h"
#include "rename/rename_notices.h"
#include "runtime/events.h"

namespace tarnwick::rename {

namespace {

constexpr int kPathRole = forms::kLevelRole + 1;
constexpr std::chrono::milliseconds kTryAgain{500};

// Splits "*.txt;*.doc" into wildcards. An empty filter accepts all files.
QStringList patternsOf(const QString& filter) {
    const QStringList patterns = filter.split(u';', Qt::SkipEmptyParts);
    return patterns.isEmpty() ? QStringList(u"*"_qs) : patterns;
}

bool isWithin(const QString& path, const QString& drive) {
    return path == drive || path.startsWith(platform::pathIn(drive, QString()));
}

// The drive that contains the folder; of several, the one with the longest path.
QString volumeOf(const QString& folder, const QStringList& drives) {
    QString volume;
    for (const QString& drive : drives)
        if (isWithin(folder, drive) && drive.size() > volume.size()) volume = drive;
    return volume;
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

void FolderLists::open() {
    const QString home = services_.files.homeFolder();
    drives_ = services_.files.drives();
    {
        const QSignalBlocker silent(form_.Drivelb);
        form_.Drivelb->addItem(u"Home"_qs, home);
        form_.Drivelb->setItemData(0, home, Qt::ToolTipRole);
        showDrives();
    }
    setFolder(home);
    watch_ = services_.files.watchDrives(
        [this] { services_.failure.unguarded([this] { followDrives(); }); });
}

// Full path of the chosen drive; empty before the drives are shown.
QString FolderLists::drive() const { return form_.Drivelb->currentData().toString(); }

// Chooses a drive without running Drivelb_Change().
void FolderLists::chooseDrive(int row) {
    const QSignalBlocker silent(form_.Drivelb);
    form_.Drivelb->setCurrentIndex(row);
}

void FolderLists::Drivelb_Change() {
    if (!services_.files.FolderExists(drive())) throw runtime::Fault(u"Device unavailable"_qs);
    setFolder(drive());
}

// Waits while a box or dialog is open, because the procedure that opened it still uses the lists.
void FolderLists::followDrives() {
    if (QApplication::activeModalWidget() != nullptr) {
        QTimer::singleShot(kTryAgain, this,
                           [this] { services_.failure.unguarded([this] { followDrives(); }); });
        return;
    }
    const QString chosen = drive();
    const QString volume = volumeOf(folder_, drives_);
    drives_ = services_.files.drives();
    showDrives();
    if (!drives_.contains(volume) || drive() != chosen) leaveVolume(volume);
}

// Adds and removes single entries. So the choice stays, and a list that is dropped down stays
// usable.
void FolderLists::showDrives() {
    QComboBox& list = *form_.Drivelb;
    const QSignalBlocker silent(list);
    for (int row = list.count() - 1; row > 0; --row)
        if (!drives_.contains(list.itemText(row))) list.removeItem(row);
    for (int row = 1; row <= drives_.size(); ++row)
        if (const QString& drive = drives_[row - 1]; list.itemText(row) != drive)
            list.insertItem(row, drive, drive);
}

// Changes to Home. Cancels previews first, because their files are no longer there.
void FolderLists::leaveVolume(const QString& volume) {
    for (QPushButton* cancel : {form_.cbCancel, form_.cbReDateCancel})
        if (!cancel->isHidden()) cancel->click();
    chooseDrive(0);
    folder_.clear();
    setFolder(drive());
    services_.notices.tell(volumeGone(volume));
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
    if (!isWithin(path, drive())) chooseDrive(form_.Drivelb->findText(QDir::rootPath()));
    showFolders();
    if (changed) Directorylb_Change();
}

// Lists the folders from the drive down to the chosen one, then the folders inside it.
void FolderLists::showFolders() {
    const QString drive = this->drive();
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
