#pragma once

#include <QObject>
#include <optional>

#include "batch/run.h"
#include "batch/services.h"
#include "runtime/guarded.h"

namespace tarnwick::forms {
class frmBatchProcessor;
}

namespace tarnwick::batch {

// Chooses the files of a run: those of the project folder when the window opens, or those of a
// folder that the operator browses to. UI thread.
class ProjectFiles : public QObject {
  public:
    ProjectFiles(forms::frmBatchProcessor& form, Run& run, const Services& services);

    // Lists the project folder's recordings as part of the window's guarded load. The steps are
    // numbered from `first` in tens.
    void open(runtime::Line& line, int first);

  private:
    void cbBrowse_Click();
    std::optional<QString> chosenFile();
    void refuse();
    void invite();
    bool rawFolderIsThere(const QString& raw);
    void makeRawFolder(const QString& raw);
    void readyForRun(qsizetype count);

    forms::frmBatchProcessor& form_;
    Run& run_;
    const Services& services_;
    QString vsExtension;  // of the last chosen file, without the dot
};

}  // namespace tarnwick::batch
