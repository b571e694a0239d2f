#pragma once

#include <memory>

#include "engine/sound_editor.h"

namespace tarnwick::engine {

// A sound editor without a sound. Made, used and destroyed on the UI thread; the destructor stops
// what plays and gives up what still runs: an output file that is not complete leaves its target
// as it was.
std::unique_ptr<SoundEditor> createSoundEditor();

}  // namespace tarnwick::engine
