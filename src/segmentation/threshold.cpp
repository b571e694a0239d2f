#include "segmentation/threshold.h"

#include <cmath>

#include "runtime/numbers.h"

namespace tarnwick::segmentation {

QString thresholdPercent(const QString& decibels) {
    return runtime::fixedOneDecimal(std::pow(10.0, runtime::strictDouble(decibels) / 20.0) * 100.0);
}

QString thresholdAmplitude(const QString& percent) {
    return runtime::plainText(std::floor(runtime::strictDouble(percent) * 32767.0 / 100.0));
}

}  // namespace tarnwick::segmentation
