#pragma once

#include "desk.h"
#include "segmentation/individual_export.h"

namespace tarnwick::test {

// A session in a real folder, with a list of three rows that can be exported.
struct ExportDesk : MainDesk {
    struct MeasuredDisk : platform::Disk {
        qint64 freeBytes(const QString&) const override { return free; }
        qint64 free = -1;
    } files;
    QTemporaryDir project;
    bool changing = false;
    int batch = 0;
    int stuck = 0;
    segmentation::IndividualExport exporting{
        form,
        {desk.failure, session, EDT, desk.boxes, files, desk.notices, [this] { return changing; },
         [this] { ++batch; }, [this] { ++stuck; }}};

    void SetUp() override {
        MainDesk::SetUp();
        session.loadedFolder = project.path();
        session.loadedFile = u"take.wav"_qs;
        session.loadedScript = u"script.xlsx"_qs;
        session.vsScriptFile = u"of a load that was given up.xlsx"_qs;
        QDir(project.path()).mkdir(u"BU_Source_Files"_qs);
        for (const QString& name : {u"take.wav"_qs, u"script.xlsx"_qs})
            writeFile(project.filePath(name), "recording");
        form.txbNberFileNames->setText(u"3"_qs);
        form.txbNberAudioFiles->setText(u"3"_qs);
        form.mnuExport->setEnabled(true);
        addRows(3);
    }

    void next() {
        EDT.endExport();
        fire(form.EDTTimerSoundExportDone);
    }
    bool moved(const QString& name) const {
        return QFile::exists(project.filePath(u"BU_Source_Files/"_qs + name)) &&
               !QFile::exists(project.filePath(name));
    }
};

}  // namespace tarnwick::test
