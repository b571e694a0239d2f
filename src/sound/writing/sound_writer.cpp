#include "sound/writing/sound_writer.h"

#include <algorithm>
#include <new>
#include <optional>
#include <system_error>
#include <vector>

#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/writing/atomic_file.h"
#include "sound/writing/encoder.h"
#include "sound/writing/ordered_blocks.h"
#include "sound/writing/rate_blocks.h"

namespace tarnwick::sound {

namespace {

void check(const FrameReader& sound, std::int64_t first, std::int64_t end,
           const OutputFormat& output) {
    if (first < 0 || first > end || end > sound.frames()) {
        throw SoundError(SoundFailure::BadRange, "a stretch outside the sound");
    }
    const auto countable = [](int channels) { return channels == 1 || channels == 2; };
    const int rate = output.format.rate;
    if (!countable(output.format.channels) || !countable(sound.format().channels) ||
        rate < kLowestRate || rate > kHighestRate) {
        throw SoundError(SoundFailure::BadFormat, "a rate or channel count that is not written");
    }
}

// Reports each percent once and checks for a stop request.
class Course {
  public:
    Course(const Progress& progress, std::int64_t whole) : progress_(progress), whole_(whole) {}

    void at(std::int64_t done) {
        checkStop(progress_.stop);
        const int percent = whole_ > 0 ? static_cast<int>(done * 100 / whole_) : 100;
        if (percent > last_ && progress_.percent) progress_.percent(percent);
        last_ = std::max(last_, percent);
    }

  private:
    const Progress& progress_;
    std::int64_t whole_;
    int last_ = -1;
};

void encode(const FrameReader& sound, std::int64_t first, std::int64_t end,
            const OutputFormat& output, const Progress& progress, AtomicFile& file) {
    RateBlocks blocks(sound, first, end, output.format.rate, output.format.channels);
    const auto encoder = makeEncoder(output, blocks.frames(), file);
    const std::optional<Coding> coding = encoder->storedCoding();
    const bool sameChannels = sound.format().channels == output.format.channels;
    if (coding && sameChannels) blocks.copyStored(*coding);
    Course course(progress, blocks.frames());
    std::vector<double> mixed;
    std::int64_t done = 0;
    const auto use = [&](const SoundBlock& block) {
        course.at(done);
        if (!block.stored.empty()) {
            encoder->writeStored(block.stored);
            done += std::ssize(block.stored) / (bytesOf(*coding) * blocks.channels());
            return;
        }
        const auto count = std::ssize(block.values) / blocks.channels();
        encoder->write(withChannels(block.values.data(), count, blocks.channels(),
                                    output.format.channels, mixed),
                       count);
        done += count;
    };
    const auto stopped = [&] { return progress.stop.stop_requested(); };
    if (blocks.isLong()) {
        // While the encoder works, other threads read and resample the next blocks.
        OrderedBlocks ahead(
            blocks.count(), blocks.threads(),
            [&](std::int64_t number, SoundBlock& block, const std::stop_token& stop) {
                blocks.make(number, block, [&] { return stop.stop_requested() || stopped(); });
            });
        for (std::int64_t number = 0; number < blocks.count(); ++number)
            use(ahead.next());
    } else {
        SoundBlock block;
        for (std::int64_t number = 0; number < blocks.count(); ++number) {
            block.clear();
            blocks.make(number, block, stopped);
            use(block);
        }
    }
    encoder->finish();
    course.at(done);
}

}  // namespace

void writeSound(const FrameReader& sound, std::int64_t first, std::int64_t end,
                const OutputFormat& output, const std::filesystem::path& target,
                const Progress& progress) try {
    check(sound, first, end, output);
    AtomicFile file(target);
    encode(sound, first, end, output, progress, file);
    file.commit();
} catch (const std::bad_alloc&) {
    throw SoundError(SoundFailure::NoSpace, "no memory for writing the sound");
} catch (const std::system_error&) {  // no thread can be started
    throw SoundError(SoundFailure::NoSpace, "no memory for writing the sound");
}

}  // namespace tarnwick::sound
