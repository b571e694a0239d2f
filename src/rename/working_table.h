#pragma once

#include <QString>
#include <array>
#include <span>

#include "model/limits.h"
#include "model/rename_record.h"

namespace tarnwick::rename {

// State shared by the wizard's classes: the listed folder and the files being renamed.
struct WorkingTable {
    QString vsFolder;  // full path with a trailing separator; the root has two
    std::array<model::RenameRecord, model::kRenameSlots> vaFileNames;
    qint16 viLastFile = 0;  // last record in use; only a preview of new names sets it

    std::span<model::RenameRecord> used() {
        return std::span(vaFileNames).first(static_cast<std::size_t>(viLastFile + 1));
    }
};

}  // namespace tarnwick::rename
