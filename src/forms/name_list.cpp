#include "forms/name_list.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QStyle>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>

#include "forms/colours.h"
#include "forms/press.h"
#include "runtime/file_names.h"

namespace tarnwick::forms {

namespace {

constexpr int kIndent = 10;  // pixels for a level
constexpr int kLeading = 3;  // pixels between two lines

QString markOf(const QModelIndex& index) { return index.data(Qt::ToolTipRole).toString(); }

class FileNameDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override {
        return runtime::readableFileName(value.toString());
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kLeading);
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override {
        if (event->type() != QEvent::ToolTip || !index.isValid())
            return QStyledItemDelegate::helpEvent(event, view, option, index);
        const bool fits = sizeHint(option, index).width() <= option.rect.width();
        QStringList lines{fits ? QString() : displayText(index.data(), {}), markOf(index)};
        lines.removeAll(QString());
        const QString text = lines.join(u'\n').toHtmlEscaped().replace(u'\n', u"<br>"_qs);
        QToolTip::showText(event->globalPos(),
                           text.isEmpty() ? text : u"<qt>"_qs + text + u"</qt>"_qs, view);
        return true;
    }

  protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        option->rect.adjust(index.data(kLevelRole).toInt() * kIndent, 0, 0, 0);
        option->textElideMode = Qt::ElideMiddle;
        if (!markOf(index).isEmpty()) drawMark(*option);
    }

  private:
    // Red is unreadable on the selection's background, so a selected entry keeps the selection's
    // colours and shows only the sign.
    static void drawMark(QStyleOptionViewItem& option) {
        QPalette& palette = option.palette;
        palette.setColor(QPalette::Text,
                         readableOn(palette.color(QPalette::Base), QColor(Qt::red)));
        const int height = option.fontMetrics.height();
        option.features |= QStyleOptionViewItem::HasDecoration;
        option.decorationSize = QSize(height, height);
        option.icon = option.widget->style()->standardIcon(QStyle::SP_MessageBoxWarning, &option);
    }
};

}  // namespace

void drawAsFileNames(QListView& list) {
    list.setItemDelegate(new FileNameDelegate(&list));
    list.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list.setUniformItemSizes(true);
}

QVariant MarkedNames::data(const QModelIndex& index, int role) const {
    if (role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole)
        return QStringListModel::data(index, role);
    const auto mark = marks_.find(QStringListModel::data(index, Qt::DisplayRole).toString());
    return mark != marks_.end() ? QVariant(*mark) : QVariant();
}

void MarkedNames::setMarks(const QHash<QString, QString>& marks) {
    if (marks.isEmpty() && marks_.isEmpty()) return;
    marks_ = marks;
    Q_EMIT dataChanged(index(0), index(rowCount() - 1));
}

NameList::NameList(QWidget* parent) : QListView(parent) {
    setModel(&model_);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    drawAsFileNames(*this);
}

void NameList::setNames(const QStringList& names) {
    mark({});
    replaceNames(names);
    scrollToTop();
}

// The list keeps its place.
void NameList::replaceNames(const QStringList& names) {
    QStringList sorted = names;
    if (!std::is_sorted(sorted.begin(), sorted.end(), runtime::nameLess))
        std::sort(sorted.begin(), sorted.end(), runtime::nameLess);
    model_.setStringList(sorted);
}

void NameList::add(const QStringList& names) {
    const QStringList before = highlighted();
    replaceNames(this->names() + names);
    highlight(before);
}

void NameList::mouseDoubleClickEvent(QMouseEvent* event) {
    QMouseEvent press = pressOf(*event);
    mousePressEvent(&press);
}

void NameList::drawNow() {
    doItemsLayout();
    viewport()->repaint();
}

QStringList NameList::highlighted() const {
    QStringList names;
    for (const QModelIndex& index : selectionModel()->selectedRows())
        names << index.data().toString();
    std::sort(names.begin(), names.end(), runtime::nameLess);
    return names;
}

void NameList::highlight(const QStringList& sortedNames) {
    QItemSelection selection;
    auto next = sortedNames.begin();
    const QStringList all = names();
    for (int row = 0; row < all.size() && next != sortedNames.end(); ++row)
        if (all[row] == *next) {
            const bool goesOn = !selection.isEmpty() && selection.last().bottom() == row - 1;
            const int top = goesOn ? selection.takeLast().top() : row;
            selection.select(model_.index(top), model_.index(row));
            ++next;
        }
    selectionModel()->select(selection, QItemSelectionModel::Select);
}

QStringList NameList::takeHighlighted() {
    const QStringList taken = highlighted();
    QStringList left;
    const QStringList all = names();
    std::set_difference(all.begin(), all.end(), taken.begin(), taken.end(),
                        std::back_inserter(left), runtime::nameLess);
    replaceNames(left);
    return taken;
}

QStringList NameList::takeAll() {
    const QStringList taken = names();
    clear();
    return taken;
}

}  // namespace tarnwick::forms
