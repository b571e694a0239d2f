#include "runtime/fault.h"

namespace tarnwick::runtime {

Fault::Fault(QString description, QString detail)
    : description_(std::move(description)),
      detail_(std::move(detail)),
      utf8_(description_.toUtf8()) {}

void typeMismatch() { throw Fault(QStringLiteral("Type mismatch")); }
void overflow() { throw Fault(QStringLiteral("Overflow")); }
void subscriptOutOfRange() { throw Fault(QStringLiteral("Subscript out of range")); }
void divisionByZero() { throw Fault(QStringLiteral("Division by zero")); }
void invalidCall() { throw Fault(QStringLiteral("Invalid procedure call or argument")); }
void invalidPropertyValue() { throw Fault(QStringLiteral("Invalid property value")); }
void fileNotFound() { throw Fault(QStringLiteral("File not found")); }
void pathNotFound() { throw Fault(QStringLiteral("Path not found")); }
void fileAlreadyExists() { throw Fault(QStringLiteral("File already exists")); }
void permissionDenied() { throw Fault(QStringLiteral("Permission denied")); }
void diskFull() { throw Fault(QStringLiteral("Disk full")); }

QString descriptionOf(const std::exception& error) {
    if (const auto* fault = dynamic_cast<const Fault*>(&error)) return fault->description();
    return QString::fromUtf8(error.what());
}

QString detailedDescriptionOf(const std::exception& error) {
    const auto* fault = dynamic_cast<const Fault*>(&error);
    const QString description = descriptionOf(error);
    return fault == nullptr || fault->detail().isEmpty()
               ? description
               : description + u" ("_qs + fault->detail() + u')';
}

}  // namespace tarnwick::runtime
