#include "segmentation/likely_slips.h"

#include <optional>

#include "segmentation/reading_pace.h"
#include "segmentation/slip_alignment.h"

namespace tarnwick::segmentation {

namespace {

constexpr int kPasses = 2;  // that estimate the pace; a third one aligns
// The probability below which nothing is said. With equal counts, nothing proves that there is a
// slip at all.
constexpr double kLeastSure = 0.5;
constexpr double kLeastSureOfEqual = 0.8;
constexpr std::size_t kLeastRows = 3;
// Of the alignment over none, in log-likelihood per stretch; below, script and recording do not
// fit. A script whose prompts are all alike explains nothing, but its slips still show.
constexpr double kLeastAdvantage = -0.2;
constexpr double kMostSlips = 0.25;  // of the rows; a session with more has another trouble

using Loads = std::vector<double>;

SlipAlignment aligned(const Loads& loads, const SlipQuestion& question, const ReadingPace& pace) {
    return SlipAlignment(loads, question.lengths, question.shortestPauseMs, pace);
}

// The pace that the rows suggest which `alignment` matches.
ReadingPace paceOf(const std::vector<Step>& steps, const Loads& loads,
                   const std::vector<double>& lengths, const ReadingPace& before) {
    std::vector<ReadRow> rows;
    for (const Step& step : steps)
        if (step.move == Move::Match)
            rows.emplace_back(loads[static_cast<std::size_t>(step.rows)],
                              lengths[static_cast<std::size_t>(step.stretches)]);
    return fittedPace(rows, before);
}

ReadingPace paceBy(const Loads& loads, const SlipQuestion& question) {
    ReadingPace pace = firstPace(loads, question.lengths);
    for (int pass = 0; pass < kPasses; ++pass)
        pace = paceOf(aligned(loads, question, pace).best(), loads, question.lengths, pace);
    return pace;
}

std::optional<LikelySlip::Kind> slipOf(Move move) {
    switch (move) {
        case Move::Split:
            return LikelySlip::Split;
        case Move::Merged:
            return LikelySlip::Merged;
        case Move::Extra:
            return LikelySlip::Extra;
        case Move::Missing:
            return LikelySlip::Missing;
        case Move::Match:
            break;
    }
    return std::nullopt;
}

double shareOfFirst(const Loads& loads, std::size_t row, const ReadingPace& pace) {
    const double first = pace.projectedMs(loads[row]);
    return first / (first + pace.projectedMs(loads[row + 1]));
}

}  // namespace

std::vector<LikelySlip> likelySlips(const SlipQuestion& question) {
    const std::size_t rows = question.words.size();
    if (rows < kLeastRows || question.lengths.size() < kLeastRows) return {};
    const ReadingPace byWords = paceBy(question.words, question);
    const ReadingPace byLetters = paceBy(question.letters, question);
    const bool lettersCount = byLetters.spread < byWords.spread;
    const Loads& loads = lettersCount ? question.letters : question.words;
    const ReadingPace& pace = lettersCount ? byLetters : byWords;
    const SlipAlignment alignment = aligned(loads, question, pace);
    if (alignment.advantage() < kLeastAdvantage) return {};
    const std::vector<Place> places = alignment.places(alignment.best());
    if (static_cast<double>(places.size()) > kMostSlips * static_cast<double>(rows)) return {};
    const double least = rows == question.lengths.size() ? kLeastSureOfEqual : kLeastSure;
    std::vector<LikelySlip> slips;
    for (const auto& [step, probability] : places)
        if (probability >= least)
            slips.push_back({*slipOf(step.move), step.rows + 1, step.stretches + 1,
                             step.move == Move::Merged
                                 ? shareOfFirst(loads, static_cast<std::size_t>(step.rows), pace)
                                 : 0.0});
    return slips;
}

}  // namespace tarnwick::segmentation
