#include "runtime/levels.h"

#include <cmath>

#include "runtime/fault.h"
#include "runtime/numbers.h"

namespace tarnwick::runtime {

namespace {

// Natural logarithm of 10 with exactly these digits, because stored levels were computed with them.
constexpr double kLn10 = 2.30258509299405;

double finite(double value) {
    if (!std::isfinite(value)) overflow();
    return value;
}

}  // namespace

double percentOfDecibels(double decibels) {
    return finite(std::pow(10.0, decibels / 20.0) * 100.0);
}

double decibelsOfPercent(double percent) {
    if (percent <= 0.0) invalidCall();
    return 20.0 * std::log(percent) / kLn10 - 40.0;
}

QString amplitudeOfPercent(const QString& percent) {
    return plainText(std::floor(finite(strictDouble(percent) * 32767.0) / 100.0));
}

}  // namespace tarnwick::runtime
