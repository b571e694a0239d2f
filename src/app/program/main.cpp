#include <QApplication>
#include <QIcon>
#include <QStandardPaths>
#include <csignal>
#include <cstdlib>
#include <optional>

#include "app/appearance.h"
#include "app/application.h"
#include "app/outlined_style.h"
#include "engine/create_sound_editor.h"
#include "forms/fonts.h"
#include "platform/colour_scheme.h"
#include "platform/desktop_boxes.h"
#include "platform/desktop_notifications.h"
#include "platform/desktop_open_dialog.h"
#include "platform/desktop_opener.h"
#include "platform/disk.h"
#include "platform/program_folder.h"
#include "platform/session_bus.h"
#include "runtime/product.h"

using namespace tarnwick;

namespace {

// The last safety net below the event loop: an exception goes to FailurePath::Default_Path.
class Program : public QApplication {
  public:
    using QApplication::QApplication;

    const runtime::FailurePath* failure = nullptr;

    bool notify(QObject* receiver, QEvent* event) override {
        try {
            return QApplication::notify(receiver, event);
        } catch (const std::exception& error) {
            failure->Default_Path(runtime::detailedDescriptionOf(error));
        }
    }
};

// The program folder, or nothing if there is none that can be used; the operator has been told.
std::optional<QString> findProgramFolder(platform::Boxes& boxes) {
    try {
        return platform::programFolder(
            platform::executableFolder(),
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    } catch (const runtime::Fault& fault) {
        boxes.critical(QApplication::applicationName(), fault.description());
        return {};
    }
}

// Ends at once: asks no window and saves nothing. The targets of unfinished files are unchanged.
[[noreturn]] void endProcess() { std::_Exit(EXIT_SUCCESS); }

}  // namespace

int main(int argc, char** argv) {
    // Exceeding a file-size limit must fail the write, like a full disk, and not end the program.
    std::signal(SIGXFSZ, SIG_IGN);
    const platform::SessionBus bus;
    bus.hideWhileSilent();
    Program program(argc, argv);
    QApplication::setApplicationName(u"Tarnwick"_qs);
    QApplication::setDesktopFileName(QString::fromUtf16(runtime::product::kApplicationId));
    QApplication::setStyle(new app::OutlinedStyle);
    QApplication::setFont(forms::uiFont());
    platform::ColourScheme scheme(bus);
    app::followColourScheme(scheme);
    QApplication::setWindowIcon(QIcon(u":/tarnwick/icon.png"_qs));

    platform::DesktopBoxes boxes;
    const auto folder = findProgramFolder(boxes);
    if (!folder) return EXIT_FAILURE;
    runtime::ProcessState state;
    const auto projectFolder = [&] { return state.vsProjectFolder; };
    platform::DesktopOpenDialog cmdlg(projectFolder);
    platform::DesktopOpenDialog batchDialog(projectFolder);
    platform::DesktopOpenDialog renameDialog(projectFolder);
    platform::Disk files;
    platform::DesktopOpener opener;
    platform::SystemClock clock;
    app::NoticeBoard notices(clock);
    platform::DesktopNotifications desktop(bus);
    runtime::FailurePath failure(
        *folder, {.criticalBox = [&](const QString& title,
                                     const QString& text) { boxes.critical(title, text); },
                  .endProcess = endProcess,
                  .now = [&] { return clock.now(); }});
    program.failure = &failure;
    settings::SettingsDatabase database;
    const auto editors = engine::createEditorDirectory();
    const auto createEditor = [&] { return engine::createSoundEditor(editors); };

    const app::Services services{
        .failure = failure,
        .state = state,
        .database = database,
        .boxes = boxes,
        .cmdlg = cmdlg,
        .batchDialog = batchDialog,
        .renameDialog = renameDialog,
        .files = files,
        .notices = notices,
        .opener = opener,
        .clock = clock,
        .createEDT = createEditor,
        .createEDTX = createEditor,
        .notifyDesktop = [&](const QString& sentence) { desktop.show(sentence); },
        .endProcess = endProcess};
    app::Application application(services);
    failure.unguarded([&] { application.Sub_Main(); });
    return QApplication::exec();
}
