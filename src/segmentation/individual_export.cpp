#include "segmentation/individual_export.h"

#include <QDir>

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "forms/texts.h"
#include "model/list_columns.h"
#include "runtime/events.h"
#include "runtime/file_names.h"
#include "runtime/numbers.h"
#include "runtime/system_reason.h"
#include "segmentation/export_size.h"
#include "segmentation/field_value.h"

namespace tarnwick::segmentation {

IndividualExport::IndividualExport(forms::frmMain& form, Services services)
    : form_(form),
      services_(std::move(services)),
      EDTTimerSoundExportDone(services_.failure, *form.EDTTimerSoundExportDone,
                              [this] { EDTTimerSoundExportDone_Timer(); }) {
    runtime::onEvent(services_.failure, form_.mnuExport, &QAction::triggered, &form_,
                     [this] { mnuExport_Click(); });
    runtime::onEvent(services_.failure, form_.lvAudioDetails->model(),
                     &QAbstractItemModel::rowsInserted, &form_,
                     [this] { services_.notices.settle(startTopic()); });
    connectEditor();
}

void IndividualExport::connectEditor() {
    const auto event = [this](auto signal, auto handler) {
        runtime::onEvent(services_.failure, &services_.EDT, signal, &form_, handler);
    };
    event(&engine::SoundEditor::failed, [this](const engine::Failure& failure) {
        if (failure.operation == engine::Operation::Export) report_.failed(failure);
    });
    event(&engine::SoundEditor::SoundExportDone, [this] {
        report_.ended();
        EDTTimerSoundExportDone.arm();
    });
    event(&engine::SoundEditor::SoundEditDone, [this](qint16, qint32 bResult) {
        if (bResult == 1) keptRows_.clear();
    });
}

// There is nothing to write while the list is empty or is being rebuilt.
bool IndividualExport::listIsReady() const {
    return form_.lvAudioDetails->topLevelItemCount() > 0 && !services_.listIsChanging();
}

void IndividualExport::mnuExport_Click() {
    if (!listIsReady()) return services_.notices.tell(nothingToExport(services_.listIsChanging()));
    if (form_.txbNberFileNames->text() != form_.txbNberAudioFiles->text() &&
        !services_.boxes.askYesNo(u"Warning!"_qs,
                                  u"The file numbers are different so something is incorrect. "
                                  u"Do you want proceed anyway?"_qs))
        return;
    if (!listIsReady())  // the list may have changed while the box was open
        return services_.notices.tell(nothingToExport(services_.listIsChanging()));
    settleNotices();
    checkSpace();
    report_.clear();
    recordingCopied_ = false;
    vsExportRunning = u"Yes"_qs;
    forms::showOverlay(form_, *form_.frExportFiles);
    form_.pbExporting->setMaximum(form_.lvAudioDetails->topLevelItemCount());
    vfExportIndex = 1;
    Export_Row(vfExportIndex);
}

// A new run writes all prompts, so what was told of an earlier one is no longer true.
void IndividualExport::settleNotices() const {
    for (const QString& topic :
         {startTopic(), spaceTopic(), promptsTopic(services_.session.loadedFolder)})
        services_.notices.settle(topic);
}

void IndividualExport::checkSpace() const {
    const QString& folder = services_.session.loadedFolder;
    QList<PromptFile> prompts;
    for (const Row& row : rowsOfList()) {
        const QString path = fileOf(row);
        prompts << PromptFile{path, row.end.toLongLong() - row.start.toLongLong(),
                              services_.files.fileBytes(path)};
    }
    const qint64 needed = addedBytes(prompts, form_.cbxChannels->currentText().toInt());
    const qint64 free = services_.files.freeBytes(folder);
    if (free >= 0 && needed > free) services_.notices.tell(spaceIsShort(folder, needed, free));
}

// A separator in a name must not lead out of the project folder or into the backup folder.
QString IndividualExport::fileOf(const Row& row) const {
    return platform::pathIn(services_.session.loadedFolder, runtime::promptFile(row.name));
}

ExportPlace IndividualExport::place() const {
    return {runtime::roundToLong(vfExportIndex), form_.pbExporting->maximum()};
}

QList<IndividualExport::Row> IndividualExport::rowsOfList() const {
    QList<Row> rows;
    for (int i = 0; i < form_.lvAudioDetails->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* item = form_.lvAudioDetails->topLevelItem(i);
        rows << Row{item->text(model::kFileName), item->text(model::kStartMsec),
                    item->text(model::kEndMsec)};
    }
    return rows;
}

// Uses the rows of the list as soon as it has any again.
QList<IndividualExport::Row> IndividualExport::rows() const {
    const QList<Row> listed = rowsOfList();
    return listed.isEmpty() ? keptRows_ : listed;
}

void IndividualExport::keepRows() {
    if (vsExportRunning == u"Yes" && !services_.listIsChanging()) keptRows_ = rows();
}

bool IndividualExport::running() const { return vsExportRunning == u"Yes" && !isStuck(moment()); }

void IndividualExport::drop() {
    if (vsExportRunning == u"Yes") {
        services_.notices.tell(exportGivenUp(place(), recordingPlace(false)));
        tellUnwritten(false);
    }
    endRun();
    form_.frExportFiles->hide();
}

void IndividualExport::Export_Row(float index) {
    engine::SoundEditor& EDT = services_.EDT;
    const qint32 channels =
        fieldValue(u"Channels"_qs, form_.cbxChannels->currentText(), runtime::strictLong);
    EDT.encodeFormats().FormatToUse = engine::kWavContainer;
    EDT.encodeFormats().WAV.EncodeMode = engine::kWav24;
    const qint32 row = runtime::roundToLong(index);
    const Row prompt = rows().value(row - 1);
    vsExportFile = fileOf(prompt);
    vlExportStart = runtime::strictLong(prompt.start);
    vlExportEnd = runtime::strictLong(prompt.end);
    keepRecording();
    standstillTold_ = false;
    services_.notices.settle(runTopic());
    const qint32 exportsAhead = EDT.SoundExportsPending();
    const qint32 nResult =
        EDT.SoundExport(kExportFrequency, channels, 0, vlExportStart, vlExportEnd, vsExportFile);
    // A refused row gives no event, so the run would stop here.
    const bool refused = nResult != engine::kOk;
    if (refused)
        vsExportRunning = u"No"_qs;
    else
        report_.requested(exportsAhead);
    form_.pbExporting->setValue(row);
    forms::setCaption(form_.lbExporting,
                      u"Exporting file %1 of %2"_qs.arg(row).arg(form_.pbExporting->maximum()));
    forms::repaintNow(form_);
    if (refused) stopAtRefusedRow(nResult);
}

// stuck() may load a file that was chosen during the run, which hides earlier notices. So the
// notice is told afterwards.
void IndividualExport::stopAtRefusedRow(qint32 code) {
    const engine::Failure failure{engine::Operation::Export, vsExportFile,
                                  static_cast<engine::ErrorCode>(code)};
    const platform::Notice notice = rowRefused(place(), failure, recordingPlace(false));
    services_.stuck();
    services_.notices.tell(notice);
    tellUnwritten(false);
}

// A prompt with the same name as the recording overwrites it. The recording is therefore copied
// first, to where the end of the run would have moved it.
void IndividualExport::keepRecording() {
    const QString recording =
        platform::pathIn(services_.session.loadedFolder, services_.session.loadedFile);
    if (vsExportFile != recording) return;
    recordingCopied_ = true;
    if (!services_.files.FileExists(recording)) return;
    const QString kept = backupFolder() + services_.session.loadedFile;
    if (!services_.files.FileExists(kept)) services_.files.CopyFile(recording, kept);
}

QString IndividualExport::backupFolder() const {
    return platform::pathIn(services_.session.loadedFolder, u"BU_Source_Files"_qs) +
           QDir::separator();
}

ExportMoment IndividualExport::moment() const {
    return {.runOpen = vsExportRunning == u"Yes",
            .vfExportIndex = vfExportIndex,
            .rowsOfRun = form_.pbExporting->maximum(),
            .rowsInList = static_cast<qint32>(rows().size()),
            .listIsChanging = services_.listIsChanging(),
            .exportsPending = services_.EDT.SoundExportsPending()};
}

void IndividualExport::EDTTimerSoundExportDone_Timer() {
    switch (nextExportStep(moment())) {
        case ExportStep::Nothing:
            return;
        case ExportStep::Wait:
            EDTTimerSoundExportDone.arm();
            if (isStuck(moment())) standStill();
            return;
        case ExportStep::NextRow:
            vfExportIndex += 1;
            return Export_Row(vfExportIndex);
        case ExportStep::Finish:
            return finish();
    }
}

void IndividualExport::standStill() {
    services_.stuck();
    if (standstillTold_ || !isStuck(moment())) return;
    standstillTold_ = true;
    services_.notices.tell(
        exportStandsStill(place(), form_.cbProcess->isEnabled(), recordingPlace(false)));
}

void IndividualExport::endRun() {
    vsExportRunning = u"No"_qs;
    keptRows_.clear();
}

void IndividualExport::finish() {
    endRun();
    const model::Session& session = services_.session;
    const bool recordingIsMoved = moveAway(Source::Recording, session.loadedFile);
    const QString document = platform::pathIn(session.loadedFolder, session.vsWordFile);
    if (services_.files.FileExists(document))
        services_.notices.note(
            documentStays(document, services_.files.FolderExists(backupFolder())));
    moveAway(Source::Script, session.loadedScript);
    tellUnwritten(recordingIsMoved);
    services_.showBatchProcessor();
}

// A file that cannot be moved stays where it is, with a quiet note only.
bool IndividualExport::moveAway(Source source, const QString& name) {
    const QString path = platform::pathIn(services_.session.loadedFolder, name);
    try {
        services_.files.MoveFile(path, backupFolder());
        return true;
    } catch (const std::exception& error) {
        // No notice is needed for a script that was never in this folder, or for a recording that
        // was copied before.
        const bool isThere = services_.files.FileExists(path);
        if (source == Source::Recording ? !recordingCopied_
                                        : isThere || services_.session.scriptWasThere)
            services_.notices.note(sourceNotMoved({source, path, runtime::reasonOf(error), isThere,
                                                   services_.files.FolderExists(backupFolder())}));
        return false;
    }
}

// `moved`: the run has moved the recording to the backup folder. After a prompt with its name, the
// file in the project folder is not the recording.
RecordingPlace IndividualExport::recordingPlace(bool moved) const {
    const model::Session& session = services_.session;
    const auto isThere = [this](const QString& path) { return services_.files.FileExists(path); };
    RecordingPlace place{
        .inBackupFolder =
            moved || (recordingCopied_ && isThere(backupFolder() + session.loadedFile)),
        .inProjectFolder = !moved && !recordingCopied_ &&
                           isThere(platform::pathIn(session.loadedFolder, session.loadedFile)),
        .state = session.recording};
    if (!isThere(place.state.goodCopy)) place.state.goodCopy.clear();
    return place;
}

void IndividualExport::tellUnwritten(bool recordingIsMoved) {
    if (!report_.unwritten().isEmpty())
        services_.notices.tell(
            promptsNotWritten(place().rows, report_.unwritten(), recordingPlace(recordingIsMoved)));
    report_.clear();
}

}  // namespace tarnwick::segmentation
