#include "forms/prompt_list.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include "forms/colours.h"
#include "forms/fonts.h"
#include "forms/press.h"
#include "forms/units.h"
#include "model/list_columns.h"

namespace tarnwick::forms {

namespace {

constexpr int kTextMargin = 4;
constexpr int kRowPadding = 5;

const model::ListColumnDesign& designOf(int column) {
    return model::kListDesign[static_cast<std::size_t>(column)];
}

bool isShown(int column) {
    return column >= 0 && column < model::kListColumns && designOf(column).scaled();
}

// Draws a cell without the style's own side margins: a time of twelve characters has to fit its
// column at the smallest scale.
class PromptDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    // A row is one line: the line and page breaks of a prompt would be drawn as boxes.
    QString displayText(const QVariant& value, const QLocale&) const override {
        // No column shows more, and to measure a long text takes its time with every repaint.
        constexpr qsizetype kMostShown = 1000;
        return value.toString().left(kMostShown).replace(u'\v', u' ').replace(u'\f', u' ');
    }

    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
        return {0, option.fontMetrics.height() + kRowPadding};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem cell = option;
        initStyleOption(&cell, index);
        const QString text = cell.text;
        cell.text.clear();
        cell.features &= ~QStyleOptionViewItem::HasDisplay;
        cell.widget->style()->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
        if (!isShown(index.column())) {
            return;
        }
        drawGrid(painter, cell);
        drawText(painter, cell, text, designOf(index.column()).centred(),
                 index.data(Qt::ForegroundRole).isValid());
    }

  private:
    // Parts the times, which nearly touch at the smallest scale.
    static void drawGrid(QPainter* painter, const QStyleOptionViewItem& cell) {
        QColor line = cell.palette.color(QPalette::Text);
        line.setAlphaF(0.12F);
        painter->fillRect(QRect(cell.rect.right(), cell.rect.top(), 1, cell.rect.height()), line);
    }

    static void drawText(QPainter* painter, const QStyleOptionViewItem& cell, const QString& text,
                         bool centred, bool flagged) {
        const bool picked = cell.state.testFlag(QStyle::State_Selected);
        const int margin = centred ? 0 : kTextMargin;
        const QRect area = cell.rect.adjusted(margin, 0, -margin, 0);
        const auto group =
            cell.state.testFlag(QStyle::State_Enabled) ? QPalette::Active : QPalette::Disabled;
        const QColor ground = cell.palette.color(group, QPalette::Base);
        painter->save();
        if (picked && flagged) {
            // Red on the selection's colour cannot be read: a flagged cell keeps the list's ground.
            painter->fillRect(cell.rect, ground);
        }
        QFont font = cell.font;
        // A negative time is a sign too wide for its column at the smallest scale.
        if (centred && cell.fontMetrics.horizontalAdvance(text) > area.width())
            font.setPixelSize(font.pixelSize() - 1);
        painter->setFont(font);
        QColor pen = cell.palette.color(
            group, picked && !flagged ? QPalette::HighlightedText : QPalette::Text);
        if (flagged) pen = readableOn(ground, pen);
        painter->setPen(pen);
        painter->drawText(
            area,
            Qt::TextSingleLine | Qt::AlignVCenter | (centred ? Qt::AlignHCenter : Qt::AlignLeft),
            QFontMetrics(font).elidedText(text, Qt::ElideRight, area.width()));
        painter->restore();
    }
};

// A list in which a press, and nothing else of the mouse, picks a row: a drag passes over the rows,
// Ctrl takes nothing away, and a press soon after another is a press as well.
class PromptTree : public QTreeWidget {
  public:
    using QTreeWidget::QTreeWidget;

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() == Qt::NoButton) QTreeWidget::mouseMoveEvent(event);
    }

    void mouseDoubleClickEvent(QMouseEvent* event) override {
        QMouseEvent press = pressOf(*event);
        mousePressEvent(&press);
    }

    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override {
        const bool release = event != nullptr && event->type() == QEvent::MouseButtonRelease;
        return index.isValid() && !release
                   ? QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows
                   : QItemSelectionModel::NoUpdate;
    }
};

}  // namespace

QTreeWidget* makePromptList(QWidget* parent) {
    auto* list = new PromptTree(parent);
    const QFont font = smallFont();
    list->setFont(font);
    list->setItemDelegate(new PromptDelegate(list));
    list->setColumnCount(0);
    list->setRootIsDecorated(false);
    list->setIndentation(0);
    list->setItemsExpandable(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    list->setAlternatingRowColors(true);
    list->setSelectionMode(QAbstractItemView::SingleSelection);
    list->setSelectionBehavior(QAbstractItemView::SelectRows);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list->setDragDropMode(QAbstractItemView::NoDragDrop);
    list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    QHeaderView* header = list->header();
    header->setFont(font);
    header->setMinimumSectionSize(0);
    header->setSectionsMovable(false);
    header->setStretchLastSection(false);
    header->setHighlightSections(false);
    return list;
}

void makePromptColumns(QTreeWidget& list, double vvScale) {
    list.setColumnCount(0);
    list.setColumnCount(model::kListColumns);
    for (int column = 0; column < model::kListColumns; ++column) {
        const model::ListColumnDesign& design = designOf(column);
        list.headerItem()->setText(column, QLatin1String(design.caption));
        list.headerItem()->setTextAlignment(
            column, (design.centred() ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignVCenter);
        list.header()->setSectionResizeMode(
            column, design.scaled() ? QHeaderView::Interactive : QHeaderView::Fixed);
        const auto width =
            static_cast<float>(design.scaled() ? design.widthTwips * vvScale : design.widthTwips);
        list.setColumnWidth(column, px(width));
    }
}

}  // namespace tarnwick::forms
