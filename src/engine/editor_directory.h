#pragma once

#include <map>

#include "engine/delivered_sound.h"
#include "engine/waveform.h"

namespace tarnwick::engine {

// Maps windows to their sound editors, so that editors can load each other's sound. UI thread.
class EditorDirectory {
  public:
    // Assigns an editor to a window; 0 is no window. Each editor has at most one window, and a
    // later editor of a window replaces the earlier one.
    void add(WindowHandle form, const DeliveredSound* sound) {
        remove(sound);
        if (form != 0) sounds_[form] = sound;
    }
    void remove(const DeliveredSound* sound) {
        std::erase_if(sounds_, [sound](const auto& entry) { return entry.second == sound; });
    }

    // The sound of a window's editor; null if the window has no editor.
    const DeliveredSound* find(WindowHandle form) const {
        const auto found = sounds_.find(form);
        return found == sounds_.end() ? nullptr : found->second;
    }

  private:
    std::map<WindowHandle, const DeliveredSound*> sounds_;
};

}  // namespace tarnwick::engine
