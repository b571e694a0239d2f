#pragma once

#include <algorithm>
#include <array>
#include <vector>

#include "segmentation/reading_pace.h"

namespace tarnwick::segmentation {

// The moves of an alignment of rows with stretches of speech.
enum class Move { Match, Split, Merged, Extra, Missing };
inline constexpr int kMoves = 5;

struct MoveSize {
    int rows;
    int stretches;
};
inline constexpr std::array<MoveSize, kMoves> kMoveSizes{{{1, 1}, {1, 2}, {2, 1}, {0, 1}, {1, 0}}};
inline MoveSize sizeOf(Move move) { return kMoveSizes[static_cast<std::size_t>(move)]; }

// A move of an alignment: the number of rows and stretches before it.
struct Step {
    Move move;
    int rows;
    int stretches;
};

// A step and the probability that a step with the same effect lies there or one row beside it.
struct Place {
    Step step;
    double probability;
};

// Aligns the rows of a script with stretches of speech, given the pace of the talent. The weight of
// a move is its probability times the density of the lengths that it explains.
class SlipAlignment {
  public:
    // Loads (words or letters) and lengths (ms) are above 0.
    SlipAlignment(const std::vector<double>& loads, const std::vector<double>& lengths,
                  double shortestPauseMs, const ReadingPace& pace);

    // The most plausible moves from begin to end.
    std::vector<Step> best() const;

    // How much better these moves explain the lengths than no script at all does, for which they
    // are drawn from one normal distribution of their logarithms: a difference of log-likelihoods,
    // per stretch.
    double advantage() const;

    // The moves of `best` other than matches, each where a move with the same effect (one stretch
    // more, or one row more) is most probable within a few rows of it.
    std::vector<Place> places(const std::vector<Step>& best) const;

  private:
    using Weights = std::array<double, kMoves>;
    // A normal distribution of the logarithm of a length.
    struct Projection {
        Projection(double lengthMs, double spread);
        double fit(double logLength) const;  // logarithm of the density

        double mean;
        double precision;  // 1 / spread
        double peak;       // of the density
    };
    struct Pair {
        double logLength;
        double logParts;  // density of the point at which a split divides it
    };

    int rows() const { return rows_; }
    int stretches() const { return static_cast<int>(logLength_.size()); }
    int firstIn(int row) const { return std::max(row + lowest_, 0); }
    int lastIn(int row) const { return std::min(row + highest_, stretches()); }
    std::size_t cell(int row, int stretch) const {
        return static_cast<std::size_t>(row * (highest_ - lowest_ + 1) + stretch - row - lowest_);
    }
    // Of one row and move: the probability, and where it is highest.
    struct Share {
        double all = 0.0;
        double highest = 0.0;
        int stretch = 0;
    };
    using RowShares = std::array<Share, kMoves>;

    struct Rows {
        int first;
        int last;
    };

    bool leads(Move move, int row, int stretch) const;
    void projectRows(const std::vector<double>& loads, const ReadingPace& pace,
                     double shortestPauseMs);
    void measureStretches(const std::vector<double>& lengths);
    double logWeight(Move move, int row, int stretch) const;
    void findBest();
    void goOn(int row, int stretch);
    std::vector<RowShares> shares() const;
    Place placed(const Step& step, Rows search, const std::vector<RowShares>& shares) const;
    template <class Use>
    void eachMove(int row, int stretch, Use use) const;

    int rows_;
    int lowest_, highest_;  // stretches less rows, within the band
    std::vector<Projection> projected_, projectedPair_;
    std::vector<double> logLength_, logExtra_;
    std::vector<Pair> pair_;
    // By cell, which is a number of rows and stretches.
    std::vector<Weights> weights_;  // logarithms, of the moves that begin there
    std::vector<double> reached_;   // logarithm of the weight of the best way there
    std::vector<Move> arrival_;     // last move of that way
};

}  // namespace tarnwick::segmentation
