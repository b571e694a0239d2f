#pragma once

#include <QString>
#include <functional>
#include <stop_token>

#include "engine/event_queue.h"
#include "engine/job_queue.h"
#include "engine/sound_events.h"
#include "sound/sound_writer.h"
#include "sound/timeline.h"

namespace tarnwick::engine {

// Writes stretches of the sound to files, one after the other in the order of the calls, from the
// sound as it was at the call. UI thread.
class Exports {
  public:
    // `done` is told the code of each export on the UI thread, in the same order.
    Exports(EventQueue& events, std::function<void(ErrorCode)> done);
    ~Exports();  // gives up what is not complete

    void add(const sound::Timeline& timeline, qint64 first, qint64 end,
             const sound::OutputFormat& output, const QString& path);

    // Another sound comes: what was asked for is still written, but nobody is told.
    void forget() { pending_ = 0; }

    qint32 pending() const { return pending_; }  // not told of yet

  private:
    EventQueue& events_;
    std::function<void(ErrorCode)> done_;
    qint32 pending_ = 0;
    std::stop_source ending_;
    JobQueue writer_;  // last: its thread uses the others
};

}  // namespace tarnwick::engine
