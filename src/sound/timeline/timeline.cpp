#include "sound/timeline/timeline.h"

#include <algorithm>
#include <cmath>

#include "sound/samples/sample_coding.h"
#include "sound/samples/sound_error.h"
#include "sound/timeline/piece_tree.h"

namespace tarnwick::sound {

namespace {

// More than any recording, and small enough that sums of frames cannot overflow.
constexpr std::int64_t kMaximumFrames = std::int64_t{1} << 48;

[[noreturn]] void badRange() {
    throw SoundError(SoundFailure::BadRange, "a stretch outside the sound");
}

void checkRange(std::int64_t first, std::int64_t end, std::int64_t frames) {
    if (first < 0 || first > end || end > frames) badRange();
}

void checkStretch(std::int64_t first, std::int64_t count, std::int64_t frames) {
    if (count < 0 || first < 0 || first > frames - count) badRange();
}

}  // namespace

Timeline::Timeline(std::shared_ptr<const Source> source)
    : source_(std::move(source)), tree_(sourcePiece(0, source_->frames())) {}

Timeline::Timeline(std::shared_ptr<const Source> source, Tree tree)
    : source_(std::move(source)), tree_(std::move(tree)) {}

std::int64_t Timeline::frames() const { return totalOf(tree_); }

void Timeline::read(std::int64_t first, std::int64_t count, double* interleaved) const {
    checkStretch(first, count, frames());
    const int channels = format().channels;
    visitPieces(tree_.get(), first, first + count, [&](const Piece& piece) {
        double* const begin = interleaved + (piece.at - first) * channels;
        double* const end = begin + piece.count * channels;
        if (piece.silent()) {
            std::fill(begin, end, 0.0);
            return;
        }
        source_->read(piece.source, piece.count, begin);
        if (piece.gain != 1.0)
            for (double* value = begin; value < end; ++value)
                *value *= piece.gain;
    });
}

bool Timeline::readStored(std::int64_t first, std::int64_t count, Coding coding,
                          std::uint8_t* bytes) const {
    checkStretch(first, count, frames());
    const std::optional<std::uint8_t> silence = silentByte(coding);
    if (!silence) return false;
    const std::int64_t frameBytes = std::int64_t{bytesOf(coding)} * format().channels;
    bool copied = true;
    visitPieces(tree_.get(), first, first + count, [&](const Piece& piece) {
        std::uint8_t* const begin = bytes + (piece.at - first) * frameBytes;
        if (!copied) return;
        if (piece.silent())
            std::fill_n(begin, piece.count * frameBytes, *silence);
        else
            copied =
                piece.gain == 1.0 && source_->readStored(piece.source, piece.count, coding, begin);
    });
    return copied;
}

Timeline Timeline::inserted(std::int64_t at, std::int64_t count) const {
    if (at < 0 || at > frames() || count < 0 || count > kMaximumFrames - frames()) badRange();
    const auto [before, from] = split(tree_, at);
    return {source_, joined(joined(before, silentPiece(count)), from)};
}

Timeline Timeline::removed(std::int64_t first, std::int64_t end) const {
    checkRange(first, end, frames());
    return {source_, joined(split(tree_, first).first, split(tree_, end).second)};
}

Timeline Timeline::scaled(std::int64_t first, std::int64_t end, double gain) const {
    checkRange(first, end, frames());
    if (!(std::abs(gain) <= kMaximumGain)) badRange();
    const auto [before, from] = split(tree_, first);
    const auto [inside, behind] = split(from, end - first);
    // A gain of 0 becomes silence: it is exact, and scans can skip it.
    const PieceTree changed = gain == 0.0 ? silentPiece(end - first) : withGain(inside, gain);
    return {source_, joined(joined(before, changed), behind)};
}

std::vector<Piece> Timeline::pieces(std::int64_t first, std::int64_t end) const {
    checkRange(first, end, frames());
    std::vector<Piece> found;
    visitPieces(tree_.get(), first, end, [&](const Piece& piece) { found.push_back(piece); });
    return found;
}

}  // namespace tarnwick::sound
