#include "sound/reading/mp3_decoder.h"

#include <algorithm>

#include "sound/reading/mp3_index.h"
#include "sound/reading/mp3_lead_in.h"
#include "sound/reading/mp3_stream.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

// The samples that a decoder comes too late by, over what the encoder notes of itself.
constexpr int kDecoderDelay = 529;

// Which of the samples that the frames give are the sound.
struct Cut {
    std::int64_t delay = 0;         // samples at the beginning that are not given
    std::int64_t length = 0;        // samples that are expected
    std::int64_t most = INT64_MAX;  // no more than these are given
    bool splits = false;            // whether decoding may begin in the middle
};

// The length needs no decoding: the frames are counted, and the tag says what to cut off.
Cut cutOf(const Mp3Start& start, const Mp3Index& index) {
    Cut cut;
    const Mp3Tag tag = start.tag.value_or(Mp3Tag{});
    const bool exact = tag.delay > 0 || tag.padding > 0;
    if (exact) cut.delay = tag.delay + kDecoderDelay;
    cut.length = index.frames() * start.header.samples - cut.delay;
    // Where there are more frames than the tag counts, something was joined to the sound, whose
    // padding then is in the middle and does no harm.
    const std::int64_t frames = tag.frames > 0 ? tag.frames : index.frames();
    if (exact && index.frames() <= frames)
        cut.most = frames * start.header.samples - tag.delay - tag.padding;
    cut.length = std::min(cut.length, cut.most);
    cut.splits = index.unbroken() && cut.length >= kWorthSplitting;
    return cut;
}

}  // namespace

// A decoder that begins in the middle gives the same bits as one that came there from the
// beginning, when the synthesis window of both stands at the same place: it goes round in 16 steps
// of 32 samples. A frame has 18 or 36 steps, so they agree at every eighth frame, if each frame
// took its steps. One whose bits begin in a frame that the decoder has not seen may take none; that
// is what the lead-in is for.
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
