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

// A strip at the lower edge of the frame, over the window shown there, as long as the board has a
// notice that was not dismissed. It never takes the focus by itself, gives back the focus that one
// of its buttons was given, and moves to the upper edge while it would cover the control that has
// the focus. Screen readers announce it as an alert. UI thread.
class NoticeStrip : public QFrame {
    Q_OBJECT

  public:
    // `notifyDesktop` gets each told sentence while the frame is not the active window. F9 opens
    // the list of all notices, which also dismisses those shown: the strip cannot be reached with
    // Tab. The central widget of `frame` is a scroll area, and `frame` outlives the strip.
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
    QWidget* view_ = nullptr;  // of the frame's scroll area; its scroll bars stay uncovered
    NoticeBoard& board_;
    std::function<void(const QString&)> notifyDesktop_;
    NoticeList* list_;
    QLabel* lbNotice;
    QPushButton* cbNoticeDetails;
    QPushButton* cbNoticeClose;
    QPointer<QWidget> focusBefore_;  // had the focus before the strip's buttons
};

}  // namespace tarnwick::app
