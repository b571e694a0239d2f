#pragma once

#include <QString>

namespace tarnwick::model {

// One file of the Rename Wizard's working table. Names have their extension but no folder.
struct RenameRecord {
    QString Original;
    QString Renamed;
};

}  // namespace tarnwick::model
