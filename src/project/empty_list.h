#pragma once

#include <QString>

namespace tarnwick::runtime {
class FailurePath;
}

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::project {

// The tool tip of the prompt list while it has no rows; screen readers read it as the list's
// description. `sentence` says why the list is empty. No effect if there are rows.
void explainEmptyList(forms::frmMain& form, const QString& sentence);

// From now on, removes the tool tip when rows are added.
void endExplanationWithRows(forms::frmMain& form, const runtime::FailurePath& failure);

}  // namespace tarnwick::project
