#include "forms/frm_select_import_sheet.h"

#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

frmSelectImportSheet::frmSelectImportSheet(QWidget* parent) : QDialog(parent) {
    setUpForm(*this, u"frmSelectImportSheet"_s, u"Select Worksheet to Import"_s);
    setFixedSize(px(5400), px(1650));
    const Maker in(this);
    in.combo(NAMED(cbxSheetNames), windowTitle(), {240, 300, 4920, 390});
    in.button(NAMED(cbSelectSheet), u"OK"_s, {3900, 1020, 1260, 420})->setDefault(true);
}

}  // namespace tarnwick::forms
