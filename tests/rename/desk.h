#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "documents/package_maker.h"
#include "forms/frm_rename_wiz.h"
#include "rename/rename_wizard.h"
#include "support/scripted_ports.h"

namespace tarnwick::test {

// The disk, but with given drives, a given home folder, and files whose date cannot be set.
struct ScriptedDisk : platform::Disk {
    QString home;
    QStringList mounted;                    // the disk's own if empty
    QHash<QString, int> refusals;           // full path and errno value
    mutable std::function<void()> changed;  // the wizard's handler of changed drives

    QString homeFolder() const override { return home.isEmpty() ? Disk::homeFolder() : home; }
    QStringList drives() const override { return mounted.isEmpty() ? Disk::drives() : mounted; }
    std::unique_ptr<QObject> watchDrives(std::function<void()> told) const override {
        changed = std::move(told);
        return {};
    }
    int dateError(const QString& path) const override {
        const int refusal = refusals.value(path);
        return refusal == 0 ? Disk::dateError(path) : refusal;
    }
    using Disk::setDateLastModified;
    bool setDateLastModified(const QString& path, const QDateTime& time, int& error) override {
        error = refusals.value(path);
        return error == 0 && Disk::setDateLastModified(path, time, error);
    }
};

// A Rename Wizard's window with scripted boxes and dialog on a real folder.
struct RenameDesk : ::testing::Test {
    FailureDesk desk;
    QTemporaryDir folder;
    ScriptedDialog cmdlg;
    ScriptedDisk files;
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
    // Runs Rename Per List; `list` has its rows, "old=new;old=new".
    void renamePerList(const QString& list) {
        Rows rows;
        for (const QString& row : list.split(u';'))
            rows << std::pair(row.section(u'=', 0, 0), row.section(u'=', 1));
        workbook = zipOf(workbookParts(cellsOf(rows)));
        cmdlg.path = in(u"list.xlsx"_qs);
        form.cbRenamePerList->click();
    }
    // "name=content" of every file, in order.
    QString onDisk(const QString& below = {}) const {
        const QString place = below.isEmpty() ? folder.path() : in(below);
        QStringList entries;
        for (const QString& name : files.list(place, u"*"_qs))
            entries << name + u'=' + QString::fromUtf8(contentOf(place + u'/' + name));
        return entries.join(u' ');
    }
    // The marked entries of the selection, with their sentences.
    QString marks() const {
        QStringList marked;
        const auto* model = form.lbxSelectedFiles->model();
        for (int row = 0; row < model->rowCount(); ++row)
            if (const QString mark = model->index(row, 0).data(Qt::ToolTipRole).toString();
                !mark.isEmpty())
                marked << model->index(row, 0).data().toString() + u": "_qs + mark;
        return marked.join(u' ');
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
