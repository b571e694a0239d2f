#pragma once

#include <QObject>
#include <QStringView>

#include "runtime/failure_path.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

struct NamingScheme;

// The file naming panel: its preview follows the four boxes of the scheme, whether somebody types
// in them or their text is set. UI thread.
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

// The scheme as the panel shows it now. Faults like the readScheme of texts.
NamingScheme readScheme(const forms::frmMain& form);

}  // namespace tarnwick::project
