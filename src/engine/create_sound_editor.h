#pragma once

#include <memory>

#include "engine/sound_editor.h"

namespace tarnwick::engine {

// Editors created with the same directory can load from each other.
class EditorDirectory;
std::shared_ptr<EditorDirectory> createEditorDirectory();

// Creates a sound editor without a sound, with its own directory unless one is given. Created, used
// and destroyed on the UI thread. The destructor stops playing and cancels all work; the target of
// an incomplete output file stays as it was. Throws a Fault if its threads cannot be started.
std::unique_ptr<SoundEditor> createSoundEditor(std::shared_ptr<EditorDirectory> directory = {});

}  // namespace tarnwick::engine
