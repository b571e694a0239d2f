#pragma once

#include <functional>

#include "engine/one_shot_timer.h"
#include "engine/sound_editor.h"
#include "model/session.h"
#include "platform/boxes.h"
#include "platform/file_system.h"
#include "platform/notices.h"
#include "runtime/failure_path.h"
#include "segmentation/export_notices.h"
#include "segmentation/export_report.h"
#include "segmentation/export_run.h"

namespace tarnwick::forms {
class frmMain;
}

namespace tarnwick::segmentation {

// Writes one file for each row of the list, one after the other, then moves the recording and its
// script to the backup folder and opens the Batch Processor. UI thread.
class IndividualExport {
  public:
    struct Services {
        const runtime::FailurePath& failure;
        const model::Session& session;
        engine::SoundEditor& EDT;
        platform::Boxes& boxes;
        platform::FileSystem& files;
        platform::Notices& notices;
        std::function<bool()> listIsChanging;
        std::function<void()> showBatchProcessor;  // also hides the main window
        std::function<void()> stuck;  // the run does not continue by itself; called at each check
    };

    IndividualExport(forms::frmMain& form, Services services);

    void mnuExport_Click();

    // Call before the list is emptied although the sound does not change: a run then continues with
    // the rows that the list had.
    void keepRows();

    // Whether a run is open that will continue by itself until all rows are written.
    bool running() const;

    // The sound was closed: what was being written is not reported any more.
    void lookAgain() { EDTTimerSoundExportDone.arm(); }

    // Gives up an unfinished run because the sound is replaced by another recording.
    void drop();

  private:
    // One row of the list: its name and its range in ms.
    struct Row {
        QString name;
        QString start, end;
    };

    void connectEditor();
    bool listIsReady() const;
    void settleNotices() const;
    void checkSpace() const;
    QString fileOf(const Row& row) const;
    ExportPlace place() const;
    QList<Row> rowsOfList() const;
    QList<Row> rows() const;
    void Export_Row(float index);
    void EDTTimerSoundExportDone_Timer();
    void keepRecording();
    QString backupFolder() const;
    ExportMoment moment() const;
    void stopAtRefusedRow(qint32 code);
    void standStill();
    void endRun();
    void finish();
    bool moveAway(Source source, const QString& name);
    RecordingPlace recordingPlace(bool moved) const;
    void tellUnwritten(bool recordingIsMoved);

    forms::frmMain& form_;
    Services services_;
    engine::OneShotTimer EDTTimerSoundExportDone;
    float vfExportIndex{};     // row being exported, from 1; keeps its last value
    QList<Row> keptRows_;      // rows of the list before it was emptied; valid until an edit
    QString vsExportRunning;   // "Yes" from the start of a run until it has finished or is given up
    QString vsExportFile;      // full path of the file being written
    qint32 vlExportStart = 0;  // the row's range, in ms
    qint32 vlExportEnd = 0;
    ExportReport report_;
    bool standstillTold_ = false;   // exportStandsStill() was told for the last requested row
    bool recordingCopied_ = false;  // a prompt of this run has the recording's name
};

}  // namespace tarnwick::segmentation
