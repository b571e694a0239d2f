#pragma once

#include <QString>
#include <exception>

// Why something failed, in a few words that continue a sentence: no capital, no full stop.

namespace tarnwick::runtime {

// The reason for an errno value: "no space left on the device". Empty for 0.
QString systemReason(int error);

// The reason for a caught exception: its description with the detail, with a small first letter.
QString reasonOf(const std::exception& error);

}  // namespace tarnwick::runtime
