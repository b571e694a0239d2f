#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <span>

#include "model/rename_record.h"

namespace tarnwick::rename {

// For each record: why its new name cannot be given, in a few words about "it"; empty if it can.
// The files are renamed in order, and a file that cannot be renamed keeps its name. So the first of
// several equal new names can be given. `isTaken` says whether a file in the folder has the name
// now; it is called only for valid names.
QStringList whyNotGiven(std::span<const model::RenameRecord> records,
                        const std::function<bool(const QString& name)>& isTaken);

}  // namespace tarnwick::rename
