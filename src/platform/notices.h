#pragma once

#include <QString>
#include <QStringList>

namespace tarnwick::platform {

// Something that the operator should know but that does not interrupt the work.
struct Notice {
    QString what;        // one or two sentences: what happened and why
    QStringList files;   // the files concerned, full paths or bare names
    QString safe;        // a sentence: what is safe and where it lies; may be empty
    QString remedy;      // a sentence: what to do; may be empty
    QString topic = {};  // the state that it tells of, for settle(); empty if it cannot be cured

    bool operator==(const Notice&) const = default;
};

// Shows notices to the operator without asking, stopping, taking the focus or delaying a step.
// UI thread. Nothing throws, and no call runs an event loop.
class Notices {
  public:
    virtual ~Notices() = default;

    // Shows it at once, over the window. It replaces a shown notice of the same topic.
    virtual void tell(const Notice& notice) = 0;
    virtual void note(const Notice& notice) = 0;  // only adds it to the list of notices

    // Call when what notices of this topic tell is no longer true: hides them. The list keeps them.
    virtual void settle(const QString& topic) = 0;

    // Call when a new session is loaded: hides the notices of the last session. The list keeps
    // them.
    virtual void startSession() = 0;
};

}  // namespace tarnwick::platform
