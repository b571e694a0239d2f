#pragma once

#include <QString>

class QPlainTextEdit;

namespace tarnwick::batch {

// The messages of a run's steps for support staff, in the window's trace box. UI thread.
class Trace {
  public:
    explicit Trace(QPlainTextEdit& box);

    void clear();
    void start(const QString& line);  // replaces the content
    void add(const QString& line);

  private:
    QPlainTextEdit& box_;
};

}  // namespace tarnwick::batch
