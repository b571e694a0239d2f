#pragma once

#include <QString>
#include <optional>

namespace tarnwick::platform {

// Modal boxes. UI thread; each call returns when the operator has answered.
class Boxes {
  public:
    virtual ~Boxes() = default;

    // OK button, no title, no icon.
    virtual void plain(const QString& text) = 0;
    // OK button and the stop icon.
    virtual void critical(const QString& title, const QString& text) = 0;
    // Yes and No; false for any answer but Yes.
    virtual bool askYesNo(const QString& title, const QString& text) = 0;
    // One line of text; nullopt if cancelled.
    virtual std::optional<QString> input(const QString& prompt) = 0;
};

}  // namespace tarnwick::platform
