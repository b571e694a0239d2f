#include "forms/frm_select_import_sheet.h"

#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

frmSelectImportSheet::frmSelectImportSheet(QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmSelectImportSheet"_s);
    setWindowTitle(u"Select Worksheet to Import"_s);
    setAccessibleName(windowTitle());
    setFont(uiFont());
    setFixedSize(px(5400), px(1650));
    cbxSheetNames =
        makeCombo(this, u"cbxSheetNames"_s, {}, {}, {240, 300, 4920, 390}, windowTitle());
    cbSelectSheet = makeButton(this, u"cbSelectSheet"_s, u"OK"_s, {3900, 1020, 1260, 420});
    cbSelectSheet->setDefault(true);
}

}  // namespace tarnwick::forms
