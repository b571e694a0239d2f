#pragma once

#include <gtest/gtest.h>

#include "app/application.h"
#include "engine/create_sound_editor.h"
#include "forms/frm_frame.h"
#include "forms/frm_main.h"
#include "support/scripted_ports.h"
#include "support/wait_until.h"

namespace tarnwick::test {

// The whole program with its real engine, database, documents and windows. Only boxes, dialogs, the
// opener and the clock are scripted.
struct Journey : ::testing::Test {
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
    app::Services services{
        .failure = desk.failure,
        .state = state,
        .database = database,
        .boxes = desk.boxes,
        .cmdlg = cmdlg,
        .batchDialog = batchDialog,
        .renameDialog = renameDialog,
        .files = files,
        .notices = notices,
        .opener = opener,
        .clock = desk.clock,
        .createEDT =
            [this] {
                auto editor = engine::createSoundEditor(editors);
                EDT = editor.get();
                return editor;
            },
        .createEDTX = [this] { return engine::createSoundEditor(editors); },
        .notifyDesktop = [this](const QString& sentence) { desktopNotes << sentence; },
        .endProcess = [] { throw ProcessEnded(); }};
    app::Application application{services};
    QTemporaryDir session;

    void SetUp() override {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TARNWICK_SEED_DATABASE), databaseFile()));
        QFile::setPermissions(databaseFile(), QFile::ReadOwner | QFile::WriteOwner);
    }
    QString databaseFile() const { return desk.folder.filePath(u"Tarnwick.mdb"_qs); }
    void execute(const QString& statement) {
        const settings::Access access(database, settings::connectionString(desk.folder.path()));
        database.Execute(statement);
        database.Close();
    }
    forms::frmMain& form() { return application.mainForm(); }
    QString in(const QString& name) const { return session.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) const { writeFile(in(name), bytes); }
    QByteArray read(const QString& name) const { return contentOf(in(name)); }
    void takeDemo(const QString& name) const {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TARNWICK_DEMO "/") + name, in(name)));
    }
    void load(const QString& name = u"take.wav"_qs) {
        cmdlg.path = in(name);
        form().mnuLoadFiles->trigger();
    }
    // The same after removing the backup folder, which would make the load refuse.
    void loadAnew() {
        QDir(in(u"BU_Source_Files"_qs)).removeRecursively();
        load();
    }
    // Waits until the list has `rows` rows and every file is written.
    bool settled(int rows) {
        return waitUntil([&] {
            return form().lvAudioDetails->topLevelItemCount() == rows &&
                   form().txbCalculating->isHidden() && EDT->SoundExportsPending() == 0;
        });
    }
    QString cell(int row, int column) {
        return form().lvAudioDetails->topLevelItem(row)->text(column);
    }
    QStringList boxes() { return std::exchange(desk.boxes.shown, {}); }
};

// The program, already started.
struct Launched : Journey {
    void SetUp() override {
        Journey::SetUp();
        application.Sub_Main();
    }
};

}  // namespace tarnwick::test
