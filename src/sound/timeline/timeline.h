#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "sound/reading/source.h"
#include "sound/samples/frame_reader.h"

namespace tarnwick::sound {

// Extremes of one channel over a stretch, in parts of full scale.
struct PeakRange {
    float minimum = 0.0f;
    float maximum = 0.0f;
};

// A stretch of a timeline: frames of the source with a gain, or silence.
struct Piece {
    static constexpr std::int64_t kSilence = -1;

    std::int64_t at{};               // first frame on the timeline
    std::int64_t count{};            // frames, at least 1
    std::int64_t source = kSilence;  // first frame of the source
    double gain = 1.0;

    bool silent() const { return source == kSilence; }
};

struct PieceNode;

// A sound with its edits: stretches of a source and silences in order. An immutable value: an edit
// returns a new one that shares most of its structure with the old, so undo means keeping the old
// value. Copying is cheap, and the cost of an edit does not depend on the length. Any thread.
class Timeline : public FrameReader {
  public:
    // Enough to bring the faintest 32-bit sample to full scale, while products of very many gains
    // stay finite.
    static constexpr double kMaximumGain = 1e10;

    explicit Timeline(std::shared_ptr<const Source> source);

    AudioFormat format() const override { return source_->format(); }
    std::int64_t frames() const override;
    void read(std::int64_t first, std::int64_t count, double* interleaved) const override;
    bool readStored(std::int64_t first, std::int64_t count, Coding coding,
                    std::uint8_t* bytes) const override;

    // Edits; stretches are [first, end). Throw SoundError(BadRange) for a position outside the
    // sound, a negative count, or a gain that is NaN or beyond the maximum.
    Timeline inserted(std::int64_t at, std::int64_t count) const;  // silence
    Timeline removed(std::int64_t first, std::int64_t end) const;
    Timeline scaled(std::int64_t first, std::int64_t end, double gain) const;

    // The pieces that make up [first, end), clipped to it, in order.
    std::vector<Piece> pieces(std::int64_t first, std::int64_t end) const;

    // Divides [beginFrame, endFrame) evenly into out.size() columns and fills each with the
    // channel's extremes: from the peaks if columns are wide, else from the samples. Columns
    // outside the sound are 0. Returns false if there is no such channel or stretch, or the samples
    // cannot be read.
    bool columns(int channel, double beginFrame, double endFrame, std::span<PeakRange> out) const;

    const std::shared_ptr<const Source>& source() const { return source_; }

  private:
    using Tree = std::shared_ptr<const PieceNode>;

    Timeline(std::shared_ptr<const Source> source, Tree tree);

    std::shared_ptr<const Source> source_;
    Tree tree_;
};

}  // namespace tarnwick::sound
