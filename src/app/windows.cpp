#include "app/windows.h"

#include <QApplication>
#include <QCloseEvent>

#include "forms/frm_batch_processor.h"
#include "forms/frm_frame.h"
#include "forms/frm_main.h"
#include "forms/frm_rename_wiz.h"
#include "runtime/events.h"

namespace tarnwick::app {

Windows::Windows(forms::frmFrame& frame, forms::frmMain& main, const Services& services)
    : frame_(frame), main_(main), services_(services) {
    frame_.setMenuBar(main_.menuBar);
    frame_.mdiArea->setBackground(frame_.palette().window());
    mainChild_ = addChild(main_);
    frame_.installEventFilter(this);
    main_.mnuWindows->addSeparator();
    runtime::onEvent(services_.failure, main_.mnuWindows, &QMenu::aboutToShow, this,
                     [this] { listOpenWindows(); });
}

Windows::~Windows() = default;

QMdiSubWindow* Windows::addChild(QWidget& form) {
    // Without a title bar of its own: the frame's caption says it all, and nothing can be dragged.
    const QSize size = form.size();
    QMdiSubWindow* child = frame_.mdiArea->addSubWindow(&form, Qt::FramelessWindowHint);
    child->setWindowTitle(form.windowTitle());
    child->setGeometry(QRect(QPoint(0, 0), size));
    child->hide();
    return child;
}

void Windows::centre(QMdiSubWindow& child) const {
    child.move((mainChild_->width() - child.width()) / 2,
               (mainChild_->height() - child.height()) / 2);
}

void Windows::showMain() {
    main_.menuBar->show();
    main_.show();
    mainChild_->show();
}

void Windows::hideMain() {
    mainChild_->hide();
    main_.menuBar->hide();
}

void Windows::showBatchProcessor() {
    hideMain();
    auto* form = new forms::frmBatchProcessor;
    batchChild_ = addChild(*form);
    centre(*batchChild_);
    runtime::onEvent(services_.failure, form->cbClose, &QPushButton::clicked, this, [this] {
        batchChild_->close();
        batchChild_->deleteLater();
        batchProcessorClosed();
        showMain();
    });
    form->show();
    batchChild_->show();
    hideMain();
}

void Windows::showRenameWizard() {
    hideMain();
    auto* form = new forms::frmRenameWiz;
    renameChild_ = addChild(*form);
    centre(*renameChild_);
    runtime::onEvent(services_.failure, form->cbClose, &QPushButton::clicked, this, [this] {
        renameChild_->close();
        renameChild_->deleteLater();
        showMain();
    });
    form->show();
    renameChild_->show();
}

void Windows::listOpenWindows() {
    qDeleteAll(listed_);
    listed_.clear();
    for (QMdiSubWindow* child : frame_.mdiArea->subWindowList()) {
        if (child->isHidden()) continue;
        QAction* entry = main_.mnuWindows->addAction(child->windowTitle());
        entry->setCheckable(true);
        entry->setChecked(true);
        runtime::onEvent(services_.failure, entry, &QAction::triggered, this,
                         [this, child] { frame_.mdiArea->setActiveSubWindow(child); });
        listed_ << entry;
    }
}

// The frame's closing takes every other window with it, the last opened first.
void Windows::unloadAll() {
    QWidgetList others = QApplication::topLevelWidgets();
    for (auto it = others.rbegin(); it != others.rend(); ++it)
        if (*it != &frame_ && (*it)->isVisible()) (*it)->close();
    frame_.mdiArea->closeAllSubWindows();
}

bool Windows::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &frame_ && event->type() == QEvent::Close) unloadAll();
    return QObject::eventFilter(watched, event);
}

}  // namespace tarnwick::app
