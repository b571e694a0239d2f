#pragma once

#include <QObject>
#include <QStringView>

#include "runtime/failure_path.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

struct NamingScheme;

// The file naming panel. Updates its preview whenever the text of one of the four boxes changes, by
// typing or by the program. UI thread.
class FileNaming : public QObject {
  public:
    FileNaming(forms::frmMain& form, const runtime::FailurePath& failure);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void schemeChanged(QStringView label);
    void showPreview(const NamingScheme& scheme);
    void txbStarting_LostFocus();
    void opAutoNaming_Click();

    forms::frmMain& form_;
    const runtime::FailurePath& failure_;
};

// The scheme currently in the panel. Faults like the readScheme of texts.
NamingScheme readScheme(const forms::frmMain& form);

}  // namespace tarnwick::project
