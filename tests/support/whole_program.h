#pragma once

#include "app/application.h"
#include "engine/create_sound_editor.h"
#include "forms/frm_frame.h"
#include "forms/frm_main.h"
#include "support/scripted_ports.h"

namespace tarnwick::test {

// The whole program with its real engine, database, documents and windows, for tests, benchmarks
// and the pictures of the manual. Only boxes, dialogs, the opener and the clock are scripted. Needs
// desk.takeDatabase() and application.Sub_Main().
struct WholeProgram {
    FailureDesk desk;  // the program folder
    ScriptedDialog cmdlg;
    ScriptedDialog batchDialog;
    ScriptedDialog renameDialog;
    ScriptedOpener opener;
    platform::Disk files;
    app::NoticeBoard notices{desk.clock};
    QStringList desktopNotes;
    runtime::ProcessState state;
    settings::SettingsDatabase database;
    std::shared_ptr<engine::EditorDirectory> editors = engine::createEditorDirectory();
    engine::SoundEditor* EDT = nullptr;  // the main window's, once that has loaded
    app::Services services{desk.failure,
                           state,
                           database,
                           desk.boxes,
                           cmdlg,
                           batchDialog,
                           renameDialog,
                           files,
                           notices,
                           opener,
                           desk.clock,
                           [this] { return createEDT(); },
                           [this] { return engine::createSoundEditor(editors); },
                           [this](const QString& sentence) { desktopNotes << sentence; },
                           [] { throw ProcessEnded(); }};
    app::Application application{services};

    std::unique_ptr<engine::SoundEditor> createEDT() {
        auto editor = engine::createSoundEditor(editors);
        EDT = editor.get();
        return editor;
    }
    void execute(const QString& statement) {
        const settings::Access access(database, settings::connectionString(desk.folder.path()));
        database.Execute(statement);
        database.Close();
    }
    forms::frmMain& form() { return application.mainForm(); }
};

}  // namespace tarnwick::test
