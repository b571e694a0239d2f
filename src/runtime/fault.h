#pragma once

#include <QString>
#include <exception>

namespace tarnwick::runtime {

// A failed step of a procedure. The log and the boxes show the description.
class Fault : public std::exception {
  public:
    explicit Fault(QString description);

    const QString& description() const { return description_; }
    const char* what() const noexcept override { return utf8_.constData(); }

  private:
    QString description_;
    QByteArray utf8_;
};

// The classic descriptions, one function each so that every text exists only once.
[[noreturn]] void typeMismatch();
[[noreturn]] void overflow();
[[noreturn]] void subscriptOutOfRange();
[[noreturn]] void divisionByZero();
[[noreturn]] void invalidCall();  // "Invalid procedure call or argument"
[[noreturn]] void invalidPropertyValue();
[[noreturn]] void fileNotFound();
[[noreturn]] void pathNotFound();
[[noreturn]] void fileAlreadyExists();
[[noreturn]] void permissionDenied();
[[noreturn]] void diskFull();

// The description of any exception, for the log.
QString descriptionOf(const std::exception& error);

}  // namespace tarnwick::runtime
