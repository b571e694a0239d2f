#pragma once

#include <gtest/gtest.h>

#include "app/application.h"
#include "documents/package_maker.h"
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
                           opener,
                           desk.clock,
                           [this] { return createEDT(); },
                           [this] { return engine::createSoundEditor(editors); },
                           [] { throw ProcessEnded(); }};
    app::Application application{services};
    QTemporaryDir session;

    void SetUp() override { desk.takeDatabase(); }
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
    QString in(const QString& name) const { return session.filePath(name); }

    void write(const QString& name, const QByteArray& bytes) const { writeFile(in(name), bytes); }
    QByteArray read(const QString& name) const { return contentOf(in(name)); }
    // The files in a folder of the session.
    QString listed(const QString& folder = {}) const {
        return files.list(folder.isEmpty() ? session.path() : in(folder), u"*"_qs).join(u'|');
    }
    // Writes a workbook of `rows` rows with names and texts.
    void writeScript(int rows) const {
        Rows script;
        for (int i = 1; i <= rows; ++i)
            script.push_back({u"Prompt %1"_qs.arg(i), u"one two  four"_qs});
        write(u"script.xlsx"_qs, zipOf(workbookParts(cellsOf(script))));
    }
    void takeDemo(const QString& name) const {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TARNWICK_DEMO "/") + name, in(name)));
    }
    void load(const QString& name = u"take.wav"_qs) { choose(in(name)); }
    void choose(const QString& path) {
        cmdlg.path = path;
        form().mnuLoadFiles->trigger();
    }
    // The same after removing the backup folder, which would make the load refuse.
    void loadAnew() {
        QDir(in(u"BU_Source_Files"_qs)).removeRecursively();
        load();
    }
    template <class Kind>
    Kind* find(const QString& name = {}) {
        return application.frame().findChild<Kind*>(name);
    }
    bool boxIsShown() {
        return waitUntil([&] { return !desk.boxes.shown.isEmpty(); }, 10000);
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
