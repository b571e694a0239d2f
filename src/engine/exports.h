#pragma once

#include <QString>
#include <functional>
#include <map>
#include <mutex>
#include <stop_token>

#include "engine/event_queue.h"
#include "engine/failure_codes.h"
#include "engine/job_queue.h"
#include "sound/timeline/timeline.h"
#include "sound/writing/sound_writer.h"

namespace tarnwick::engine {

// Writes stretches of the sound to files, several at a time, from the sound as it was at the call.
// Calls with the same target are written one after the other in their order. UI thread.
class Exports {
  public:
    // Called on the UI thread with the outcome and the target of each export, in the order of the
    // calls. `forgotten`: the sound was replaced after the call.
    using Done = std::function<void(const Reason&, const QString& path, bool forgotten)>;

    Exports(EventQueue& events, Done done);
    ~Exports();  // cancels incomplete exports

    // `before` may be empty; see SoundEditor::SoundExport.
    void add(const sound::Timeline& timeline, qint64 first, qint64 end,
             const sound::OutputFormat& output, const QString& path, std::function<bool()> before);

    // Call when the sound is replaced. Pending exports are still written and reported as forgotten.
    void forget() { pending_ = 0; }

    qint32 pending() const { return pending_; }  // exports not reported yet

  private:
    struct Outcome {
        quint64 generation;
        Reason reason;
        QString path;
    };

    void ended(quint64 call, Outcome outcome);  // called on the writers' threads

    EventQueue& events_;
    Done done_;
    qint32 pending_ = 0;
    quint64 calls_ = 0;
    std::mutex mutex_;
    quint64 told_ = 0;                     // number of calls that an event was posted for
    std::map<quint64, Outcome> outcomes_;  // of calls that ended before an earlier one
    std::stop_source ending_;
    JobQueue writers_;  // declared last, as its threads use the other members
};

}  // namespace tarnwick::engine
