#include "forms/frm_about.h"

#include "forms/fonts.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

frmAbout::frmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(u"frmAbout"_s);
    setWindowTitle(u"About Tarnwick"_s);
    setAccessibleName(windowTitle());
    setFont(uiFont());
    setFixedSize(rectOf(kPlace).size());
    move(rectOf(kPlace).topLeft());

    imgLogo = new Logo(this);
    imgLogo->setObjectName(u"imgLogo"_s);
    imgLogo->setAccessibleName(u"Logo"_s);
    put(imgLogo, {480, 840, 2100, 2100});
    Label1 = makeLabel(this, u"Label1"_s, u"Tarnwick"_s, {3000, 780, 4080, 720});
    QFont large = Label1->font();
    large.setPixelSize(32);
    large.setBold(true);
    Label1->setFont(large);
    lbVersion =
        makeLabel(this, u"lbVersion"_s, u">>>Change in Sub_Main"_s, {3000, 1620, 4080, 360});
    Label2 = makeLabel(this, u"Label2"_s, u"support@tarnwick.example"_s, {3000, 2460, 4080, 360});
    Label2->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

}  // namespace tarnwick::forms
