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

// New names for the chosen files: worked out and shown in their list, then given or dropped. The
// disk is touched only when they are given. UI thread; what fails takes the default path.
class RenameRules : public QObject {
  public:
    RenameRules(forms::frmRenameWiz& form, WorkingTable& table, const Services& services);

  private:
    void cbPreview_Click();
    void cbCancel_Click();
    void cbRename_Click();

    void takeSelection();
    bool runRules();

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

    // Gives each record its next name, by its index and its name so far, and shows them.
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
