// The menu tree of the main window.
#include "forms/fonts.h"
#include "forms/frm_main.h"
#include "forms/makers.h"

namespace tarnwick::forms {

using namespace Qt::Literals::StringLiterals;

namespace {

// `parent` is a menu bar or a menu.
template <class Parent>
void addMenu(Parent* parent, const Named<QMenu*>& named, const QString& caption) {
    named.member = parent->addMenu(caption);
    named.member->setObjectName(named.name);
    named.member->setFont(uiFont());
}

void addItem(QMenu* menu, const Named<QAction*>& named, const QString& caption,
             const QString& shortcut = {}) {
    named.member = menu->addAction(caption);
    named.member->setObjectName(named.name);
    named.member->setShortcut(QKeySequence(shortcut, QKeySequence::PortableText));
}

}  // namespace

void frmMain::makeMenus() {
    Maker(this).control(NAMED(menuBar))->setFont(uiFont());
    makeFileMenu();
    makeWindowsMenu();
    makeToolsMenu();
    makeHelpMenu();
}

void frmMain::makeFileMenu() {
    addMenu(menuBar, NAMED(mnuFile), u"File"_s);
    addItem(mnuFile, NAMED(mnuLoadFiles), u"Load Working Files..."_s, u"Ctrl+L"_s);
    addItem(mnuFile, NAMED(mnuBackupSourceFile), u"Backup Source File"_s, u"Ctrl+S"_s);
    addItem(mnuFile, NAMED(mnuExport), u"Export Individual Audio Files"_s, u"Ctrl+E"_s);
    mnuFile->addSeparator();
    addItem(mnuFile, NAMED(mnuQuit), u"Quit"_s);
    mnuBackupSourceFile->setEnabled(false);
    mnuExport->setEnabled(false);
}

void frmMain::makeWindowsMenu() {
    addMenu(menuBar, NAMED(mnuWindows), u"Windows"_s);
    addItem(mnuWindows, NAMED(mnuBatchProcessor), u"Batch Processor"_s, u"Ctrl+B"_s);
    addItem(mnuWindows, NAMED(mnuRenameWizard), u"Rename Wizard"_s, u"Ctrl+R"_s);
    addItem(mnuWindows, NAMED(mnuProjectFolder), u"Open Project Folder"_s, u"Ctrl+P"_s);
    addItem(mnuWindows, NAMED(mnuPreferences), u"Preferences"_s, u"Ctrl+F2"_s);
    mnuProjectFolder->setEnabled(false);
}

void frmMain::makeToolsMenu() {
    addMenu(menuBar, NAMED(mnuTools), u"Tools"_s);
    addItem(mnuTools, NAMED(mnuPlayfromListView), u"Play Continuously on Mouse Click"_s,
            u"Ctrl+M"_s);
    addItem(mnuTools, NAMED(mnuZoomIn), u"Zoom In"_s, u"F1"_s);
    addItem(mnuTools, NAMED(mnuZoomOut), u"Zoom Out"_s, u"F2"_s);
    addItem(mnuTools, NAMED(mnuUndo), u"Undo"_s, u"Ctrl+Z"_s);
}

void frmMain::makeHelpMenu() {
    addMenu(menuBar, NAMED(mnuHelp), u"Help"_s);
    addItem(mnuHelp, NAMED(mnuHelpAbout), u"About..."_s);
    addItem(mnuHelp, NAMED(mnuManual), u"Manual"_s);
    addItem(mnuHelp, NAMED(mnuHistory), u"Change History"_s);
    addMenu(mnuHelp, NAMED(mnuTutorials), u"Open Tutorials"_s);
    addItem(mnuTutorials, NAMED(mnuTutorialPresentation), u"Tarnwick Presentation"_s);
    addItem(mnuTutorials, NAMED(mnuTutorialBP), u"Batch Processing"_s);
    addItem(mnuTutorials, NAMED(mnuTutorialBasicScriptFormatting), u"Script Formatting"_s);
}

}  // namespace tarnwick::forms
