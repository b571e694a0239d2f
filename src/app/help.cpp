#include "app/help.h"

#include "app/shell_notices.h"
#include "forms/frm_main.h"
#include "forms/units.h"
#include "runtime/events.h"
#include "runtime/guarded.h"
#include "runtime/product.h"

namespace tarnwick::app {

namespace product = runtime::product;

Help::Help(forms::frmMain& form, const Services& services)
    : services_(services), frmAbout_(form.window()) {
    const auto command = [&](QAction* item, auto handler) {
        runtime::onEvent(services_.failure, item, &QAction::triggered, &frmAbout_, handler);
    };
    const auto page = [&](QAction* item, QStringView label, const QString& notice,
                          QStringView address) {
        command(item, [=, this] { openPage(label, notice, address.toString()); });
    };
    const QString browser = u"Tarnwick will now open your default browser."_qs;
    const QString video = u"Tarnwick will now open your default browser to access YouTube."_qs;
    command(form.mnuProjectFolder, [this] { open(services_.state.vsProjectFolder); });
    command(form.mnuHelpAbout, [this] { mnuHelpAbout_Click(); });
    command(form.mnuManual, [this] { mnuManual_Click(); });
    page(form.mnuHistory, u"frmFrame.mnuHistory_Click: ", browser, product::kChangeHistory);
    page(form.mnuTutorialPresentation, u"frmFrame.mnuTutorialWhyVelmora_Click: ", video,
         product::kPresentation);
    page(form.mnuTutorialBP, u"frmFrame.mnuTutorialBP_Click: ", video, product::kBatchProcessing);
    page(form.mnuTutorialBasicScriptFormatting,
         u"frmFrame.mnuTutorialBasicScriptFormatting_Click: ", video, product::kScriptFormatting);
}

// If the manual is missing, shows a box and then still tries to open it, which only adds a notice.
void Help::mnuManual_Click() {
    runtime::guarded(
        services_.failure, u"frmFrame.mnuManualLocal_Click: ", [&](runtime::Line& line) {
            line(10);
            const QString manual =
                platform::pathIn(services_.failure.appPath(), u"Tarnwick_Manual.pdf"_qs);
            const bool there = services_.files.FileExists(manual);
            line(20);
            if (!there) services_.boxes.critical(u"No PDF!"_qs, u"The manual cannot be found."_qs);
            line(30);
            open(manual);
        });
}

void Help::openPage(QStringView label, const QString& notice, const QString& address) {
    runtime::guarded(services_.failure, label, [&](runtime::Line& line) {
        line(10);
        services_.boxes.plain(notice);
        line(20);
        open(address);
    });
}

void Help::open(const QString& target) {
    services_.opener.open(target, [&services = services_, target](const QString& reason) {
        services.notices.note(notOpened(target, reason, services.files.isTaken(target)));
    });
}

void Help::mnuHelpAbout_Click() {
    if (!frmAbout_.isVisible()) aboutLoad();
    frmAbout_.show();
    frmAbout_.raise();
    frmAbout_.activateWindow();
}

// Form_Load of the About box. Its place and size are absolute, independent of the window scale.
void Help::aboutLoad() {
    const QRect place = forms::rectOf(forms::frmAbout::kPlace);
    frmAbout_.setFixedSize(place.size());
    frmAbout_.move(place.topLeft());
    frmAbout_.lbVersion->setText(services_.failure.vsBuild);
}

}  // namespace tarnwick::app
