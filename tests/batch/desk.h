#pragma once

#include <gtest/gtest.h>

#include "batch/output_encoding.h"
#include "batch/run.h"
#include "batch/services.h"
#include "batch/trace.h"
#include "forms/frm_batch_processor.h"
#include "support/scripted_editor.h"
#include "support/scripted_ports.h"
#include "support/wait_until.h"

namespace tarnwick::test {

// A Batch Processor's window with scripted engines and boxes, a real folder and a real database.
struct BatchDesk : ::testing::Test {
    FailureDesk desk;  // the program folder
    QTemporaryDir project;
    ScriptedDialog cmdlg;
    platform::Disk files;
    runtime::ProcessState state;
    settings::SettingsDatabase database;
    ScriptedEditor EDT;
    ScriptedEditor EDTX;
    forms::frmBatchProcessor form;
    batch::Run run;
    batch::Services services{desk.failure, state,      database, desk.boxes, cmdlg,
                             files,        desk.clock, EDT,      EDTX,       [] {}};

    void SetUp() override {
        desk.takeDatabase();
        state.vsConnection = settings::connectionString(desk.folder.path());
        state.vsProjectFolder = project.path();
    }
    void execute(const QString& statement) {
        const settings::Access access(database, state.vsConnection);
        database.Execute(statement);
        database.Close();
    }
    QString in(const QString& name) const { return project.filePath(name); }
    QStringList boxes() { return std::exchange(desk.boxes.shown, {}); }
    // The procedure, fault and step that the fatal box tells; empty where all ends well.
    QString endOf(const std::function<void()>& procedure) {
        try {
            procedure();
            return {};
        } catch (const ProcessEnded&) {
            return boxes()
                .value(0)
                .section(u"Error: frmBatchProcessor."_qs, 1)
                .section(u"\r\n"_qs, 0, 0);
        }
    }
};

}  // namespace tarnwick::test
