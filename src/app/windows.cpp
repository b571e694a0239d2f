#include "app/windows.h"

#include <QApplication>
#include <QCloseEvent>
#include <QThread>
#include <QTimer>
#include <chrono>

#include "app/batch_window.h"
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
    // Without a title bar of its own: the frame's caption says it all, and nothing can be dragged.
    const QSize size = main_.size();
    mainChild_ = frame_.mdiArea->addSubWindow(&main_, Qt::FramelessWindowHint);
    mainChild_->setWindowTitle(main_.windowTitle());
    mainChild_->setGeometry(QRect(QPoint(0, 0), size));
    mainChild_->hide();
    frame_.installEventFilter(this);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) {
        // Only for the keys: what was pressed with the mouse must not move away under it.
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

// Null where such a window is open already.
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
    // Of a fixed size: nothing to minimise or maximise.
    instead_ = frame_.mdiArea->addSubWindow(
        form, Qt::SubWindow | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                  Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    instead_->setAttribute(Qt::WA_DeleteOnClose, false);  // insteadCloses() knows when
    instead_->setWindowTitle(form->windowTitle());
    instead_->setGeometry(QRect(QPoint((mainChild_->width() - size.width()) / 2,
                                       (mainChild_->height() - size.height()) / 2),
                                size));
    form->installEventFilter(this);  // it closes with its frame, or by itself
    insteadLevel_ = QThread::currentThread()->loopLevel();
    insteadClosed_ = std::move(closed);
    runtime::onEvent(services_.failure, form->cbClose, &QPushButton::clicked, instead_,
                     [child = instead_] { child->close(); });
    return form;
}

void Windows::showInstead() {
    instead_->widget()->show();
    instead_->show();
    // On a small screen, once the area has taken the window in.
    QTimer::singleShot(0, instead_, [this, child = instead_] {
        if (child) frame_.reveal(*child);
    });
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
                                                    .openWorkbook = documents::Workbook::open});
    wizard->Form_Load();
    showInstead();
}

// The main window comes back when this one is closed by its button or by its close box; not when it
// makes room for another or goes with the frame.
void Windows::insteadCloses() {
    if (stopInstead_) std::exchange(stopInstead_, {})();
    QMdiSubWindow* child = instead_;
    instead_.clear();
    child->hide();
    deleteWhenUnused(child, insteadLevel_);
    if (insteadClosed_) std::exchange(insteadClosed_, {})();
}

// Another window can open by itself under a box or dialog of this one. What called that goes on
// when it is answered, and needs its window until then: until the event loop in which it was
// opened.
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

// The frame's closing takes every other window with it, the last opened first.
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
