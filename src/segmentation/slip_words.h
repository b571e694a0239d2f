#pragma once

#include <QString>
#include <vector>

#include "platform/notices.h"
#include "segmentation/likely_slips.h"

// What the operator reads about likely slips. Pure functions.

namespace tarnwick::segmentation {

// A sentence: "Row 17: stretches 17 and 18 together fit it: a pause inside the prompt."
QString sentenceOf(const LikelySlip& slip);

// The sentences, one per line; empty if there are none.
QString listOf(const std::vector<LikelySlip>& slips);

// The topic of slipsAreLikely().
QString slipTopic();

// The numbers of stretches and prompts, as their counters show them, differ, and `slips`, which is
// not empty, may be the reason.
platform::Notice slipsAreLikely(const QString& stretches, const QString& prompts,
                                const std::vector<LikelySlip>& slips);

}  // namespace tarnwick::segmentation
