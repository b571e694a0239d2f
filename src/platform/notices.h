#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick::platform {

// Something that the operator should know although nothing stops for it.
struct Notice {
    QString what;       // one or two sentences: what happened and why
    QStringList files;  // the files concerned, full paths or bare names
    QString safe;       // a sentence: what is safe and where it lies; may be empty
    QString remedy;     // a sentence: what to do; may be empty

    bool operator==(const Notice&) const = default;
};

// Puts notices before the operator without asking, stopping, taking the focus or delaying a step.
// UI thread. Nothing throws, and no call runs an event loop.
class Notices {
  public:
    virtual ~Notices() = default;

    virtual void tell(const Notice& notice) = 0;  // shows it at once, over the window
    virtual void note(const Notice& notice) = 0;  // only adds it to the list of notices

    // A new session is being loaded: takes away what is shown of the last one. The list stays.
    virtual void startSession() = 0;
};

}  // namespace tarnwick::platform
