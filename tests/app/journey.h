#pragma once

#include <gtest/gtest.h>

#include "documents/package_maker.h"
#include "support/wait_until.h"
#include "support/whole_program.h"

namespace tarnwick::test {

// The whole program, and a folder for its session.
struct Journey : ::testing::Test, WholeProgram {
    QTemporaryDir session;

    void SetUp() override { desk.takeDatabase(); }
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
