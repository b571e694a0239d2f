#pragma once

#include <QObject>
#include <functional>

#include "rename/preview_buttons.h"
#include "rename/services.h"
#include "rename/working_table.h"

namespace tarnwick::forms {
class frmRenameWiz;
}

namespace tarnwick::rename {

// New names for the chosen files: computed and shown in their list, then applied or dropped. The
// disk is changed only when they are applied. UI thread. Faults go to FailurePath::Default_Path.
class RenameRules : public QObject {
  public:
    RenameRules(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

  private:
    void cbPreview_Click();
    void cbCancel_Click();
    void cbRename_Click();

    void takeSelection();
    bool runRules();
    void checkNewNames();

    void AddPrefix();
    void IncrNumberPrefix();
    void IncrLetterPrefix();
    void AddSuffix();
    void IncrNumberSuffix();
    void IncrLetterSuffix();
    void SearchReplace();
    void InsertString();
    void RemoveCharacters();
    void ChangeExtension();

    // Computes the next name of each record from its index and its current name, and shows them.
    void rewrite(const std::function<QString(int index, const QString& name)>& rule);
    void rewriteEnds(const std::function<QString(int index)>& suffix);
    void ShowNewNames();
    void give(const model::RenameRecord& record, int before);

    forms::frmRenameWiz& form_;
    WorkingTable& table_;
    const Services& services_;
    const PreviewButtons buttons_;
};

}  // namespace tarnwick::rename
