#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <utility>

#include "sound/timeline/timeline.h"

namespace tarnwick::sound {

// A balanced tree of pieces in order: a treap with immutable nodes, so that trees share common
// subtrees. A gain over a whole subtree is stored at its root and pushed down when the subtree is
// split or joined. (Seidel and Aragon, "Randomized search trees", 1996.)
struct PieceNode {
    using Tree = std::shared_ptr<const PieceNode>;

    Tree left;
    Tree right;
    std::int64_t source = Piece::kSilence;  // first frame of the source
    std::int64_t count{};                   // frames of this piece
    std::int64_t total{};                   // frames of the whole subtree
    double gain = 1.0;                      // of this piece
    double below = 1.0;                     // pending gain of both subtrees
    std::uint64_t priority{};               // at least that of each child
};

using PieceTree = PieceNode::Tree;

inline std::int64_t totalOf(const PieceTree& tree) { return tree ? tree->total : 0; }

PieceTree sourcePiece(std::int64_t source, std::int64_t count);
PieceTree silentPiece(std::int64_t count);  // empty for 0 frames

// Splits the tree into the frames before `at` and those from `at` on. `at` is 0 to its total.
std::pair<PieceTree, PieceTree> split(const PieceTree& tree, std::int64_t at);
PieceTree joined(const PieceTree& left, const PieceTree& right);
PieceTree withGain(const PieceTree& tree, double gain);

// Calls visit(Piece) in order for the pieces in [first, end), clipped to it. `at` is the frame at
// which the tree begins, `gain` the pending gain of the nodes above.
template <class Visit>
void visitPieces(const PieceNode* node, std::int64_t first, std::int64_t end, const Visit& visit,
                 std::int64_t at = 0, double gain = 1.0) {
    if (!node || at >= end || at + node->total <= first) return;
    visitPieces(node->left.get(), first, end, visit, at, gain * node->below);
    const std::int64_t begin = at + totalOf(node->left);
    const std::int64_t from = std::max(begin, first);
    const std::int64_t to = std::min(begin + node->count, end);
    if (from < to) {
        Piece piece{from, to - from, Piece::kSilence, 1.0};
        if (node->source != Piece::kSilence) {
            piece.source = node->source + (from - begin);
            piece.gain = gain * node->gain;
        }
        visit(piece);
    }
    visitPieces(node->right.get(), first, end, visit, begin + node->count, gain * node->below);
}

}  // namespace tarnwick::sound
