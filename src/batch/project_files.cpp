#include "batch/project_files.h"

#include <algorithm>

#include "batch/conversion_label.h"
#include "batch/run_checks.h"
#include "batch/run_notices.h"
#include "batch/source_notices.h"
#include "forms/colours.h"
#include "forms/frm_batch_processor.h"
#include "runtime/events.h"
#include "runtime/system_reason.h"

namespace tarnwick::batch {

namespace {

constexpr QRgb kLightGrey = qRgb(192, 192, 192);

void setBackground(QPushButton* button, const QColor& colour) {
    QPalette palette = button->palette();
    palette.setColor(QPalette::Button, colour);
    palette.setColor(QPalette::ButtonText, Qt::black);
    button->setPalette(palette);
}

}  // namespace

ProjectFiles::ProjectFiles(forms::frmBatchProcessor& form, Run& run, const Services& services)
    : form_(form), run_(run), services_(services) {
    services_.cmdlg.setTitle(u"Select a Script"_qs);
    services_.cmdlg.setFilter(
        u"Scripts (*.TXT)|*.TXT|Sound Files (*.wav; *.mp3; *.aif; *.aiff)|"
        u"*.wav; *.mp3; *.aif; *.aiff|All Files (*)|*"_qs);
    runtime::onEvent(services_.failure, form_.cbBrowse, &QPushButton::clicked, this,
                     [this] { cbBrowse_Click(); });
}

void ProjectFiles::open(runtime::Line& line, int first) {
    const QString& folder = services_.state.vsProjectFolder;
    line(first);
    form_.txbProjectFolder->setText(folder);
    line(first + 10);
    if (!services_.files.FolderExists(folder)) return refuse();
    line(first + 20);
    const qsizetype found = services_.files.list(folder, u"*.wav"_qs).size();
    form_.txbProjectFiles->setText(QString::number(found));
    if (found == 0) return refuse();
    line(first + 30);
    const QString raw = platform::pathIn(folder, u"Raw_Files"_qs);
    if (rawFolderIsThere(raw)) return;
    line(first + 40);
    makeRawFolder(raw);
    line(first + 50);
    const QStringList names = services_.files.list(folder, u"*.wav"_qs);
    form_.txbProjectFiles->setText(QString::number(names.size()));
    if (names.isEmpty()) return forms::setBackground(form_.txbProjectFiles, Qt::red);
    line(first + 60);
    readyForRun(names.size());
    line(first + 70);
    run_.vsFiles = names;
    checkSources(run_, services_);
}

// Shows that no run can start in this folder.
void ProjectFiles::refuse() {
    forms::setBackground(form_.txbProjectFolder, Qt::red);
    forms::setBackground(form_.txbProjectFiles, Qt::red);
    form_.cbProcess->hide();
}

bool ProjectFiles::rawFolderIsThere(const QString& raw) {
    if (!services_.files.FolderExists(raw)) return false;
    services_.boxes.plain(
        u"The Project folder cannot contain a 'Raw_Files' folder at the beginning of the Batch "
        u"Processing. Close the Batch Processing window, rename the 'Raw_Files' folder or move it "
        u"outside of the Project folder before proceeding."_qs);
    return true;
}

void ProjectFiles::makeRawFolder(const QString& raw) {
    services_.files.createFolder(raw);
    run_.vsRawFolder = raw;
}

void ProjectFiles::readyForRun(qsizetype count) {
    showConversion(form_, u"Batch Processing Progress..."_qs, false);
    form_.pbConversion->setRange(0, static_cast<int>(std::max<qsizetype>(count - 1, 1)));
    form_.pbConversion->setValue(0);
}

// Nothing changes if the dialog is cancelled or fails.
std::optional<QString> ProjectFiles::chosenFile() {
    try {
        const auto choice = services_.cmdlg.ShowOpen();
        if (choice) return choice->FileName;
    } catch (const std::exception& error) {
        services_.notices.note(noticeOfDialog(runtime::reasonOf(error)));
    }
    return std::nullopt;
}

// The extension of the chosen file decides which files are processed. It is the text after the last
// dot of the whole path; if the path has no dot, only files without a dot in their name are taken.
void ProjectFiles::cbBrowse_Click() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.cbBrowse_Click: ",
                     [&](runtime::Line& line) {
                         line(10);
                         const std::optional<QString> path = chosenFile();
                         if (!path) return;
                         QString& folder = services_.state.vsProjectFolder;
                         line(20);
                         form_.txbProjectFolder->setText(*path);
                         line(30);
                         vsExtension = path->mid(path->lastIndexOf(u'.') + 1);
                         if (!path->contains(u'.')) vsExtension.clear();
                         line(40);
                         const QString chosen = platform::folderOf(*path);
                         form_.txbProjectFolder->setText(chosen);
                         line(50);
                         folder = chosen;
                         if (run_.report.underWay)
                             services_.notices.tell(noticeOfOtherFolder(run_.report));
                         line(60);
                         const QString raw = platform::pathIn(folder, u"Raw_Files"_qs);
                         if (rawFolderIsThere(raw)) return;
                         line(70);
                         makeRawFolder(raw);
                         line(80);
                         run_.vsFiles = services_.files.list(folder, u"*."_qs + vsExtension);
                         form_.txbProjectFiles->setText(QString::number(run_.vsFiles->size()));
                         line(90);
                         readyForRun(run_.vsFiles->size());
                         line(100);
                         form_.txbProjectFolder->setText(folder);
                         line(110);
                         invite();
                         checkSources(run_, services_);
                     });
}

void ProjectFiles::invite() {
    forms::setBackground(form_.txbProjectFolder, Qt::white);
    forms::setBackground(form_.txbProjectFiles, Qt::white);
    setBackground(form_.cbBrowse, QColor(kLightGrey));
    form_.cbProcess->show();
    if (!form_.cbProcess->isEnabled() && !run_.report.underWay)
        services_.notices.tell(noticeOfSpentWindow(run_.vsRawFolder));
}

}  // namespace tarnwick::batch
