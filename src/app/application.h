#pragma once

#include <memory>

#include "app/services.h"

namespace tarnwick::forms {
class frmFrame;
class frmMain;
}  // namespace tarnwick::forms

namespace tarnwick::app {

class MainWindow;
class NoticeStrip;
class Windows;

// The program: its start, its windows, and everything that they share. Several instances can exist
// in one process, each with its own program folder. UI thread.
class Application {
  public:
    // `services` and what it refers to must outlive the application.
    explicit Application(const Services& services);
    ~Application();

    // Starts the program, from the first log line to the visible main window. Unguarded. Ends the
    // program if the database is missing.
    void Sub_Main();

    forms::frmFrame& frame() { return *frame_; }
    forms::frmMain& mainForm() { return *form_; }

  private:
    void MDIForm_Load();
    void loadMainWindow();
    void keepOnScreen();
    void tellIfReadOnly() const;

    const Services& services_;
    std::unique_ptr<engine::SoundEditor> EDT_;  // the main window's; outlives what shows its sound
    std::unique_ptr<forms::frmFrame> frame_;
    std::unique_ptr<NoticeStrip> strip_;
    forms::frmMain* form_ = nullptr;  // the frame owns it once it is a child window
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<MainWindow> mainWindow_;
};

}  // namespace tarnwick::app
