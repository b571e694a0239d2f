// The menu tree of the main window.
#include "forms/fonts.h"
#include "forms/frm_main.h"

namespace tarnwick::forms {

namespace {

QMenu* addMenu(QMenuBar* bar, const char* name, const char* caption) {
    QMenu* menu = bar->addMenu(QLatin1String(caption));
    menu->setObjectName(QLatin1String(name));
    return menu;
}

QAction* addItem(QMenu* menu, const char* name, const char* caption, const char* shortcut = "") {
    QAction* item = menu->addAction(QLatin1String(caption));
    item->setObjectName(QLatin1String(name));
    item->setShortcut(QKeySequence(QLatin1String(shortcut), QKeySequence::PortableText));
    return item;
}

}  // namespace

void frmMain::makeMenus() {
    menuBar = new QMenuBar(this);
    menuBar->setObjectName(QStringLiteral("menuBar"));
    menuBar->setFont(uiFont());
    makeFileMenu();
    makeWindowsMenu();
    makeToolsMenu();
    makeHelpMenu();
    for (QMenu* menu : {mnuFile, mnuWindows, mnuTools, mnuHelp, mnuTutorials}) {
        menu->setFont(uiFont());
    }
}

void frmMain::makeFileMenu() {
    mnuFile = addMenu(menuBar, "mnuFile", "File");
    mnuLoadFiles = addItem(mnuFile, "mnuLoadFiles", "Load Working Files...", "Ctrl+L");
    mnuBackupSourceFile = addItem(mnuFile, "mnuBackupSourceFile", "Backup Source File", "Ctrl+S");
    mnuExport = addItem(mnuFile, "mnuExport", "Export Individual Audio Files", "Ctrl+E");
    mnuFile->addSeparator();
    mnuQuit = addItem(mnuFile, "mnuQuit", "Quit");
    mnuBackupSourceFile->setEnabled(false);
    mnuExport->setEnabled(false);
}

void frmMain::makeWindowsMenu() {
    mnuWindows = addMenu(menuBar, "mnuWindows", "Windows");
    mnuBatchProcessor = addItem(mnuWindows, "mnuBatchProcessor", "Batch Processor", "Ctrl+B");
    mnuRenameWizard = addItem(mnuWindows, "mnuRenameWizard", "Rename Wizard", "Ctrl+R");
    mnuProjectFolder = addItem(mnuWindows, "mnuProjectFolder", "Open Project Folder", "Ctrl+P");
    mnuPreferences = addItem(mnuWindows, "mnuPreferences", "Preferences", "Ctrl+F2");
    mnuProjectFolder->setEnabled(false);
}

void frmMain::makeToolsMenu() {
    mnuTools = addMenu(menuBar, "mnuTools", "Tools");
    mnuPlayfromListView =
        addItem(mnuTools, "mnuPlayfromListView", "Play Continuously on Mouse Click", "Ctrl+M");
    mnuZoomIn = addItem(mnuTools, "mnuZoomIn", "Zoom In", "F1");
    mnuZoomOut = addItem(mnuTools, "mnuZoomOut", "Zoom Out", "F2");
    mnuUndo = addItem(mnuTools, "mnuUndo", "Undo", "Ctrl+Z");
}

void frmMain::makeHelpMenu() {
    mnuHelp = addMenu(menuBar, "mnuHelp", "Help");
    mnuHelpAbout = addItem(mnuHelp, "mnuHelpAbout", "About...");
    mnuManual = addItem(mnuHelp, "mnuManual", "Manual");
    mnuHistory = addItem(mnuHelp, "mnuHistory", "Change History");
    mnuTutorials = mnuHelp->addMenu(QStringLiteral("Open Tutorials"));
    mnuTutorials->setObjectName(QStringLiteral("mnuTutorials"));
    mnuTutorialPresentation =
        addItem(mnuTutorials, "mnuTutorialPresentation", "Tarnwick Presentation");
    mnuTutorialBP = addItem(mnuTutorials, "mnuTutorialBP", "Batch Processing");
    mnuTutorialBasicScriptFormatting =
        addItem(mnuTutorials, "mnuTutorialBasicScriptFormatting", "Script Formatting");
}

}  // namespace tarnwick::forms
