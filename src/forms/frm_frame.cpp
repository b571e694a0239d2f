#include "forms/frm_frame.h"

#include "forms/design.h"

namespace tarnwick::forms {

frmFrame::frmFrame() : mdiArea(new QMdiArea(this)) {
    setObjectName(QStringLiteral("frmFrame"));
    setFont(uiFont());
    setGeometry(rectOf({120, 450, 13830, 10635}));
    mdiArea->setObjectName(QStringLiteral("mdiArea"));
    mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(mdiArea);
}

}  // namespace tarnwick::forms
