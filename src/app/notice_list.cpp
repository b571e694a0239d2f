#include "app/notice_list.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

#include "runtime/file_names.h"

namespace tarnwick::app {

namespace {

QString textOf(const NoticeBoard::Entry& entry) {
    QStringList lines{entry.time.toString(u"HH:mm:ss  ") + sentencesOf(entry)};
    for (const QString& file : entry.notice.files)
        lines << u"    "_qs + runtime::readableFileName(file);
    return lines.join(u'\n');
}

}  // namespace

NoticeList::NoticeList(QWidget* parent, NoticeBoard& board)
    : QDialog(parent), board_(board), lbxNotices(new QListWidget(this)) {
    setObjectName(u"frmNotices"_qs);
    setWindowTitle(u"Notices"_qs);
    resize(720, 360);
    lbxNotices->setObjectName(u"lbxNotices"_qs);
    lbxNotices->setAccessibleName(u"Notices"_qs);
    lbxNotices->setWordWrap(true);
    lbxNotices->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lbxNotices->setAlternatingRowColors(true);
    lbxNotices->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    lbxNotices->installEventFilter(this);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* cbNoticesCopy = buttons->addButton(u"Copy"_qs, QDialogButtonBox::ActionRole);
    cbNoticesCopy->setObjectName(u"cbNoticesCopy"_qs);
    connect(cbNoticesCopy, &QPushButton::clicked, this, [this] { copy(); });
    // The strip cannot be reached with Tab, so this button dismisses it by the keyboard.
    QPushButton* cbNoticesDismiss = buttons->addButton(u"Dismiss"_qs, QDialogButtonBox::ResetRole);
    cbNoticesDismiss->setObjectName(u"cbNoticesDismiss"_qs);
    connect(cbNoticesDismiss, &QPushButton::clicked, &board_, &NoticeBoard::dismiss);
    // Enter closes the list. It would press the first button that may become the default one.
    for (QPushButton* button : {cbNoticesCopy, cbNoticesDismiss})
        button->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* column = new QVBoxLayout(this);
    column->addWidget(lbxNotices);
    column->addWidget(buttons);
    connect(&board_, &NoticeBoard::changed, this, [this] {
        if (isVisible()) fill();
    });
}

void NoticeList::open() {
    fill();
    show();
    raise();
    activateWindow();
}

// Keeps the selection and the scroll position, so that a new notice does not disturb the reader.
void NoticeList::fill() {
    QList<platform::Notice> highlighted;
    for (const QListWidgetItem* item : lbxNotices->selectedItems())
        highlighted << filled_[lbxNotices->row(item)];
    const int scrolled = lbxNotices->verticalScrollBar()->value();
    lbxNotices->clear();
    filled_.clear();
    for (auto entry = board_.entries().rbegin(); entry != board_.entries().rend(); ++entry) {
        filled_ << entry->notice;
        lbxNotices->addItem(textOf(*entry));
        lbxNotices->item(lbxNotices->count() - 1)->setSelected(highlighted.contains(entry->notice));
    }
    lbxNotices->verticalScrollBar()->setValue(scrolled);
}

void NoticeList::copy() const {
    QStringList lines;
    for (int i = 0; i < lbxNotices->count(); ++i)
        if (lbxNotices->selectedItems().isEmpty() || lbxNotices->item(i)->isSelected())
            lines << lbxNotices->item(i)->text();
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

bool NoticeList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        copy();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace tarnwick::app
