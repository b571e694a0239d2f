#pragma once

#include <QDialog>

#include "app/notice_board.h"

class QListWidget;

namespace tarnwick::app {

// All notices of this run, the newest first: time, sentences and files. Ctrl+C or the button copies
// the selected ones, or all if none is selected. A modeless window. UI thread.
class NoticeList : public QDialog {
  public:
    NoticeList(QWidget* parent, NoticeBoard& board);

    void open() override;  // shows it, or brings it to the front

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void fill();
    void copy() const;

    NoticeBoard& board_;
    QList<platform::Notice> filled_;  // one for each row of the list
    QListWidget* lbxNotices;
};

}  // namespace tarnwick::app
