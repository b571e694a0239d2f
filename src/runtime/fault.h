#pragma once

#include <QString>
#include <exception>

namespace tarnwick::runtime {

// A failed step of a procedure. The log shows the classic description; boxes and notices also show
// the detail: the file or the field that is concerned.
class Fault : public std::exception {
  public:
    explicit Fault(QString description, QString detail = {});

    const QString& description() const { return description_; }
    const QString& detail() const { return detail_; }
    const char* what() const noexcept override { return utf8_.constData(); }

  private:
    QString description_;
    QString detail_;  // may be empty
    QByteArray utf8_;
};

// Runs `work`. A Fault that it throws gets this detail unless it has one already.
template <class Work>
decltype(auto) withDetail(const QString& detail, Work&& work) {
    try {
        return work();
    } catch (const Fault& fault) {
        throw Fault(fault.description(), fault.detail().isEmpty() ? detail : fault.detail());
    }
}

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

// The description followed by the detail in brackets, for boxes and notices.
QString detailedDescriptionOf(const std::exception& error);

}  // namespace tarnwick::runtime
