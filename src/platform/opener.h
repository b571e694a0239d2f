#pragma once

#include <QString>
#include <functional>

namespace tarnwick::platform {

// Opens documents, folders and pages with the desktop's own programs. UI thread.
class Opener {
  public:
    // Gets the reason in a few words that continue a sentence.
    using Failed = std::function<void(const QString& reason)>;

    virtual ~Opener() = default;
    // Does not wait. `failed` is called at most once: before open() returns, or later from the
    // event loop if the desktop's program reports a failure. It may then outlive its caller.
    virtual void open(const QString& target, const Failed& failed) = 0;
};

}  // namespace tarnwick::platform
