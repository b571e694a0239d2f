#pragma once

#include <QString>

#include "settings/connection.h"
#include "settings/record.h"

namespace tarnwick::settings {

// A record set: the rows that a SELECT gives, open on its first row.
class Recordset {
  public:
    void Open(const QString& select, const Connection& connection);
    Record Fields() const;  // the present row; faults when there is none
    void Close();

  private:
    Connection::Statement rows_;
    bool onRow_ = false;
};

}  // namespace tarnwick::settings
