#pragma once

// Fixed sizes of the product's working arrays.

namespace tarnwick::model {

inline constexpr int kPromptSlots = 501;   // prompts 1 to 500, slot 0 unused
inline constexpr int kSilenceSlots = 501;  // silences 0 to 500
inline constexpr int kRenameSlots = 301;   // rename records 0 to 300

}  // namespace tarnwick::model
