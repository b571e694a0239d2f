#include "engine/exports.h"

#include <sys/stat.h>

#include <condition_variable>
#include <filesystem>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "runtime/file_names.h"

namespace tarnwick::engine {

namespace {

// Flushing a short file to disk takes longer than writing it, so some writers work while others
// wait for the disk.
constexpr int kWriters = 6;

// The number of nested symbolic links that the system follows.
constexpr int kMostLinks = 40;

// A key that is the same for every spelling of a target and for links to it: the identity of its
// folder and the name in it, case-folded because some file systems ignore case.
std::string keyOf(std::filesystem::path target) {
    // Resolved by hand, since a link may point to a file that an earlier call has yet to write.
    std::error_code error;
    for (int links = 0; links < kMostLinks && is_symlink(symlink_status(target, error)); ++links)
        target = target.parent_path() / read_symlink(target, error);
    const std::filesystem::path folder =
        target.has_parent_path() ? target.parent_path() : std::filesystem::path(".");
    struct stat state;
    const std::string place =
        stat(folder.c_str(), &state) == 0
            ? std::to_string(state.st_dev) + ' ' + std::to_string(state.st_ino)
            : folder.string();
    const QString name = runtime::textOfFileName(target.filename().native());
    return place + '/' + name.normalized(QString::NormalizationForm_C).toCaseFolded().toStdString();
}

// Lets editors that write the same target take turns. A file found there then comes either from the
// previous call, and is replaced, or from another program.
class Turn {
  public:
    explicit Turn(std::string key) : key_(std::move(key)) {
        std::unique_lock lock(mutex_);
        ended_.wait(lock, [this] { return writing_.insert(key_).second; });
    }
    ~Turn() {
        const std::lock_guard lock(mutex_);
        writing_.erase(key_);
        ended_.notify_all();
    }
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;

  private:
    inline static std::mutex mutex_;
    inline static std::condition_variable ended_;
    inline static std::set<std::string> writing_;

    const std::string key_;
};

}  // namespace

Exports::Exports(EventQueue& events, Done done)
    : events_(events), done_(std::move(done)), writers_(kWriters) {}

Exports::~Exports() { ending_.request_stop(); }

void Exports::add(const sound::Timeline& timeline, qint64 first, qint64 end,
                  const sound::OutputFormat& output, const QString& path,
                  std::function<bool()> before) {
    ++pending_;
    const std::filesystem::path target = runtime::pathOf(path);
    const std::string key = keyOf(target);
    const auto write = [this, timeline, first, end, output, path, target, key,
                        before = std::move(before), call = calls_++,
                        generation = events_.generation(), stop = ending_.get_token()] {
        const Reason reason = attempt([&] {
            const Turn turn(key);
            if (before && !before()) throw EditorError(kWriteFailed, "given up before writing");
            timeline.source()->checkUnchanged();
            sound::writeSound(timeline, first, end, output, target, {.percent = {}, .stop = stop});
        });
        ended(call, {generation, reason, path});
    };
    writers_.add(write, key);
}

void Exports::ended(quint64 call, Outcome outcome) {
    const std::lock_guard lock(mutex_);
    outcomes_.emplace(call, outcome);
    for (auto next = outcomes_.begin(); next != outcomes_.end() && next->first == told_; ++told_) {
        events_.post(EventQueue::kAnyGeneration, [this, outcome = std::move(next->second)] {
            const bool forgotten = outcome.generation != events_.generation();
            if (!forgotten) --pending_;
            done_(outcome.reason, outcome.path, forgotten);
        });
        next = outcomes_.erase(next);
    }
}

}  // namespace tarnwick::engine
