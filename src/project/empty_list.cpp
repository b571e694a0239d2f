#include "project/empty_list.h"

#include "forms/frm_main.h"
#include "runtime/events.h"

namespace tarnwick::project {

void explainEmptyList(forms::frmMain& form, const QString& sentence) {
    if (form.lvAudioDetails->topLevelItemCount() == 0) form.lvAudioDetails->setToolTip(sentence);
}

void endExplanationWithRows(forms::frmMain& form, const runtime::FailurePath& failure) {
    QTreeWidget* list = form.lvAudioDetails;
    runtime::onEvent(failure, list->model(), &QAbstractItemModel::rowsInserted, list,
                     [list] { list->setToolTip({}); });
}

}  // namespace tarnwick::project
