#include "sound/reading/mp3_lead_in.h"

#include <algorithm>
#include <span>

#include "sound/reading/mp3_header.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

Mp3LeadIn leadIn(const SourceFile& file, Mp3Index::Entry from) {
    // A frame's bits may begin in frames before it. How far at most, the field's width says.
    Mp3LeadIn lead{from.frame, from.frame, from.byte, {}};
    int reservoir = 0;  // bytes that the frames so far have left for later ones
    for (bool full = false; !full; ++lead.settled) {
        const std::int64_t at = lead.begin + static_cast<std::int64_t>(lead.bytes.size());
        const auto header = Mp3Header::at(file, at);
        if (!header || header->bytes <= header->sideAt + header->sideBytes)
            throw SoundError(SoundFailure::Damaged, "the sound cannot be decoded");
        const int most = (1 << header->backBits) - 1;
        full = reservoir >= most;
        const std::size_t start = lead.bytes.size();
        lead.bytes.resize(start + static_cast<std::size_t>(header->bytes));
        const std::span<std::uint8_t> frame = std::span(lead.bytes).subspan(start);
        file.read(at, frame);
        const auto side = frame.subspan(static_cast<std::size_t>(header->sideAt),
                                        static_cast<std::size_t>(header->sideBytes));
        const int field = side[0] << 8 | side[1];
        if (field >> (16 - header->backBits) > reservoir) {
            // Such a frame without any coefficients is silent, and hands on what there is.
            std::fill(side.begin(), side.end(), std::uint8_t{0});
            const int back = reservoir << (16 - header->backBits);
            side[0] = static_cast<std::uint8_t>(back >> 8);
            side[1] = static_cast<std::uint8_t>(back);
        }
        reservoir = std::min(most, reservoir + header->bytes - header->sideAt - header->sideBytes);
    }
    ++lead.settled;  // one more for the overlap of the frames before
    return lead;
}

}  // namespace tarnwick::sound
