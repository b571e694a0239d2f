#pragma once

#include <QString>

namespace tarnwick::model {

// One file of the Rename Wizard's working table, names with their extension and without a folder.
struct RenameRecord {
    QString Original;
    QString Renamed;
};

}  // namespace tarnwick::model
