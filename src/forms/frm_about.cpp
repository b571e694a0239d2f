#include "forms/frm_about.h"

#include "forms/makers.h"
#include "runtime/product.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setUpForm(*this, u"frmAbout"_s, u"About Tarnwick"_s);
    setFixedSize(rectOf(kPlace).size());
    move(rectOf(kPlace).topLeft());

    const Maker in(this);
    in.control(NAMED(imgLogo), u"Logo"_s, {480, 840, 2100, 2100});
    in.label(NAMED(Label1), u"Tarnwick"_s, {3000, 780, 4080, 720});
    in.label(NAMED(lbVersion), u">>>Change in Sub_Main"_s, {3000, 1620, 4080, 360});
    in.label(NAMED(Label2), QString::fromUtf16(runtime::product::kSupportAddress),
             {3000, 2460, 4080, 360});
    QFont large = Label1->font();
    large.setPixelSize(32);
    large.setBold(true);
    Label1->setFont(large);
    Label2->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

}  // namespace tarnwick::forms
