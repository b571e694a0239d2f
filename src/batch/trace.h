#pragma once

#include <QString>

class QPlainTextEdit;

namespace tarnwick::batch {

// What the steps of a run tell service, in the window's trace box. UI thread.
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
