#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "documents/package_maker.h"
#include "forms/frm_rename_wiz.h"
#include "rename/rename_wizard.h"
#include "support/scripted_ports.h"

namespace tarnwick::test {

// A Rename Wizard's window with scripted boxes and dialog on a real folder.
struct RenameDesk : ::testing::Test {
    FailureDesk desk;
    QTemporaryDir folder;
    ScriptedDialog cmdlg;
    platform::Disk files;
    runtime::ProcessState state;
    QByteArray workbook;  // the bytes of whatever file the dialog names
    forms::frmRenameWiz form;
    rename::RenameWizard* wizard =
        new rename::RenameWizard(form, {.failure = desk.failure,
                                        .state = state,
                                        .boxes = desk.boxes,
                                        .cmdlg = cmdlg,
                                        .files = files,
                                        .notices = desk.notices,
                                        .openWorkbook = [this](const QString& path) {
                                            return documents::Workbook::fromBytes(workbook, path);
                                        }});

    QString in(const QString& name) const { return folder.filePath(name); }
    // Files that hold their own names.
    void put(const QStringList& names) const {
        for (const QString& name : names)
            writeFile(in(name), name.toUtf8());
    }
    void select(const QStringList& names) {
        put(names);
        wizard->setFolder(folder.path());
        form.cbAddAll->click();
    }
    // "name=content" of every file, in order.
    QString onDisk(const QString& below = {}) const {
        const QString place = below.isEmpty() ? folder.path() : in(below);
        QStringList entries;
        for (const QString& name : files.list(place, u"*"_qs))
            entries << name + u'=' + QString::fromUtf8(contentOf(place + u'/' + name));
        return entries.join(u' ');
    }
    QString selected() const { return form.lbxSelectedFiles->names().join(u' '); }
    QString available() const { return form.lbxAvailableFiles->names().join(u' '); }
    QString boxes() { return std::exchange(desk.boxes.shown, {}).join(u'|'); }
    // What the box said before the program ended; "goes on" where it did not.
    QString endOf(QPushButton* button) {
        try {
            button->click();
        } catch (const ProcessEnded&) {
            return boxes();
        }
        return u"goes on"_qs;
    }
};

}  // namespace tarnwick::test
