#include "settings/recordset.h"

#include <sqlite3.h>

#include "runtime/fault.h"

namespace tarnwick::settings {

void Recordset::Open(const QString& select, const Connection& connection) {
    Close();
    rows_ = connection.prepare(select);
    try {
        onRow_ = connection.step(rows_);
    } catch (...) {
        Close();
        throw;
    }
}

Record Recordset::Fields() const {
    if (!onRow_)
        throw runtime::Fault(
            QStringLiteral("Either BOF or EOF is True, or the current record has been deleted. "
                           "Requested operation requires a current record."));
    Record row;
    for (int column = 0; column < sqlite3_column_count(rows_.get()); ++column) {
        const QString name = QString::fromUtf8(sqlite3_column_name(rows_.get(), column));
        switch (sqlite3_column_type(rows_.get(), column)) {
            case SQLITE_NULL:
                row.add(name, {});
                break;
            case SQLITE_INTEGER:
                row.add(name, static_cast<qint64>(sqlite3_column_int64(rows_.get(), column)));
                break;
            case SQLITE_FLOAT:
                row.add(name, sqlite3_column_double(rows_.get(), column));
                break;
            default:
                row.add(name, QString::fromUtf8(reinterpret_cast<const char*>(
                                  sqlite3_column_text(rows_.get(), column))));
        }
    }
    return row;
}

void Recordset::Close() {
    rows_.reset();
    onRow_ = false;
}

}  // namespace tarnwick::settings
