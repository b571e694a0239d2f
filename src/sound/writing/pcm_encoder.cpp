#include "sound/writing/pcm_encoder.h"

namespace tarnwick::sound {

PcmEncoder::PcmEncoder(const std::vector<unsigned char>& header, const SampleLayout& layout,
                       int channels, AtomicFile& file)
    : file_(file), layout_(layout), channels_(channels) {
    file_.write(header.data(), header.size());
}

void PcmEncoder::write(const double* interleaved, std::int64_t frames) {
    const auto values = static_cast<std::size_t>(frames * channels_);
    bytes_.resize(values * static_cast<std::size_t>(layout_.bytes()));
    quantise(interleaved, values, layout_, bytes_.data());
    file_.write(bytes_.data(), bytes_.size());
}

std::optional<Coding> PcmEncoder::storedCoding() const {
    if (layout_.floating || layout_.law != Companding::None) return {};
    const bool big = layout_.bigEndian;
    switch (layout_.bits) {
        case 8:
            return layout_.unsigned8 ? Coding::Unsigned8 : Coding::Signed8;
        case 16:
            return big ? Coding::Big16 : Coding::Little16;
        case 24:
            return big ? Coding::Big24 : Coding::Little24;
        default:
            return big ? Coding::Big32 : Coding::Little32;
    }
}

void PcmEncoder::writeStored(std::span<const std::uint8_t> bytes) {
    file_.write(bytes.data(), bytes.size());
}

void PcmEncoder::finish() {
    // The header has an even length, and the chunk must have one too.
    if (file_.size() % 2 != 0) file_.write("", 1);
}

}  // namespace tarnwick::sound
