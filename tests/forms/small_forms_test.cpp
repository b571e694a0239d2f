#include "forms/form_checks.h"
#include "forms/frm_about.h"
#include "forms/frm_select_import_sheet.h"

namespace tarnwick::forms {
namespace {

TEST(SmallForms, AboutAndSheetChoiceAreWindowsOfTheirOwn) {
    QWidget owner;
    const frmAbout about(&owner);
    EXPECT_EQ(about.windowTitle(), QStringLiteral("About Tarnwick"));
    EXPECT_EQ(about.geometry(), QRect(133, 133, 488, 259));
    expectControls(about, R"(
Label1|lbVersion=>>>Change in Sub_Main|Label2=support@tarnwick.example)");

    const frmSelectImportSheet choice(&owner);
    EXPECT_EQ(choice.windowTitle(), QStringLiteral("Select Worksheet to Import"));
    expectControls(choice, R"(
cbxSheetNames=|cbSelectSheet)");
    EXPECT_TRUE(choice.cbxSheetNames->isEditable());
    for (const QWidget* form : std::initializer_list<const QWidget*>{&about, &choice}) {
        expectTidy(*form);
        EXPECT_TRUE(form->isWindow());
        EXPECT_FALSE(form->isModal());
    }
}

}  // namespace
}  // namespace tarnwick::forms
