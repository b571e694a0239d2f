#pragma once

#include <vector>

namespace tarnwick::segmentation {

// What the talent, or the search for pauses, probably did other than one stretch of speech for each
// row. `row` and `stretch` count from 1.
struct LikelySlip {
    enum Kind {
        Split,   // row `row` was read in the stretches `stretch` and `stretch` + 1
        Merged,  // stretch `stretch` holds the rows `row` and `row` + 1
        Extra,   // stretch `stretch`, before row `row`, belongs to no row; `row` may be one past
        Missing  // row `row` was not read; it would stand before stretch `stretch`
    };

    Kind kind;
    int row;
    int stretch;
    double share = 0.0;  // Merged: the part of the stretch that row `row` takes by projection

    bool operator==(const LikelySlip&) const = default;
};

struct SlipQuestion {
    std::vector<double> words;    // per row, as the length check counts them
    std::vector<double> letters;  // per row
    std::vector<double> lengths;  // of the stretches, in ms
    double shortestPauseMs;       // that separates two stretches
};

// The most plausible explanation of how rows and stretches belong together, as the places where it
// leaves the pairing one to one, in order. Empty if there is no such place or none is likely enough
// to send somebody there. Pure; linear in the number of rows.
//
// The method is the alignment of two sequences by their lengths (Gale and Church, "A Program for
// Aligning Sentences in Bilingual Corpora", Computational Linguistics 19(1), 1993) with dynamic
// programming in a band around the diagonal (Sakoe and Chiba, "Dynamic Programming Algorithm
// Optimization for Spoken Word Recognition", IEEE Trans. ASSP 26(1), 1978). A place is named if its
// posterior probability is high, by the forward-backward algorithm (Rabiner, "A Tutorial on Hidden
// Markov Models", Proc. IEEE 77(2), 1989). The talent's pace is estimated again after each pass.
// Words or letters count, whichever predicts the lengths better.
std::vector<LikelySlip> likelySlips(const SlipQuestion& question);

}  // namespace tarnwick::segmentation
