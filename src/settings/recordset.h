#pragma once

#include <QString>

#include "settings/connection.h"
#include "settings/record.h"

namespace tarnwick::settings {

// The rows of a SELECT, opened on the first row.
class Recordset {
  public:
    void Open(const QString& select, const Connection& connection);
    Record Fields() const;  // the current row; faults if there is none
    void Close();

  private:
    Connection::Statement rows_;
    bool onRow_ = false;
};

}  // namespace tarnwick::settings
