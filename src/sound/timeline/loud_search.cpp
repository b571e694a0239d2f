#include "sound/timeline/loud_search.h"

#include <algorithm>

namespace tarnwick::sound {

LoudSearch::LoudSearch(const Timeline& timeline, double limit)
    : search_(*timeline.source(), limit), pieces_(timeline.pieces(0, timeline.frames())) {}

// Moves to the piece that holds `frame` and searches with its gain from then on.
const Piece& LoudSearch::moveTo(std::int64_t frame) {
    while (frame < pieces_[piece_].at)
        --piece_;
    while (frame >= pieces_[piece_].at + pieces_[piece_].count)
        ++piece_;
    const Piece& piece = pieces_[piece_];
    if (!piece.silent()) search_.setGain(piece.gain);
    return piece;
}

std::int64_t LoudSearch::firstLoud(std::int64_t first, std::int64_t end) {
    while (first < end) {
        const Piece& piece = moveTo(first);
        const std::int64_t to = std::min(end, piece.at + piece.count);
        if (!piece.silent()) {
            const std::int64_t shift = piece.at - piece.source;
            const std::int64_t found = search_.firstLoud(first - shift, to - shift);
            if (found >= 0) return found + shift;
        }
        first = to;
    }
    return -1;
}

std::int64_t LoudSearch::lastLoud(std::int64_t first, std::int64_t end) {
    while (first < end) {
        const Piece& piece = moveTo(end - 1);
        const std::int64_t from = std::max(first, piece.at);
        if (!piece.silent()) {
            const std::int64_t shift = piece.at - piece.source;
            const std::int64_t found = search_.lastLoud(from - shift, end - shift);
            if (found >= 0) return found + shift;
        }
        end = from;
    }
    return -1;
}

std::int64_t LoudSearch::quickLoud(std::int64_t first, std::int64_t end) {
    if (end - first < Peaks::kFinestFrames) return -1;
    const Piece& piece = moveTo(end - 1);
    if (piece.silent()) return -1;
    const std::int64_t shift = piece.at - piece.source;
    const std::int64_t found = search_.quickLoud(std::max(first, piece.at) - shift, end - shift);
    return found < 0 ? -1 : found + shift;
}

}  // namespace tarnwick::sound
