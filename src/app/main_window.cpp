#include "app/main_window.h"

#include "forms/colours.h"
#include "forms/scaling.h"
#include "forms/texts.h"
#include "platform/desktop_open_dialog.h"
#include "runtime/events.h"
#include "runtime/guarded.h"
#include "widgets/waveform_view.h"

namespace tarnwick::app {

MainWindow::MainWindow(forms::frmMain& form, Windows& windows, const Services& services,
                       engine::SoundEditor& EDT)
    : form_(form),
      windows_(windows),
      services_(services),
      EDT_(EDT),
      naming_(form, services.failure),
      preferences_(form, services, [this] { windows_.reveal(*form_.frPreferences); }),
      help_(form, services),
      menuKeys_(form),
      status_(form),
      import_(form, importServices()),
      excelImport_(form, chooser_, import_,
                   {services.failure, services.state, session_, documents::Workbook::open}),
      wordImport_(form, import_,
                  {services.failure, services.state, session_, documents::WordDocument::open}),
      workingFiles_(form, fileServices()),
      drop_(form, services.failure, services.files,
            [this](const QString& path) { workingFiles_.loadDropped(platform::chosenFile(path)); }),
      detection_(form, detectionServices()),
      alignment_(form, {session_, import_.script(), detection_.silences(), EDT}),
      chain_(form, chainServices()),
      guide_(form, guideServices()),
      promptList_(form, services.failure, services.state, session_, EDT, listGuide()),
      waveformControls_(form, services.failure, EDT),
      editing_(form, services.failure, session_, EDT, [this] { chain_.editAsked(); }),
      transport_(form, services.failure, EDT, status_),
      export_(form, exportServices()) {
    chooser_.setParent(form_.window(), chooser_.windowFlags());
    connectShell();
    windows_.batchProcessorClosed = [this] { batchProcessorClosed(); };
}

project::ScriptImport::Services MainWindow::importServices() {
    return {.state = services_.state,
            .session = session_,
            .boxes = services_.boxes,
            .files = services_.files,
            .notices = services_.notices,
            .Load_Working_Sound =
                [this] {
                    dropSound();
                    workingFiles_.Load_Working_Sound();
                },
            .soundIsLoaded = [this] { return EDT_.GetSoundDuration() > 0; }};
}

project::WorkingFiles::Services MainWindow::fileServices() {
    return {.failure = services_.failure,
            .state = services_.state,
            .session = session_,
            .EDT = EDT_,
            .boxes = services_.boxes,
            .cmdlg = services_.cmdlg,
            .files = services_.files,
            .notices = services_.notices,
            .startImport =
                [this] {
                    import_.vsImportResult.clear();
                    export_.keepRows();
                },
            .isExporting = [this] { return export_.running() || !windows_.mainIsShown(); },
            .Import_Excel = [this] { excelImport_.Import_Excel(); },
            .Import_Word = [this] { wordImport_.Import_Word(); }};
}

segmentation::SilenceDetection::Services MainWindow::detectionServices() {
    return {.failure = services_.failure,
            .state = services_.state,
            .EDT = EDT_,
            .database = services_.database,
            .clock = services_.clock,
            .notices = services_.notices,
            .align = [this] {
                alignment_.Align();
                guide_.listRebuilt();
            }};
}

segmentation::ReloadChain::Services MainWindow::chainServices() {
    return {.failure = services_.failure,
            .session = session_,
            .EDT = EDT_,
            .boxes = services_.boxes,
            .notices = services_.notices,
            .status = status_,
            .backUp = [this] { workingFiles_.mnuBackupSourceFile_Click(); },
            .process = [this] { detection_.cbProcess_Click(); },
            .soundGone =
                [this] {
                    workingFiles_.saveWhatWaits();
                    detection_.drop();
                    export_.lookAgain();
                }};
}

segmentation::IndividualExport::Services MainWindow::exportServices() {
    return {.failure = services_.failure,
            .session = session_,
            .EDT = EDT_,
            .boxes = services_.boxes,
            .files = services_.files,
            .notices = services_.notices,
            .listIsChanging = [this] { return chain_.soundIsChanging() || detection_.scanning(); },
            .showBatchProcessor = [this] { showExported(); },
            .stuck = [this] { workingFiles_.loadWhatWaits(); }};
}

segmentation::SlipGuide::Services MainWindow::guideServices() {
    return {.session = session_,
            .script = import_.script(),
            .silences = detection_.silences(),
            .alignment = alignment_,
            .EDT = EDT_,
            .notices = services_.notices,
            .showRows =
                [this](const std::vector<bool>& flagged, const std::vector<qint32>& slipsMs) {
                    waveformView_->showRows({flagged, slipsMs});
                },
            .showPressedRow = [this](int row) { waveformView_->showPressedRow(row); },
            .pressRow = [this](int row) { promptList_.pressRow(row); }};
}

segmentation::PromptList::Guide MainWindow::listGuide() {
    return {.rowPressed = [this](int row) { guide_.rowPressed(row); },
            .doubtfulRowAsked = [this](bool forward) { guide_.pressDoubtful(forward); },
            .tipOfRow = [this](int row) { return guide_.tipOfRow(row); }};
}

void MainWindow::connectShell() {
    const auto command = [this](QAction* item, auto handler) {
        runtime::onEvent(services_.failure, item, &QAction::triggered, &form_, handler);
    };
    command(form_.mnuQuit, [this] { services_.endProcess(); });
    command(form_.mnuBatchProcessor, [this] { windows_.showBatchProcessor(); });
    command(form_.mnuRenameWizard, [this] { windows_.showRenameWizard(); });
    runtime::onEvent(services_.failure, form_.TimerMenuEnabler, &QTimer::timeout, &form_,
                     [this] { TimerMenuEnabler_Timer(); });
    runtime::onEvent(services_.failure, &EDT_.waveform(), &engine::Waveform::displayCreated, &form_,
                     [this](quintptr parent, QRect place) { showWaveform(parent, place); });
}

void MainWindow::Form_Load() {
    form_.frTarnwick->setFrameShape(QFrame::NoFrame);
    form_.frTarnwick->show();
    EDT_.InitEditor(reinterpret_cast<quintptr>(&form_));
    EDT_.EnableUndo(1);
    createWaveform();
    waveformControls_.setUp();
    session_.viCurrentRow = 1;
    preferences_.PreferencesLoad();
    form_.TimerMenuEnabler->start();
}

void MainWindow::createWaveform() {
    forms::placePicture(form_, services_.state.vvScale);
    const QRect place = form_.Picture1->geometry();
    EDT_.waveform().Create(reinterpret_cast<quintptr>(form_.frTarnwick), place.left(), place.top(),
                           place.width(), place.height());
}

void MainWindow::showWaveform(quintptr parent, const QRect& place) {
    auto* view = new widgets::WaveformView(EDT_.waveform(), reinterpret_cast<QWidget*>(parent));
    view->setGeometry(place);
    view->lower();  // the progress frames lie over it
    view->show();
    QWidget::setTabOrder(form_.slWAVFormScale, view);
    view->setTips([this](int stretch) { return guide_.tipOfStretch(stretch); },
                  [this](int slip) { return guide_.tipOfSlip(slip); });
    const auto asked = [&](auto signal, auto handler) {
        runtime::onEvent(services_.failure, view, signal, &form_, handler);
    };
    asked(&widgets::WaveformView::playPauseAsked, [this] { playOrPause(); });
    // Clicks, so that nothing happens while the buttons are disabled.
    asked(&widgets::WaveformView::deletionAsked, [this] { form_.cbDeleteSelection->click(); });
    asked(&widgets::WaveformView::silenceAsked, [this] { form_.cbInsertSilence->click(); });
    asked(&widgets::WaveformView::doubtfulRowAsked,
          [this](bool forward) { guide_.pressDoubtful(forward); });
    asked(&widgets::WaveformView::mendAsked, [this](int slip) { guide_.selectMending(slip); });
    waveformView_ = view;
}

// Clicks the buttons, so that nothing happens while they are disabled before the first analysis.
void MainWindow::playOrPause() {
    const bool atRest = EDT_.waveform().playPosition() < 0.0;
    (atRest ? form_.CommandPlay : form_.CommandPause)->click();
}

// Updates two buttons from the editor. It can fire between any two events, so it only reads state.
void MainWindow::TimerMenuEnabler_Timer() {
    form_.cbUndo->setEnabled(EDT_.UndoAvailable());
    qint16 available = 0;
    qint32 begin = 0;
    qint32 end = 0;
    EDT_.waveform().GetSelection(available, begin, end);
    form_.cbZoomSelection->setEnabled(available == 1);
}

// Steps that are still waiting to continue with the current sound must not continue with another.
void MainWindow::dropSound() {
    chain_.drop();
    detection_.drop();
    export_.drop();
    guide_.forget();
}

// After a refused load, the project folder may differ from the folder of the loaded recording.
void MainWindow::showExported() {
    if (windows_.batchProcessorIsOpen()) return;  // on a folder of its own
    services_.state.vsProjectFolder = session_.loadedFolder;
    windows_.showBatchProcessor();
}

void MainWindow::batchProcessorClosed() {
    workingFiles_.saveWhatWaits();  // unguarded, like every save
    runtime::guarded(services_.failure, u"frmBatchProcessor.cbClose_Click: ",
                     [&](runtime::Line& line) {
                         line(10);
                         dropSound();
                         line(20);
                         windows_.showMain();
                         line(30);
                         EDT_.SoundClose();
                         line(40);
                         showNoSound();
                     });
    workingFiles_.loadWhatWaits();
}

// Shows an empty list and the labels for no sound.
void MainWindow::showNoSound() {
    form_.lvAudioDetails->clear();
    forms::setListHeight(form_, forms::kListHeight, services_.state.vvScale);
    form_.txbContent->hide();
    forms::setCaption(form_.cbContent, u"Expand Content"_qs);
    form_.LabelTotalDuration->setText(u"00:00:00.000"_qs);
    for (QLineEdit* counter : {form_.txbNberFileNames, form_.txbNberAudioFiles}) {
        counter->setText(u"0"_qs);
        forms::setBackground(counter, Qt::white);
    }
    forms::setCaption(form_.lbStatus, u"Status: Idle"_qs);
}

}  // namespace tarnwick::app
