#pragma once

#include <QDateTime>

namespace tarnwick::platform {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;  // local wall-clock time
    virtual double Timer() const = 0;   // seconds since local midnight, with a fraction
};

class SystemClock : public Clock {
  public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
    double Timer() const override { return now().time().msecsSinceStartOfDay() / 1000.0; }
};

}  // namespace tarnwick::platform
