#include "sound/reading/block_decoder.h"

#include <algorithm>
#include <cstring>

#include "sound/reading/gsm_stream.h"
#include "sound/samples/sound_error.h"

namespace tarnwick::sound {

namespace {

// Decodes ADPCM blocks, starting at any block.
class AdpcmStream : public SampleStream {
  public:
    // `first` must be the first frame of a block.
    AdpcmStream(const SourceFile& file, const StoredSound& sound, const BlockLayout& layout,
                std::int64_t first)
        : file_(file),
          layout_(layout),
          channels_(sound.format.channels),
          at_(sound.offset +
              first / layout.framesIn(layout.blockBytes, channels_) * layout.blockBytes),
          end_(sound.offset + layout.bytes),
          left_(sound.frames - first) {}

    std::int64_t decode(std::int64_t frames, std::uint8_t* bytes) override {
        const std::int64_t wanted = std::min(frames, left_);
        const std::int64_t frameBytes = std::int64_t{sizeof(std::int16_t)} * channels_;
        for (std::int64_t done = 0; done < wanted;) {
            if (given_ == held_ && !decodeMore()) return done;
            const std::int64_t some = std::min(wanted - done, held_ - given_);
            std::memcpy(bytes + done * frameBytes, samples_.data() + given_ * channels_,
                        static_cast<std::size_t>(some * frameBytes));
            given_ += some;
            left_ -= some;
            done += some;
        }
        return wanted;
    }

  private:
    // Decodes the next blocks; returns false at the end.
    bool decodeMore() {
        constexpr std::int64_t kBlocks = 32;
        const std::int64_t size = layout_.blockBytes;
        bytes_.resize(static_cast<std::size_t>(std::min(kBlocks * size, end_ - at_)));
        file_.read(at_, bytes_);
        at_ += static_cast<std::int64_t>(bytes_.size());
        held_ = layout_.framesIn(static_cast<std::int64_t>(bytes_.size()), channels_);
        given_ = 0;
        samples_.resize(static_cast<std::size_t>(held_ * channels_));
        std::int16_t* out = samples_.data();
        for (std::span<const std::uint8_t> rest = bytes_; !rest.empty();) {
            const auto block = rest.first(std::min(static_cast<std::size_t>(size), rest.size()));
            rest = rest.subspan(block.size());
            if (layout_.codec == BlockCodec::ImaAdpcm)
                decodeImaBlock(block, channels_, out);
            else
                decodeMicrosoftBlock(block, channels_, layout_.weights, out);
            out += layout_.framesIn(static_cast<std::int64_t>(block.size()), channels_) * channels_;
        }
        return held_ > 0;
    }

    const SourceFile& file_;
    const BlockLayout& layout_;
    int channels_;
    std::int64_t at_;   // byte of the next block
    std::int64_t end_;  // byte after the last
    std::int64_t left_;
    std::vector<std::uint8_t> bytes_;
    std::vector<std::int16_t> samples_;  // of the blocks decoded last
    std::int64_t held_ = 0;              // frames in samples_
    std::int64_t given_ = 0;
};

}  // namespace

std::int64_t BlockLayout::framesIn(std::int64_t size, int channels) const {
    const auto inBlock = [&](std::int64_t part) -> std::int64_t {
        switch (codec) {
            case BlockCodec::ImaAdpcm:
                return imaFrames(part, channels);
            case BlockCodec::MicrosoftAdpcm:
                return microsoftFrames(part, channels);
            case BlockCodec::Gsm610:
                break;
        }
        return part / kGsmBlockBytes * kGsmBlockFrames;
    };
    return size / blockBytes * inBlock(blockBytes) + inBlock(size % blockBytes);
}

bool isUsable(const BlockLayout& layout, int channels) {
    if (channels < 1 || channels > 2 || layout.blockBytes < 1) return false;
    if (layout.codec == BlockCodec::Gsm610)
        return channels == 1 && layout.blockBytes == kGsmBlockBytes;
    return layout.framesIn(layout.blockBytes, channels) > 0;
}

DecodedSound decodeBlocks(const SourceFile& file, const StoredSound& sound,
                          const BlockLayout& layout, const Progress& progress) {
    const bool gsm = layout.codec == BlockCodec::Gsm610;
    const std::int64_t inBlock = layout.framesIn(layout.blockBytes, sound.format.channels);
    const bool split = !gsm && sound.frames >= kWorthSplitting;
    const std::int64_t joint = split ? sound.frames / 2 / inBlock * inBlock : 0;
    const auto streamFrom = [&](std::int64_t first) -> std::unique_ptr<SampleStream> {
        if (gsm) return std::make_unique<GsmStream>(file, sound, layout);
        return std::make_unique<AdpcmStream>(file, sound, layout, first);
    };
    return decodeToScratch(sound, streamFrom, joint, progress);
}

}  // namespace tarnwick::sound
