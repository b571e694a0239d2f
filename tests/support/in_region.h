#pragma once

#include <QByteArray>

namespace tarnwick::test {

// Switches to the number format of a locale ("de_DE.UTF-8") during its lifetime.
class InRegion {
  public:
    explicit InRegion(const char* locale) : before_(qgetenv("LC_ALL")) {
        qputenv("LC_ALL", locale);
    }
    ~InRegion() { qputenv("LC_ALL", before_); }
    InRegion(const InRegion&) = delete;
    InRegion& operator=(const InRegion&) = delete;

  private:
    QByteArray before_;
};

}  // namespace tarnwick::test
