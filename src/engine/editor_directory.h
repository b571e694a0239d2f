#pragma once

#include <map>

#include "engine/delivered_sound.h"
#include "engine/waveform.h"

namespace tarnwick::engine {

// Which sound editor belongs to which window, for editors that take over each other's sound. UI
// thread.
class EditorDirectory {
  public:
    // An editor belongs to one window; 0 is none. A later one takes the place of an earlier one.
    void add(WindowHandle form, const DeliveredSound* sound) {
        remove(sound);
        if (form != 0) sounds_[form] = sound;
    }
    void remove(const DeliveredSound* sound) {
        std::erase_if(sounds_, [sound](const auto& entry) { return entry.second == sound; });
    }

    // The sound of a window's editor; null when the window has no editor.
    const DeliveredSound* find(WindowHandle form) const {
        const auto found = sounds_.find(form);
        return found == sounds_.end() ? nullptr : found->second;
    }

  private:
    std::map<WindowHandle, const DeliveredSound*> sounds_;
};

}  // namespace tarnwick::engine
