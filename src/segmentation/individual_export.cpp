#include "segmentation/individual_export.h"

#include <QDir>

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "forms/texts.h"
#include "model/list_columns.h"
#include "runtime/events.h"
#include "runtime/file_names.h"
#include "runtime/numbers.h"

namespace tarnwick::segmentation {

namespace {

constexpr qint32 kExportFrequency = 44100;  // Hz

}  // namespace

IndividualExport::IndividualExport(forms::frmMain& form, Services services)
    : form_(form),
      services_(std::move(services)),
      EDTTimerSoundExportDone(services_.failure, *form.EDTTimerSoundExportDone,
                              [this] { EDTTimerSoundExportDone_Timer(); }) {
    runtime::onEvent(services_.failure, form_.mnuExport, &QAction::triggered, &form_,
                     [this] { mnuExport_Click(); });
    runtime::onEvent(services_.failure, &services_.EDT, &engine::SoundEditor::SoundExportDone,
                     &form_, [this] { EDTTimerSoundExportDone.arm(); });
    runtime::onEvent(services_.failure, &services_.EDT, &engine::SoundEditor::SoundEditDone, &form_,
                     [this](qint16, qint32 bResult) {
                         if (bResult == 1) keptRows_.clear();
                     });
}

// There is nothing to write while the list is empty or is being rebuilt.
bool IndividualExport::listIsReady() const {
    return form_.lvAudioDetails->topLevelItemCount() > 0 && !services_.listIsChanging();
}

void IndividualExport::mnuExport_Click() {
    if (!listIsReady()) return;
    if (form_.txbNberFileNames->text() != form_.txbNberAudioFiles->text() &&
        !services_.boxes.askYesNo(u"Warning!"_qs,
                                  u"The file numbers are different so something is incorrect. "
                                  u"Do you want proceed anyway?"_qs))
        return;
    if (!listIsReady()) return;  // it may have changed while the box was open
    vsExportRunning = u"Yes"_qs;
    forms::showOverlay(form_, *form_.frExportFiles);
    form_.pbExporting->setMaximum(form_.lvAudioDetails->topLevelItemCount());
    vfExportIndex = 1;
    Export_Row(vfExportIndex);
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
    endRun();
    form_.frExportFiles->hide();
}

void IndividualExport::Export_Row(float index) {
    engine::SoundEditor& EDT = services_.EDT;
    const qint32 channels = runtime::strictLong(form_.cbxChannels->currentText());
    EDT.encodeFormats().FormatToUse = engine::kWavContainer;
    EDT.encodeFormats().WAV.EncodeMode = engine::kWav24;
    const qint32 row = runtime::roundToLong(index);
    const Row prompt = rows().value(row - 1);
    vsExportFile =
        platform::pathIn(services_.session.loadedFolder, runtime::promptFile(prompt.name));
    vlExportStart = runtime::strictLong(prompt.start);
    vlExportEnd = runtime::strictLong(prompt.end);
    keepRecording();
    const qint32 nResult =
        EDT.SoundExport(kExportFrequency, channels, 0, vlExportStart, vlExportEnd, vsExportFile);
    // A refused row gives no event, so the run would stop here.
    const bool refused = nResult != engine::kOk;
    if (refused) vsExportRunning = u"No"_qs;
    form_.pbExporting->setValue(row);
    forms::setCaption(form_.lbExporting,
                      u"Exporting file %1 of %2"_qs.arg(row).arg(form_.pbExporting->maximum()));
    forms::repaintNow(form_);
    if (refused) services_.stuck();
}

// A prompt with the same name as the recording overwrites it. The recording is therefore copied
// first, to where the end of the run would have moved it.
void IndividualExport::keepRecording() {
    const QString recording =
        platform::pathIn(services_.session.loadedFolder, services_.session.loadedFile);
    if (vsExportFile != recording || !services_.files.FileExists(recording)) return;
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
            if (isStuck(moment())) services_.stuck();
            return;
        case ExportStep::NextRow:
            vfExportIndex += 1;
            return Export_Row(vfExportIndex);
        case ExportStep::Finish:
            return finish();
    }
}

void IndividualExport::endRun() {
    vsExportRunning = u"No"_qs;
    keptRows_.clear();
}

void IndividualExport::finish() {
    endRun();
    const QString& folder = services_.session.loadedFolder;
    for (const QString& name : {services_.session.loadedFile, services_.session.loadedScript}) {
        try {
            services_.files.MoveFile(platform::pathIn(folder, name), backupFolder());
        } catch (const std::exception&) {
            // A file that cannot be moved stays where it is, without a message.
        }
    }
    services_.showBatchProcessor();
}

}  // namespace tarnwick::segmentation
