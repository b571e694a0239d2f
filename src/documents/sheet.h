#pragma once

#include <QHash>
#include <QSet>
#include <QString>

namespace tarnwick::documents {

inline constexpr qint32 kMaximumRows = 1048576;
inline constexpr qint32 kMaximumColumns = 16384;

// The cells of one worksheet as displayed text: whole numbers without a point, the last results of
// formulas, dates as dates, True and False. Only filled cells take memory.
class Sheet {
  public:
    // Rows and columns count from 1. Empty for an empty cell and outside the sheet.
    QString text(qint32 row, qint32 column) const;

    // Ignores cells outside the sheet and empty texts.
    void setText(qint32 row, qint32 column, const QString& text);

    // Whether the cell has a formula whose result is not stored in the file. Its text is empty.
    bool lacksResult(qint32 row, qint32 column) const;
    void setLacksResult(qint32 row, qint32 column);  // ignores cells outside the sheet

  private:
    QHash<quint64, QString> cells_;
    QSet<quint64> withoutResult_;
};

}  // namespace tarnwick::documents
