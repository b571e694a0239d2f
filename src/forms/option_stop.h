#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QList>
#include <QRadioButton>
#include <span>

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

// Makes an array of options a group, by their indices, and one stop of the Tab key: at most one is
// on, and other options in the same frame or in frames within it do not count. A behaviour can turn
// all of them off by means of the group.
QButtonGroup* groupOptions(QObject* owner, std::span<QRadioButton* const> options);

}  // namespace tarnwick::forms
