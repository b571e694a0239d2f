#pragma once

#include <QList>
#include <QString>

#include "platform/notices.h"

namespace tarnwick::app {

// The settings on which a load depends, as texts of their boxes.
struct LoadSettings {
    QString duration, threshold, wordsPerMinute;  // of the main window
    QString channels;                             // of the Preferences, like the rows below
    bool onlyRows = false;                        // only a range of rows of a workbook is imported
    QString firstRow, lastRow;

    // Whether the boxes of the main window are enabled. They are grey from the start of the program
    // until a list was filled.
    bool boxesAreLive = false;
    QString database;  // full path
};

// One notice for each value that would end or spoil a load, with the way to correct it.
QList<platform::Notice> noticesOf(const LoadSettings& settings);

}  // namespace tarnwick::app
