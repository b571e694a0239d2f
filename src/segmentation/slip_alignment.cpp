#include "segmentation/slip_alignment.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <limits>

namespace tarnwick::segmentation {

namespace {

constexpr double kNever = -std::numeric_limits<double>::infinity();
constexpr double kHalfLogTwoPi = 0.918938533204673;

// How often the moves occur, per row, by move.
const std::array<double, kMoves> kLogPrior{std::log(0.985), std::log(0.004), std::log(0.0035),
                                           std::log(0.005), std::log(0.0015)};

// A row that is far from its projection for a reason of its own.
constexpr double kOddRows = 0.01;
constexpr double kOddSpread = 3.0;  // times the spread
const double kLogEvenRows = std::log(1 - kOddRows);
const double kLogOddRows = std::log(kOddRows / kOddSpread);

// A cough or a false start: a short stretch of any length.
constexpr double kShortMs = 420.0;
constexpr double kShortSpread = 0.6;
constexpr double kShortShare = 0.55;  // the others are second readings
// A second reading, or the break of a first one, in parts of the full reading.
constexpr double kLeastReading = 0.28;
constexpr double kMostReading = 1.1;

// A pause that was too short to separate two rows, in parts of the shortest that does.
constexpr double kMeanShortPause = 0.6;
constexpr double kShortPauseSpread = 0.2;

// A way that is so much worse, in log-likelihood, than the best one to the same row is given up.
constexpr double kBeam = 30.0;
constexpr int kBand = 10;              // stretches beside the diagonal
constexpr int kSearch = 3;             // rows around a place in which a better one is looked for
constexpr double kOwnShare = 0.25;     // how much the place itself counts beside its surroundings
constexpr double kNegligible = -60.0;  // logarithm of a factor that changes no sum

double normalDensity(double value, double mean, double spread) {
    const double deviation = (value - mean) / spread;
    return std::exp(-kHalfLogTwoPi - deviation * deviation / 2) / spread;
}

// Density of a stretch that repeats a part of `full`, times its length.
double repeatDensity(double length, double full) {
    const double part = length / full;
    return part > kLeastReading && part < kMostReading ? part / (kMostReading - kLeastReading)
                                                       : 0.0;
}

int surplusOf(Move move) { return sizeOf(move).stretches - sizeOf(move).rows; }

}  // namespace

SlipAlignment::Projection::Projection(double lengthMs, double spread)
    : mean(std::log(lengthMs)), precision(1 / spread), peak(-kHalfLogTwoPi - std::log(spread)) {}

double SlipAlignment::Projection::fit(double logLength) const {
    const double deviation = (logLength - mean) * precision;
    const double square = deviation * deviation / 2;
    return peak + std::max(kLogEvenRows - square, kLogOddRows - square / (kOddSpread * kOddSpread));
}

SlipAlignment::SlipAlignment(const std::vector<double>& loads, const std::vector<double>& lengths,
                             double shortestPauseMs, const ReadingPace& pace)
    : rows_(static_cast<int>(loads.size())) {
    projectRows(loads, pace, shortestPauseMs);
    measureStretches(lengths);
    lowest_ = std::min(stretches() - rows(), 0) - kBand;
    highest_ = std::max(stretches() - rows(), 0) + kBand;
    findBest();
}

void SlipAlignment::projectRows(const std::vector<double>& loads, const ReadingPace& pace,
                                double shortestPauseMs) {
    for (std::size_t row = 0; row < loads.size(); ++row) {
        const double one = pace.projectedMs(loads[row]);
        projected_.emplace_back(one, pace.spread);
        if (row + 1 == loads.size()) break;
        const double other = pace.projectedMs(loads[row + 1]);
        const double both = one + other + kMeanShortPause * shortestPauseMs;
        const double deviation =
            std::hypot(one * pace.spread, other * pace.spread, kShortPauseSpread * shortestPauseMs);
        projectedPair_.emplace_back(both, deviation / both);
    }
}

void SlipAlignment::measureStretches(const std::vector<double>& lengths) {
    for (std::size_t at = 0; at < lengths.size(); ++at) {
        const double length = lengths[at];
        logLength_.push_back(std::log(length));
        double repeat = at > 0 ? repeatDensity(length, lengths[at - 1]) : 0.0;
        if (at + 1 < lengths.size()) {
            const double next = lengths[at + 1];
            const double part = length / (length + next);
            pair_.push_back(
                {std::log(length + next), std::log(6 * part * part * (1 - part) * (1 - part))});
            repeat = std::max(repeat, repeatDensity(length, next));
        }
        const double brief = normalDensity(logLength_.back(), std::log(kShortMs), kShortSpread);
        logExtra_.push_back(std::log(kShortShare * brief + (1 - kShortShare) * repeat));
    }
}

bool SlipAlignment::leads(Move move, int row, int stretch) const {
    const int nextRow = row + sizeOf(move).rows, next = stretch + sizeOf(move).stretches;
    return nextRow <= rows() && next >= firstIn(nextRow) && next <= lastIn(nextRow);
}

double SlipAlignment::logWeight(Move move, int row, int stretch) const {
    const auto r = static_cast<std::size_t>(row), s = static_cast<std::size_t>(stretch);
    const double prior = kLogPrior[static_cast<std::size_t>(move)];
    switch (move) {
        case Move::Match:
            return prior + projected_[r].fit(logLength_[s]);
        case Move::Split:
            return prior + projected_[r].fit(pair_[s].logLength) + pair_[s].logParts;
        case Move::Merged:
            return prior + projectedPair_[r].fit(logLength_[s]);
        case Move::Extra:
            return prior + logExtra_[s];
        case Move::Missing:
            break;
    }
    return prior;
}

template <class Use>
void SlipAlignment::eachMove(int row, int stretch, Use use) const {
    for (int index = 0; index < kMoves; ++index) {
        const Move move = static_cast<Move>(index);
        if (leads(move, row, stretch))
            use(move, cell(row + sizeOf(move).rows, stretch + sizeOf(move).stretches));
    }
}

void SlipAlignment::findBest() {
    const std::size_t cells = cell(rows(), stretches()) + 1;
    weights_.resize(cells);
    reached_.assign(cells, kNever);
    arrival_.resize(cells);
    reached_[cell(0, 0)] = 0.0;
    for (int row = 0; row <= rows(); ++row) {
        const auto first = reached_.begin() + static_cast<std::ptrdiff_t>(cell(row, firstIn(row)));
        const auto last = reached_.begin() + static_cast<std::ptrdiff_t>(cell(row, lastIn(row)));
        // In the last row, the way to the end may lead over many extra stretches.
        const double least = row == rows() ? kNever : *std::max_element(first, last + 1) - kBeam;
        for (int stretch = firstIn(row); stretch <= lastIn(row); ++stretch) {
            const std::size_t here = cell(row, stretch);
            if (reached_[here] < least) reached_[here] = kNever;
            if (reached_[here] != kNever) goOn(row, stretch);
        }
    }
}

void SlipAlignment::goOn(int row, int stretch) {
    const std::size_t here = cell(row, stretch);
    eachMove(row, stretch, [&](Move move, std::size_t next) {
        const double weight = logWeight(move, row, stretch);
        weights_[here][static_cast<std::size_t>(move)] = weight;
        if (reached_[here] + weight <= reached_[next]) return;
        reached_[next] = reached_[here] + weight;
        arrival_[next] = move;
    });
}

std::vector<Step> SlipAlignment::best() const {
    std::vector<Step> steps;
    for (int row = rows(), stretch = stretches(); row > 0 || stretch > 0;) {
        const Move move = arrival_[cell(row, stretch)];
        row -= sizeOf(move).rows;
        stretch -= sizeOf(move).stretches;
        steps.push_back({move, row, stretch});
    }
    std::ranges::reverse(steps);
    return steps;
}

double SlipAlignment::advantage() const {
    const Deviation all = deviationOf(logLength_);
    double without = 0.0;
    for (const double length : logLength_)
        without += Projection(std::exp(all.median), all.spread).fit(length);
    return (reached_[cell(rows(), stretches())] - without) / stretches();
}

// Forward and backward sums, relative to the weight of the best way to each cell. This keeps them
// within the range of a double, as no factor is above 1.
std::vector<SlipAlignment::RowShares> SlipAlignment::shares() const {
    std::vector<Weights> factors(weights_.size());
    std::vector<double> forward(weights_.size(), 0.0), backward(weights_.size(), 0.0);
    forward[cell(0, 0)] = 1.0;
    for (int row = 0; row <= rows(); ++row)
        for (int stretch = firstIn(row); stretch <= lastIn(row); ++stretch) {
            const std::size_t here = cell(row, stretch);
            if (reached_[here] == kNever) continue;
            eachMove(row, stretch, [&](Move move, std::size_t next) {
                if (reached_[next] == kNever) return;
                const auto index = static_cast<std::size_t>(move);
                const double log = reached_[here] + weights_[here][index] - reached_[next];
                factors[here][index] = log > kNegligible ? std::exp(log) : 0.0;
                forward[next] += forward[here] * factors[here][index];
            });
        }
    const std::size_t end = cell(rows(), stretches());
    std::vector<RowShares> shares(static_cast<std::size_t>(rows()) + 1);
    backward[end] = 1.0;
    for (int row = rows(); row >= 0; --row)
        for (int stretch = lastIn(row); stretch >= firstIn(row); --stretch) {
            const std::size_t here = cell(row, stretch);
            if (forward[here] == 0.0) continue;
            eachMove(row, stretch, [&](Move move, std::size_t next) {
                const auto index = static_cast<std::size_t>(move);
                const double onwards = factors[here][index] * backward[next];
                backward[here] += onwards;
                const double share = forward[here] * onwards / forward[end];
                Share& sum = shares[static_cast<std::size_t>(row)][index];
                sum.all += share;
                if (share > sum.highest) {
                    sum.highest = share;
                    sum.stretch = stretch;
                }
            });
        }
    return shares;
}

Place SlipAlignment::placed(const Step& step, Rows search,
                            const std::vector<RowShares>& shares) const {
    const auto shareOf = [&](int row) {
        double sum = 0.0;
        if (row >= search.first && row <= search.last)
            for (int move = 0; move < kMoves; ++move)
                if (surplusOf(static_cast<Move>(move)) == surplusOf(step.move))
                    sum += shares[std::size_t(row)][std::size_t(move)].all;
        return sum;
    };
    Place best{step, 0.0};
    double most = 0.0;
    for (int row = search.first; row <= search.last; ++row) {
        const double nearby = shareOf(row - 1) + shareOf(row) + shareOf(row + 1);
        for (int index = 0; index < kMoves; ++index) {
            const Share& own = shares[std::size_t(row)][std::size_t(index)];
            const Move move = static_cast<Move>(index);
            const double score = nearby + kOwnShare * own.all;
            if (surplusOf(move) != surplusOf(step.move) || score <= most) continue;
            most = score;
            best = {{move, row, own.stretch}, std::min(nearby, 1.0)};
        }
    }
    return best;
}

std::vector<Place> SlipAlignment::places(const std::vector<Step>& best) const {
    std::vector<Step> slips;
    std::ranges::copy_if(best, std::back_inserter(slips),
                         [](const Step& step) { return step.move != Move::Match; });
    const std::vector<RowShares> all = shares();
    std::vector<Place> places;
    for (std::size_t i = 0; i < slips.size(); ++i) {
        const int row = slips[i].rows;
        // Halfway to the neighbours, whose shares must not count for this one.
        Rows search{std::max(row - kSearch, 0), std::min(row + kSearch, rows())};
        if (i > 0) search.first = std::max(search.first, (slips[i - 1].rows + row) / 2 + 1);
        if (i + 1 < slips.size())
            search.last = std::min(search.last, (row + slips[i + 1].rows - 1) / 2);
        places.push_back(
            placed(slips[i], {std::min(search.first, row), std::max(search.last, row)}, all));
    }
    return places;
}

}  // namespace tarnwick::segmentation
