#include "sound/timeline/piece_tree.h"

#include <cmath>
#include <random>

namespace tarnwick::sound {

namespace {

// Pseudorandom numbers. On a thread the same edits give the same trees.
std::uint64_t nextPriority() {
    thread_local std::mt19937_64 priorities;
    return priorities();
}

// A copy of a node with other subtrees, to which its pending gain has already been applied.
PieceTree withChildren(const PieceNode& node, PieceTree left, PieceTree right) {
    auto copy = std::make_shared<PieceNode>(node);
    copy->below = 1.0;
    copy->total = totalOf(left) + node.count + totalOf(right);
    copy->left = std::move(left);
    copy->right = std::move(right);
    return copy;
}

// The product of two gains, limited so that no number of them underflows to 0 or overflows.
double product(double first, double second) {
    constexpr double kSmallest = 1e-30;
    constexpr double kLargest = 1e30;
    const double exact = first * second;
    return std::copysign(std::clamp(std::abs(exact), kSmallest, kLargest), exact);
}

PieceTree newPiece(std::int64_t source, std::int64_t count, double gain) {
    auto node = std::make_shared<PieceNode>();
    node->source = source;
    node->count = node->total = count;
    node->gain = gain;
    node->priority = nextPriority();
    return node;
}

}  // namespace

PieceTree sourcePiece(std::int64_t source, std::int64_t count) {
    return newPiece(source, count, 1.0);
}

PieceTree silentPiece(std::int64_t count) {
    return count > 0 ? newPiece(Piece::kSilence, count, 1.0) : nullptr;
}

PieceTree withGain(const PieceTree& tree, double gain) {
    if (!tree || gain == 1.0) return tree;
    auto copy = std::make_shared<PieceNode>(*tree);
    if (copy->source != Piece::kSilence) copy->gain = product(copy->gain, gain);
    copy->below = product(copy->below, gain);
    return copy;
}

std::pair<PieceTree, PieceTree> split(const PieceTree& tree, std::int64_t at) {
    if (at <= 0) return {nullptr, tree};
    if (at >= totalOf(tree)) return {tree, nullptr};
    const PieceTree left = withGain(tree->left, tree->below);
    const PieceTree right = withGain(tree->right, tree->below);
    const std::int64_t inside = at - totalOf(left);
    if (inside <= 0) {
        auto [before, from] = split(left, at);
        return {before, withChildren(*tree, from, right)};
    }
    if (inside >= tree->count) {
        auto [before, from] = split(right, inside - tree->count);
        return {withChildren(*tree, left, before), from};
    }
    // Both halves get new priorities. With the old one, the pieces of a recording that is cut again
    // and again would form a chain.
    const bool silent = tree->source == Piece::kSilence;
    return {joined(left, newPiece(tree->source, inside, tree->gain)),
            joined(newPiece(silent ? Piece::kSilence : tree->source + inside, tree->count - inside,
                            tree->gain),
                   right)};
}

PieceTree joined(const PieceTree& left, const PieceTree& right) {
    if (!left) return right;
    if (!right) return left;
    if (left->priority >= right->priority)
        return withChildren(*left, withGain(left->left, left->below),
                            joined(withGain(left->right, left->below), right));
    return withChildren(*right, joined(left, withGain(right->left, right->below)),
                        withGain(right->right, right->below));
}

}  // namespace tarnwick::sound
