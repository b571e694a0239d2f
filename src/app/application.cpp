#include "app/application.h"

#include <QGuiApplication>
#include <QScreen>

#include "app/main_window.h"
#include "app/notice_strip.h"
#include "app/shell_notices.h"
#include "app/windows.h"
#include "forms/frm_frame.h"
#include "forms/frm_main.h"
#include "forms/scaling.h"
#include "runtime/guarded.h"
#include "runtime/product.h"
#include "runtime/system_reason.h"

namespace tarnwick::app {

namespace {

// Pixels for the panel of a desktop. Wayland tells a program neither where one is nor where its own
// window is, so that a window of the full height would reach over both edges of what is left.
constexpr int kPanel = 56;

}  // namespace

Application::Application(const Services& services) : services_(services) {}

Application::~Application() {
    // The behaviour must be deleted before the form that it works on, which the frame deletes.
    mainWindow_.reset();
    windows_.reset();
    strip_.reset();
}

void Application::Sub_Main() {
    runtime::FailurePath& failure = services_.failure;
    failure.vsBuild = QString::fromUtf16(runtime::product::kBuild);
    failure.Write_Log(failure.logDate());
    failure.Write_Log(u"Program launched"_qs);
    if (!services_.files.FileExists(platform::pathIn(failure.appPath(), u"Tarnwick.mdb"_qs)))
        failure.Database_Missing();
    services_.state.vsConnection = settings::connectionString(failure.appPath());
    frame_ = std::make_unique<forms::frmFrame>();
    strip_ = std::make_unique<NoticeStrip>(*frame_, services_.notices, services_.notifyDesktop);
    form_ = new forms::frmMain(frame_.get());
    MDIForm_Load();
    loadMainWindow();
    tellIfReadOnly();
    keepOnScreen();
    frame_->show();
}

void Application::tellIfReadOnly() const {
    const QString& connection = services_.state.vsConnection;
    if (const int error = settings::whyNotWritable(connection); error != 0)
        services_.notices.tell(
            settingsReadOnly(settings::databaseFile(connection), runtime::systemReason(error)));
}

void Application::keepOnScreen() {
    const QString platform = QGuiApplication::platformName();
    // The off-screen platform invents the size of its screen.
    if (platform == u"offscreen") return;
    QRect free = frame_->screen()->availableGeometry();
    if (platform.startsWith(u"wayland")) free.setHeight(free.height() - kPanel);
    const QSize wished = frame_->size();
    frame_->keepWithin(free);
    if (const auto notice = windowTooLarge(wished, frame_->size(), services_.state.vvScale))
        services_.notices.tell(*notice);
}

void Application::MDIForm_Load() {
    runtime::guarded(services_.failure, u"frmFrame.MDIForm_Load: ", [&](runtime::Line& line) {
        settings::SettingsDatabase& database = services_.database;
        line(10);
        const settings::Access access(database, services_.state.vsConnection);
        line(20);
        const settings::Record row = database.Read(u"SELECT * FROM Admin WHERE F1 = 18"_qs);
        line(30);
        services_.state.vvScale = row.real(u"F13"_qs) / 100.0;
        line(40);
        database.Close();
        line(50);
        forms::Scaling(*frame_, *form_, services_.state.vvScale);
        line(60);
        frame_->setWindowTitle(u"Tarnwick – "_qs + services_.failure.vsBuild);
    });
}

// Unguarded: if the sound editor does not start, the fault goes to FailurePath::Default_Path.
void Application::loadMainWindow() {
    EDT_ = services_.createEDT();
    windows_ = std::make_unique<Windows>(*frame_, *form_, services_, *EDT_);
    mainWindow_ = std::make_unique<MainWindow>(*form_, *windows_, services_, *EDT_);
    mainWindow_->Form_Load();
    windows_->showMain();
}

}  // namespace tarnwick::app
