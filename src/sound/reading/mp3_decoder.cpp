#include "sound/reading/mp3_decoder.h"

#include <algorithm>

#include "sound/reading/mp3_index.h"
#include "sound/reading/mp3_lead_in.h"
#include "sound/reading/mp3_stream.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

// The delay of a decoder in samples, which adds to the encoder's delay noted in the tag.
constexpr int kDecoderDelay = 529;

// Which of the decoded samples belong to the sound.
struct Cut {
    std::int64_t delay{};           // samples to drop at the beginning
    std::int64_t length{};          // samples expected
    std::int64_t most = INT64_MAX;  // upper limit of the samples kept
    bool splits{};                  // whether decoding may begin in the middle
};

// Computes the length without decoding, from the number of frames and what the tag says to cut off.
Cut cutOf(const Mp3Start& start, const Mp3Index& index) {
    Cut cut;
    const Mp3Tag tag = start.tag.value_or(Mp3Tag{});
    const bool exact = tag.delay > 0 || tag.padding > 0;
    if (exact) cut.delay = tag.delay + kDecoderDelay;
    cut.length = index.frames() * start.header.samples - cut.delay;
    // If there are more frames than the tag counts, another file was appended. The padding then
    // lies in the middle of the sound, where it does no harm.
    const std::int64_t frames = tag.frames > 0 ? tag.frames : index.frames();
    if (exact && index.frames() <= frames)
        cut.most = frames * start.header.samples - tag.delay - tag.padding;
    cut.length = std::min(cut.length, cut.most);
    cut.splits = index.unbroken() && cut.length >= kWorthSplitting;
    return cut;
}

}  // namespace

// A decoder that starts in the middle gives the same bits as one that decoded from the beginning if
// the synthesis windows of both are at the same position. The window cycles through 16 steps of 32
// samples, and a frame advances it by 18 or 36 steps. So the positions agree at every eighth frame,
// provided that each frame advanced the window. A frame whose bits begin in one that the decoder
// has not seen may fail to do so, which is why the lead-in replaces such frames.
DecodedSound decodeMp3(const SourceFile& file, const Mp3Start& start, const Progress& progress) {
    const Mp3Index index(file, start, progress.stop);
    if (index.changesKind())
        throw SoundError(SoundFailure::Damaged, "the sound changes its rate on the way");
    const Cut cut = cutOf(start, index);
    if (cut.length < 1) throw SoundError(SoundFailure::NotASound, "no sound in the file");
    const Mp3LeadIn beginning{0, 0, start.byte, {}};
    Mp3LeadIn lead = beginning;
    std::int64_t joint = 0;
    if (cut.splits) {
        const std::int64_t middle = (cut.delay + cut.length / 2) / start.header.samples;
        lead = leadIn(file, index.before(middle));
        joint = lead.settled * start.header.samples - cut.delay;
    }
    const auto streamFrom = [&](std::int64_t first) -> std::unique_ptr<SampleStream> {
        const Mp3LeadIn& from = first == 0 ? beginning : lead;
        const std::int64_t skipped = first + cut.delay - from.frame * start.header.samples;
        const Mp3Stream::Part part{from, index.end(), skipped, cut.most - first};
        return std::make_unique<Mp3Stream>(file, start.header, part, progress.stop);
    };
    StoredSound sound;
    sound.format = {start.header.rate, start.header.channels, 24, false};
    sound.coding = Coding::Little24;
    sound.frames = cut.length;
    return decodeToScratch(sound, streamFrom, joint, progress);
}

}  // namespace tarnwick::sound
