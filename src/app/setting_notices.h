#pragma once

#include <QList>
#include <QString>

#include "platform/notices.h"

namespace tarnwick::app {

// The settings on which a load depends, as they stand in their boxes.
struct LoadSettings {
    QString duration, threshold, wordsPerMinute;  // of the main window
    QString channels;                             // of the Preferences, like those below
    bool onlyRows = false;                        // a range of rows of a workbook is imported
    QString firstRow, lastRow;

    // False from the start until a list was filled: the boxes of the main window are grey.
    bool boxesAreLive = false;
    QString database;  // full path
};

// One notice for each value with which a load ends early, and how to correct it.
QList<platform::Notice> noticesOf(const LoadSettings& settings);

}  // namespace tarnwick::app
