#pragma once

#include <memory>

#include "engine/sound_editor.h"

namespace tarnwick::engine {

// The editors made with the same directory can load from each other.
class EditorDirectory;
std::shared_ptr<EditorDirectory> createEditorDirectory();

// A sound editor without a sound, in a directory of its own unless one is given. Made, used and
// destroyed on the UI thread; the destructor stops what plays and gives up what still runs: an
// output file that is not complete leaves its target as it was. A Fault where its threads cannot be
// started.
std::unique_ptr<SoundEditor> createSoundEditor(std::shared_ptr<EditorDirectory> directory = {});

}  // namespace tarnwick::engine
