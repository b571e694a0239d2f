#pragma once

#include <cstdint>
#include <vector>

#include "sound/samples/quantiser.h"
#include "sound/writing/encoder.h"

namespace tarnwick::sound {

// Writes a file of uncompressed samples after a header.
class PcmEncoder : public Encoder {
  public:
    // Writes the header. Throws SoundError.
    PcmEncoder(const std::vector<unsigned char>& header, const SampleLayout& layout, int channels,
               AtomicFile& file);

    void write(const double* interleaved, std::int64_t frames) override;
    std::optional<Coding> storedCoding() const override;
    void writeStored(std::span<const std::uint8_t> bytes) override;
    void finish() override;

  private:
    AtomicFile& file_;
    SampleLayout layout_;
    int channels_;
    std::vector<unsigned char> bytes_;
};

}  // namespace tarnwick::sound
