#pragma once

#include <memory>

#include "app/dropped_recording.h"
#include "app/help.h"
#include "app/menu_keys.h"
#include "app/preferences.h"
#include "app/services.h"
#include "app/windows.h"
#include "forms/frm_main.h"
#include "forms/frm_select_import_sheet.h"
#include "model/session.h"
#include "project/excel_import.h"
#include "project/file_naming.h"
#include "project/script_import.h"
#include "project/word_import.h"
#include "project/working_files.h"
#include "segmentation/alignment.h"
#include "segmentation/editing.h"
#include "segmentation/individual_export.h"
#include "segmentation/prompt_list.h"
#include "segmentation/reload_chain.h"
#include "segmentation/silence_detection.h"
#include "segmentation/status_line.h"
#include "segmentation/transport.h"
#include "segmentation/waveform_controls.h"

namespace tarnwick::app {

// Assembles the main window: its form and the classes that work on it, each with the services and
// callables that it needs. UI thread.
class MainWindow {
  public:
    // `EDT`: the window's sound editor.
    MainWindow(forms::frmMain& form, Windows& windows, const Services& services,
               engine::SoundEditor& EDT);

    // Prepares the window: the sound editor, the waveform display, the settings. Not guarded.
    void Form_Load();

  private:
    void connectShell();
    void createWaveform();
    void showWaveform(quintptr parent, const QRect& place);
    void playOrPause();
    void TimerMenuEnabler_Timer();
    void dropSound();
    void showExported();
    void batchProcessorClosed();
    void showNoSound();
    project::ScriptImport::Services importServices();
    project::WorkingFiles::Services fileServices();
    segmentation::ReloadChain::Services chainServices();
    segmentation::SilenceDetection::Services detectionServices();
    segmentation::IndividualExport::Services exportServices();

    forms::frmMain& form_;
    Windows& windows_;
    const Services& services_;
    engine::SoundEditor& EDT_;
    model::Session session_;
    forms::frmSelectImportSheet chooser_;
    project::FileNaming naming_;
    Preferences preferences_;
    Help help_;
    MenuKeys menuKeys_;
    segmentation::StatusLine status_;
    project::ScriptImport import_;
    project::ExcelImport excelImport_;
    project::WordImport wordImport_;
    project::WorkingFiles workingFiles_;
    RecordingDrop drop_;
    segmentation::SilenceDetection detection_;
    segmentation::Alignment alignment_;
    segmentation::ReloadChain chain_;
    segmentation::PromptList promptList_;
    segmentation::WaveformControls waveformControls_;
    segmentation::Editing editing_;
    segmentation::Transport transport_;
    segmentation::IndividualExport export_;
};

}  // namespace tarnwick::app
