#include "documents/sheet.h"

namespace tarnwick::documents {

namespace {

bool inside(qint32 row, qint32 column) {
    return row >= 1 && row <= kMaximumRows && column >= 1 && column <= kMaximumColumns;
}

quint64 keyOf(qint32 row, qint32 column) {
    return static_cast<quint64>(row) * (kMaximumColumns + 1) + static_cast<quint64>(column);
}

}  // namespace

QString Sheet::text(qint32 row, qint32 column) const {
    if (!inside(row, column)) return {};
    return cells_.value(keyOf(row, column));
}

void Sheet::setText(qint32 row, qint32 column, const QString& text) {
    if (!inside(row, column) || text.isEmpty()) return;
    cells_.insert(keyOf(row, column), text);
}

bool Sheet::lacksResult(qint32 row, qint32 column) const {
    return inside(row, column) && withoutResult_.contains(keyOf(row, column));
}

void Sheet::setLacksResult(qint32 row, qint32 column) {
    if (inside(row, column)) withoutResult_.insert(keyOf(row, column));
}

}  // namespace tarnwick::documents
