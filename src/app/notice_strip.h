#pragma once

#include <QFrame>
#include <QPointer>
#include <functional>

class QLabel;
class QMainWindow;
class QPushButton;

namespace tarnwick::app {

class NoticeBoard;
class NoticeList;

// A strip at the lower edge of the frame that shows the newest notice of the board until it is
// dismissed. It never takes the focus by itself. If one of its buttons had the focus, dismissing
// returns the focus to the control before. The strip moves to the upper edge if it would cover the
// control with the focus. Screen readers announce it as an alert. UI thread.
class NoticeStrip : public QFrame {
    Q_OBJECT

  public:
    // `notifyDesktop` gets each sentence that is told while the frame is not the active window. F9
    // opens the list of all notices; its Dismiss button also clears the strip, which Tab cannot
    // reach. The central widget of `frame` must be a scroll area. `frame` must outlive the strip.
    NoticeStrip(QMainWindow& frame, NoticeBoard& board,
                std::function<void(const QString& sentence)> notifyDesktop);
    ~NoticeStrip() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void makeLook();
    void followFrame();
    void showNewest();
    void announce();
    void takeAway();
    void place();
    void placeSoon();
    bool covers(const QWidget* control, const QRect& strip) const;

    QMainWindow& frame_;
    QWidget* view_ = nullptr;  // viewport of the frame's scroll area; excludes its scroll bars
    NoticeBoard& board_;
    std::function<void(const QString&)> notifyDesktop_;
    NoticeList* list_;
    QLabel* lbNotice;
    QPushButton* cbNoticeDetails;
    QPushButton* cbNoticeClose;
    QPointer<QWidget> focusBefore_;  // last control with the focus outside the strip
};

}  // namespace tarnwick::app
