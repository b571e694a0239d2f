#include "sound/reading/mp3_lead_in.h"

#include <algorithm>
#include <span>

#include "sound/reading/mp3_header.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

Mp3LeadIn leadIn(const SourceFile& file, Mp3Index::Entry from) {
    // The bits of a frame may begin in earlier frames. The width of the field limits how far back.
    Mp3LeadIn lead{from.frame, from.frame, from.byte, {}};
    int reservoir = 0;  // bytes of the frames so far that later frames may use
    for (bool full = false; !full; ++lead.settled) {
        const std::int64_t at = lead.begin + static_cast<std::int64_t>(lead.bytes.size());
        const auto header = Mp3Header::at(file, at);
        if (!header) throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
        const int most = (1 << header->backBits) - 1;
        full = reservoir >= most;
        const std::size_t start = lead.bytes.size();
        lead.bytes.resize(start + static_cast<std::size_t>(header->bytes));
        // Every frame is longer than its side information.
        const std::span<std::uint8_t> frame = std::span(lead.bytes).subspan(start);
        file.read(at, frame);
        const auto side = frame.subspan(static_cast<std::size_t>(header->sideAt),
                                        static_cast<std::size_t>(header->sideBytes));
        const int field = side[0] << 8 | side[1];
        if (field >> (16 - header->backBits) > reservoir) {
            // Zeroed side information makes the frame silent: it has no coefficients. Its field is
            // set to what is available, so that later frames can still use those bytes.
            std::fill(side.begin(), side.end(), std::uint8_t{0});
            const int back = reservoir << (16 - header->backBits);
            side[0] = static_cast<std::uint8_t>(back >> 8);
            side[1] = static_cast<std::uint8_t>(back);
        }
        reservoir = std::min(most, reservoir + header->bytes - header->sideAt - header->sideBytes);
    }
    ++lead.settled;  // each frame overlaps the one before
    return lead;
}

}  // namespace tarnwick::sound
