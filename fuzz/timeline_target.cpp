#include <stdexcept>

#include "sound/writing/sound_writer.h"
#include "support/plain_sound.h"
#include "support/test_sounds.h"
#include "targets.h"

namespace tarnwick::fuzz {

namespace {

using namespace tarnwick::sound;

constexpr std::int64_t kFrames = 6000;
constexpr std::size_t kMostEdits = 60;

std::shared_ptr<const Source> makeSource() {
    const TempFolder folder;
    const NoiseSound sound({8000, 2, 8, false}, kFrames);
    writeSound(sound, 0, kFrames, {Container::Wav, sound.format()}, folder.path() / "take.wav");
    return Source::open(folder.path() / "take.wav");
}

}  // namespace

// Six bytes encode an edit: kind and gain, then two bytes each for its place and length.
void timeline(Bytes bytes) {
    static const std::shared_ptr<const Source> source = makeSource();
    Timeline edited(source);
    PlainSound plain(edited);
    for (std::size_t at = 0; at + 6 <= std::min(bytes.size(), 6 * kMostEdits); at += 6) {
        const auto number = [&](std::size_t i) { return bytes[at + i] | bytes[at + i + 1] << 8; };
        Edit edit{static_cast<Edit::Kind>(bytes[at] % 3), number(2) % (plain.frames() + 1), 0,
                  Edit::kGains[bytes[at + 1] % Edit::kGains.size()]};
        const std::int64_t rest = plain.frames() - edit.first;
        edit.end = edit.first + number(4) % (edit.kind == Edit::Insert ? 1000 : rest + 1);
        edited = edit.on(edited);
        plain.edit(edit);
        if (edited.frames() != plain.frames()) throw std::logic_error("another length");
    }
    if (samplesOf(edited, 0, edited.frames()) != plain.values)
        throw std::logic_error("other samples");
    const int threshold = bytes.empty() ? 0 : bytes.back() << 7;
    if (findSilences(edited, threshold, 5) != plain.silences(threshold, 5) ||
        audibleRange(edited, threshold) != plain.audible(threshold))
        throw std::logic_error("other silences");
}

}  // namespace tarnwick::fuzz
