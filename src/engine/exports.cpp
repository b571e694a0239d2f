#include "engine/exports.h"

#include <QFile>
#include <filesystem>
#include <utility>

#include "engine/failure_codes.h"

namespace tarnwick::engine {

Exports::Exports(EventQueue& events, std::function<void(ErrorCode)> done)
    : events_(events), done_(std::move(done)) {}

Exports::~Exports() { ending_.request_stop(); }

void Exports::add(const sound::Timeline& timeline, qint64 first, qint64 end,
                  const sound::OutputFormat& output, const QString& path) {
    ++pending_;
    const std::filesystem::path target(QFile::encodeName(path).toStdString());
    writer_.add([this, timeline, first, end, output, target, generation = events_.generation(),
                 stop = ending_.get_token()] {
        const ErrorCode code = attempt([&] {
            timeline.source()->checkUnchanged();
            sound::writeSound(timeline, first, end, output, target, {.percent = {}, .stop = stop});
        });
        events_.post(generation, [this, code] {
            --pending_;
            done_(code);
        });
    });
}

}  // namespace tarnwick::engine
