#pragma once

#include <QString>

namespace tarnwick::platform {

// Opens documents, folders and pages with the desktop's own programs. Failures are not reported.
class Opener {
  public:
    virtual ~Opener() = default;
    virtual void open(const QString& target) = 0;
};

}  // namespace tarnwick::platform
