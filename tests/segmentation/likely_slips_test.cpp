#include "segmentation/likely_slips.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <random>
#include <string>

using namespace tarnwick::segmentation;

namespace {

constexpr double kDuration = 1500.0;  // ms

// A script and the recording of a talent who reads 162 words a minute, each prompt with `spread`.
class Reading {
  public:
    Reading(unsigned seed, int rows, double spread) : random_(seed) {
        for (int row = 0; row < rows; ++row) {
            const double words = std::clamp(std::round(lognormal(2.2, 0.55)), 1.0, 40.0);
            asked.words.push_back(words);
            asked.letters.push_back(std::round(words * lognormal(1.55, 0.12)));
            asked.lengths.push_back(250 + words * 60000 / 162 * lognormal(0.0, spread));
        }
        asked.shortestPauseMs = kDuration;
    }

    // Each before those that come earlier in the script; rows count from 1.
    void split(int row, double part = 0.4) {
        const double whole = length(row);
        length(row) = whole * part;
        asked.lengths.insert(at(row) + 1, whole * (1 - part));
    }
    void merge(int row) {
        length(row) += 900 + length(row + 1);
        asked.lengths.erase(at(row + 1));
    }
    void cough(int row, double ms) { asked.lengths.insert(at(row), ms); }
    void miss(int row) { asked.lengths.erase(at(row)); }
    // A script without spaces: one word for each row, and the letters follow the time.
    void takeSpaces() {
        std::ranges::transform(asked.words, asked.letters.begin(),
                               [](double words) { return std::round(words * 4.9); });
        asked.words.assign(asked.words.size(), 1.0);
    }

    SlipQuestion asked;

  private:
    double lognormal(double mean, double spread) {
        return std::lognormal_distribution<>(mean, spread)(random_);
    }
    std::vector<double>::iterator at(int row) { return asked.lengths.begin() + row - 1; }
    double& length(int row) { return *at(row); }

    std::mt19937 random_;
};

std::string text(const std::vector<LikelySlip>& slips) {
    std::string text;
    for (const LikelySlip& slip : slips)
        text += std::string(text.empty() ? "" : ", ") +
                std::array{"split ", "merged ", "extra ", "missing "}[slip.kind] +
                std::to_string(slip.row) + "/" + std::to_string(slip.stretch);
    return text;
}

TEST(LikelySlips, AreNamedAtTheirRowAndStretch) {
    Reading reading(7, 120, 0.12);
    reading.miss(101);
    reading.cough(80, 300);
    reading.merge(50);
    reading.split(17);
    for (const bool spaces : {true, false}) {
        if (!spaces) reading.takeSpaces();
        EXPECT_EQ(text(likelySlips(reading.asked)),
                  "split 17/17, merged 50/51, extra 80/80, missing 101/102")
            << "with spaces: " << spaces;
    }
}

TEST(LikelySlips, AreFoundAlthoughTheCountsAreEqual) {
    Reading reading(6, 60, 0.15);
    reading.merge(41);
    reading.split(12);
    ASSERT_EQ(reading.asked.words.size(), reading.asked.lengths.size());
    const std::vector<LikelySlip> slips = likelySlips(reading.asked);
    EXPECT_EQ(text(slips), "split 12/12, merged 41/42");
    const std::vector<double>& words = reading.asked.words;
    EXPECT_NEAR(slips.at(1).share, words[40] / (words[40] + words[41]), 0.1);
    EXPECT_EQ(slips.at(0).share, 0.0);
}

TEST(LikelySlips, AtBothEndsAreFound) {
    Reading reading(8, 60, 0.12);
    reading.cough(61, 350);
    reading.cough(1, 350);
    EXPECT_EQ(text(likelySlips(reading.asked)), "extra 1/1, extra 61/62");
}

TEST(LikelySlips, NothingIsSaidWithoutReason) {
    EXPECT_EQ(text(likelySlips({})), "");
    EXPECT_EQ(text(likelySlips({{5, 7}, {20, 30}, {2000}, kDuration})), "") << "too little to tell";
    for (unsigned seed = 1; seed <= 20; ++seed) {
        Reading reading(seed, 60, 0.15), script(seed + 100, 60, 0.15);
        reading.asked.words = script.asked.words;
        reading.asked.letters = script.asked.letters;
        EXPECT_EQ(text(likelySlips(reading.asked)), "") << "of another script, seed " << seed;
        reading.asked.lengths.resize(20);
        EXPECT_EQ(text(likelySlips(reading.asked)), "") << "most of the pauses are missing";
    }
    Reading even(1, 60, 0.15);
    even.asked.words.assign(60, 5.0);
    even.asked.letters.assign(60, 25.0);
    even.asked.lengths.assign(61, 2000.0);
    EXPECT_EQ(text(likelySlips(even.asked)), "") << "the extra stretch could be any";
}

// Over many sessions, with a slip of each kind at places that are drawn.
TEST(LikelySlips, AreNamedMostlyAndRarelyWithoutReason) {
    int slips = 0, named = 0, wrong = 0;
    for (unsigned seed = 1; seed <= 40; ++seed) {
        Reading clean(seed, 200, 0.18), slipped = clean;
        wrong += static_cast<int>(likelySlips(clean.asked).size());
        const std::array rows{int(150 + seed), int(110 + seed % 30), int(60 + seed),
                              int(10 + seed)};
        slipped.miss(rows[0]);
        slipped.cough(rows[1], 200.0 + 15 * seed);
        slipped.merge(rows[2]);
        slipped.split(rows[3], 0.3 + 0.01 * seed);
        const std::vector<LikelySlip> found = likelySlips(slipped.asked);
        for (const int row : rows) {
            ++slips;
            named += std::ranges::any_of(
                found, [&](const LikelySlip& slip) { return std::abs(slip.row - row) <= 1; });
        }
    }
    EXPECT_GE(named, slips * 95 / 100);
    EXPECT_EQ(wrong, 0);
}

}  // namespace
