#include "segmentation/prompt_list.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>

#include "forms/frm_main.h"
#include "forms/overlay.h"
#include "forms/scaling.h"
#include "forms/texts.h"
#include "model/list_columns.h"
#include "runtime/events.h"
#include "runtime/numbers.h"
#include "segmentation/row_view.h"

namespace tarnwick::segmentation {

namespace {

bool movesSelection(int key) {
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp ||
           key == Qt::Key_PageDown || key == Qt::Key_Home || key == Qt::Key_End;
}

bool breaksLine(QChar c) {
    return c == u'\n' || c == u'\v' || c == u'\f' || c == u'\r' ||
           c.category() == QChar::Separator_Line || c.category() == QChar::Separator_Paragraph;
}

// All cells of a row in one line, separated by tabs.
QString lineOf(const QTreeWidgetItem& row) {
    QStringList cells;
    for (int column = 0; column < model::kListColumns; ++column) {
        QString cell = row.text(column);
        std::replace_if(
            cell.begin(), cell.end(), [](QChar c) { return c == u'\t' || breaksLine(c); }, u' ');
        cells << cell;
    }
    return cells.join(u'\t');
}

}  // namespace

PromptList::PromptList(forms::frmMain& form, const runtime::FailurePath& failure,
                       const runtime::ProcessState& state, model::Session& session,
                       engine::SoundEditor& EDT, Guide guide)
    : form_(form),
      failure_(failure),
      state_(state),
      session_(session),
      EDT_(EDT),
      guide_(std::move(guide)) {
    runtime::onEvent(failure_, form_.lvAudioDetails, &QTreeWidget::itemPressed, this,
                     [this](QTreeWidgetItem* item, int) { lvAudioDetails_ItemClick(*item); });
    runtime::onEvent(failure_, form_.cbContent, &QPushButton::clicked, this,
                     [this] { cbContent_Click(); });
    runtime::onEvent(failure_, form_.mnuPlayfromListView, &QAction::triggered, this,
                     [this] { mnuPlayfromListView_Click(); });
    const QTreeWidget& list = *form_.lvAudioDetails;
    for (QWidget* part : std::initializer_list<QWidget*>{
             form_.lvAudioDetails, list.viewport(), list.header()->viewport(),
             list.verticalScrollBar(), list.horizontalScrollBar()})
        part->installEventFilter(this);
}

bool PromptList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonRelease) {
        failure_.unguarded([this] { lvAudioDetails_MouseUp(); });
    } else if (event->type() == QEvent::KeyPress && watched == form_.lvAudioDetails) {
        const auto* key = static_cast<QKeyEvent*>(event);
        bool handled = false;
        failure_.unguarded([&] { handled = keyPressed(*key); });
        if (handled) handledKey_ = key->key();
        return handled;
    } else if (event->type() == QEvent::KeyRelease) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->isAutoRepeat()) return false;
        // A key that was handled when it went down presses no row when it comes up.
        if (key->key() == handledKey_)
            handledKey_ = 0;
        else
            failure_.unguarded([this, key] { keyReleased(key->key()); });
    } else if (event->type() == QEvent::FocusOut) {
        // The release of a key that is still held will go elsewhere.
        handledKey_ = 0;
        failure_.unguarded([this] { keyReleased(Qt::Key_unknown); });
    } else if (event->type() == QEvent::ToolTip && watched == form_.lvAudioDetails->viewport()) {
        return showTip(*static_cast<QHelpEvent*>(event));
    }
    return false;
}

// Returns false if the key is left to the list widget.
bool PromptList::keyPressed(const QKeyEvent& key) {
    if (key.matches(QKeySequence::Copy)) {
        copyRow();
        return true;
    }
    const bool shift = key.modifiers() == Qt::ShiftModifier;
    if (key.key() == Qt::Key_N && (shift || key.modifiers() == Qt::NoModifier)) {
        if (guide_.doubtfulRowAsked && !key.isAutoRepeat()) guide_.doubtfulRowAsked(!shift);
        return true;
    }
    if (key.modifiers() != Qt::NoModifier) return false;
    switch (key.key()) {
        case Qt::Key_Space:
            if (!key.isAutoRepeat()) playOrStop();
            return true;
        case Qt::Key_Escape:
            return stopped();
        default:
            return false;
    }
}

// Treats the current row as pressed after a navigation key, even at the end of the list, and after
// any other key that has changed the row, such as typing its first letters.
void PromptList::keyReleased(int key) {
    QTreeWidgetItem* item = form_.lvAudioDetails->currentItem();
    if (item == nullptr) return;
    const bool moved = form_.lvAudioDetails->indexOfTopLevelItem(item) + 1 != session_.viCurrentRow;
    if (moved || movesSelection(key)) lvAudioDetails_ItemClick(*item);
}

void PromptList::pressRow(int row) {
    lvAudioDetails_ItemClick(*form_.lvAudioDetails->topLevelItem(row - 1));
}

// Stops what plays or is paused. Returns false if there was nothing to stop.
bool PromptList::stopped() {
    if (EDT_.waveform().playPosition() < 0.0) return false;
    EDT_.SoundStop();
    return true;
}

void PromptList::playOrStop() {
    QTreeWidgetItem* item = form_.lvAudioDetails->currentItem();
    if (!stopped() && item != nullptr) lvAudioDetails_ItemClick(*item);
}

bool PromptList::showTip(const QHelpEvent& event) const {
    QTreeWidgetItem* item = form_.lvAudioDetails->itemAt(event.pos());
    if (item == nullptr || !guide_.tipOfRow) return false;
    QToolTip::showText(
        event.globalPos(), guide_.tipOfRow(form_.lvAudioDetails->indexOfTopLevelItem(item) + 1),
        form_.lvAudioDetails->viewport(), form_.lvAudioDetails->visualItemRect(item));
    return true;
}

void PromptList::copyRow() const {
    if (const QTreeWidgetItem* item = form_.lvAudioDetails->currentItem())
        QGuiApplication::clipboard()->setText(lineOf(*item));
}

void PromptList::lvAudioDetails_ItemClick(QTreeWidgetItem& item) {
    form_.lvAudioDetails->setCurrentItem(&item);
    vlRowStart = runtime::strictLong(item.text(model::kStartMsec));
    moveView();
    forms::repaintNow(form_);
    nResult = EDT_.SoundPlayRange(vlRowStart, EDT_.GetSoundDuration());
    session_.viCurrentRow =
        runtime::roundToInteger(form_.lvAudioDetails->indexOfTopLevelItem(&item) + 1);
    form_.txbContent->setPlainText(item.text(model::kContent).replace(u'\v', u'\n'));
    if (guide_.rowPressed) guide_.rowPressed(session_.viCurrentRow);
}

void PromptList::moveView() {
    ViewRange now;
    EDT_.waveform().GetDisplayRange(now.begin, now.end);
    session_.vlSavedRangeBegin = now.begin;
    session_.vlSavedRangeEnd = now.end;
    if (const auto view = viewOfRow(vlRowStart, now))
        EDT_.waveform().SetDisplayRange(view->begin, view->end);
}

void PromptList::lvAudioDetails_MouseUp() {
    if (form_.opPlayfromlistview[1]->isChecked()) EDT_.SoundStop();
}

void PromptList::cbContent_Click() {
    const bool expand = form_.cbContent->text() == u"Expand Content";
    forms::setListHeight(form_, expand ? forms::kListHeightAboveContent : forms::kListHeight,
                         state_.vvScale);
    form_.txbContent->setVisible(expand);
    forms::setCaption(form_.cbContent, expand ? u"Hide Content"_qs : u"Expand Content"_qs);
}

void PromptList::mnuPlayfromListView_Click() {
    const bool continuous = form_.opPlayfromlistview[0]->isChecked();
    form_.opPlayfromlistview[continuous ? 1 : 0]->setChecked(true);
    form_.mnuPlayfromListView->setText(continuous ? u"Play Continously on Mouse Click"_qs
                                                  : u"Play/Stop on Mouse Click"_qs);
}

}  // namespace tarnwick::segmentation
