#include "app/windows.h"

#include <QApplication>
#include <QCloseEvent>
#include <QThread>
#include <QTimer>
#include <chrono>

#include "app/batch_window.h"
#include "app/window_keys.h"
#include "forms/frm_batch_processor.h"
#include "forms/frm_frame.h"
#include "forms/frm_main.h"
#include "forms/frm_rename_wiz.h"
#include "rename/rename_wizard.h"
#include "runtime/events.h"

namespace tarnwick::app {

namespace {

constexpr std::chrono::milliseconds kTryAgain{100};

}  // namespace

Windows::Windows(forms::frmFrame& frame, forms::frmMain& main, const Services& services,
                 engine::SoundEditor& EDT)
    : frame_(frame), main_(main), services_(services), EDT_(EDT) {
    frame_.setMenuBar(main_.menuBar);
    addMenuKeys(*main_.menuBar);
    clickOnEscape(*main_.frPreferences, *main_.cbPreferencesIgnore);
    // No title bar: the frame's caption is enough, and the window must not be dragged.
    const QSize size = main_.size();
    mainChild_ = frame_.mdiArea->addSubWindow(&main_, Qt::FramelessWindowHint);
    mainChild_->setWindowTitle(main_.windowTitle());
    mainChild_->setGeometry(QRect(QPoint(0, 0), size));
    mainChild_->hide();
    frame_.installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) {
        // Only for keys: a control pressed with the mouse must not move away under the pointer.
        if (now != nullptr && QApplication::mouseButtons() == Qt::NoButton &&
            frame_.mdiArea->viewport()->isAncestorOf(now))
            frame_.reveal(*now);
    });
    main_.mnuWindows->addSeparator();
    runtime::onEvent(services_.failure, main_.mnuWindows, &QMenu::aboutToShow, this,
                     [this] { listOpenWindows(); });
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

void Windows::reveal(const QWidget& control) { frame_.reveal(control); }

// Returns null if such a window is already open.
template <class Form>
Form* Windows::openInstead(std::function<void()> closed) {
    if (instead_ && dynamic_cast<Form*>(instead_->widget()) != nullptr) return nullptr;
    if (instead_) {
        insteadClosed_ = {};
        instead_->close();
    }
    hideMain();
    auto* form = new Form;
    const QSize size = form->size();
    // The window has a fixed size, so it cannot be minimised or maximised.
    instead_ = frame_.mdiArea->addSubWindow(
        form, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                  Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    instead_->setAttribute(Qt::WA_DeleteOnClose, false);  // insteadCloses() deletes it
    instead_->setWindowTitle(form->windowTitle());
    instead_->setGeometry(QRect(QPoint((mainChild_->width() - size.width()) / 2,
                                       (mainChild_->height() - size.height()) / 2),
                                size));
    form->installEventFilter(this);  // closed by its child window or by itself
    insteadLevel_ = QThread::currentThread()->loopLevel();
    insteadClosed_ = std::move(closed);
    runtime::onEvent(services_.failure, form->cbClose, &QPushButton::clicked, instead_,
                     [child = instead_] { child->close(); });
    clickOnEscape(*form, *form->cbClose);
    return form;
}

void Windows::showInstead() {
    instead_->widget()->show();
    instead_->show();
    // After the MDI area has placed and activated the window: scrolls to it on a small screen, and
    // gives it the focus if nothing in it has, as it would get no keys without.
    QTimer::singleShot(0, instead_, [this, child = instead_] {
        if (!child) return;
        frame_.reveal(*child);
        if (!child->isAncestorOf(QApplication::focusWidget())) child->widget()->setFocus();
    });
}

bool Windows::batchProcessorIsOpen() const {
    return instead_ && dynamic_cast<forms::frmBatchProcessor*>(instead_->widget()) != nullptr;
}

void Windows::showBatchProcessor() {
    auto* form = openInstead<forms::frmBatchProcessor>(batchProcessorClosed);
    if (form == nullptr) return;
    auto* window = new BatchWindow(*form, services_, EDT_, [child = instead_] { child->close(); });
    stopInstead_ = [window] { window->stop(); };
    window->load();
    showInstead();
}

void Windows::showRenameWizard() {
    auto* form = openInstead<forms::frmRenameWiz>([this] { showMain(); });
    if (form == nullptr) return;
    auto* wizard = new rename::RenameWizard(*form, {.failure = services_.failure,
                                                    .state = services_.state,
                                                    .boxes = services_.boxes,
                                                    .cmdlg = services_.renameDialog,
                                                    .files = services_.files,
                                                    .notices = services_.notices,
                                                    .openWorkbook = documents::Workbook::open});
    wizard->Form_Load();
    showInstead();
}

// Shows the main window again if this window is closed by its button or its close box, but not if
// it is replaced by another window or closed with the frame.
void Windows::insteadCloses() {
    if (stopInstead_) std::exchange(stopInstead_, {})();
    QMdiSubWindow* child = instead_;
    instead_.clear();
    child->hide();
    deleteWhenUnused(child, insteadLevel_);
    if (insteadClosed_) std::exchange(insteadClosed_, {})();
}

// Another window can open by itself while a box or dialog of this one is open. The code that opened
// the box continues after the answer and still needs its window. So the window is deleted only when
// control is back in the event loop in which it was opened.
void Windows::deleteWhenUnused(QMdiSubWindow* child, int openedLevel) {
    if (QThread::currentThread()->loopLevel() <= openedLevel)
        child->deleteLater();
    else
        QTimer::singleShot(kTryAgain, child,
                           [this, child, openedLevel] { deleteWhenUnused(child, openedLevel); });
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

// When the frame closes, closes every other window, the last opened first.
void Windows::unloadAll() {
    insteadClosed_ = {};
    QWidgetList others = QApplication::topLevelWidgets();
    for (auto it = others.rbegin(); it != others.rend(); ++it)
        if (*it != &frame_ && (*it)->isVisible()) (*it)->close();
    frame_.mdiArea->closeAllSubWindows();
}

bool Windows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close) {
        if (watched == &frame_) unloadAll();
        if (instead_ && watched == instead_->widget())
            services_.failure.unguarded([this] { insteadCloses(); });
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace tarnwick::app
