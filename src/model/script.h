#pragma once

#include <array>

#include "model/limits.h"
#include "model/prompt_row.h"

namespace tarnwick::model {

// The imported script. Rows above `viPromptCount` may hold values from an earlier import.
struct Script {
    std::array<PromptRow, kPromptSlots> Prompts;
    qint16 viPromptCount = 0;
};

}  // namespace tarnwick::model
