#pragma once

#include <QAbstractButton>
#include <QList>

namespace tarnwick::forms {

// Makes an array of options one stop of the Tab key: the option that is on, or, where none is on or
// that one is hidden, the first that can be seen. The arrow keys move within the array. UI thread;
// lives as long as its owner, and the options at least as long.
class OptionStop : public QObject {
  public:
    OptionStop(QObject* owner, QList<QAbstractButton*> options);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void settle();

    QList<QAbstractButton*> options_;
};

}  // namespace tarnwick::forms
