#pragma once

#include <QString>
#include <memory>

#include "settings/connection_string.h"
#include "settings/record.h"

namespace tarnwick::settings {

class Connection;
class Recordset;

// The settings database: one encrypted file that is open only during an access. It is never
// created here. An access opens, reads rows or executes statements, and closes, inside one
// procedure: accesses must not overlap, nor be open across an event, nor outlive main.
// Every failure is a runtime::Fault with the provider's own description. UI thread.
class SettingsDatabase {
  public:
    SettingsDatabase();
    ~SettingsDatabase();
    SettingsDatabase(const SettingsDatabase&) = delete;
    SettingsDatabase& operator=(const SettingsDatabase&) = delete;

    // `vsConnection`: what connectionString gives. Makes the connection object if there is none.
    // Waits up to two seconds for a file that another program has locked.
    void Open(const QString& vsConnection);

    // Stores `select` in vsSQL and gives its first row; the record set is closed again on return.
    // A missing row faults.
    Record Read(const QString& select);

    // Executes one complete statement at once, by itself. What it changed is on disk for good when
    // Close has returned; a crash or a power cut before that leaves a whole file that holds the
    // statements up to some point.
    void Execute(const QString& statement);

    // No effect when closed. Faults when what was written cannot be brought to the disk; it is
    // closed all the same.
    void Close();

    // Closes and gives up the connection and record set objects; the next access makes new ones.
    void Release();

    bool isOpen() const;
    const QString& lastSelect() const { return vsSQL; }

  private:
    Connection& opened();

    std::unique_ptr<Connection> adoConnection;
    std::unique_ptr<Recordset> adoRecordset;
    QString vsSQL;
};

// Opens the database and makes sure that it is closed on every way out. The straight way out
// calls Close (or Release) itself, so that its faults are seen; this one closes in silence.
class Access {
  public:
    Access(SettingsDatabase& database, const QString& vsConnection);
    ~Access();
    Access(const Access&) = delete;
    Access& operator=(const Access&) = delete;

  private:
    SettingsDatabase& database_;
};

}  // namespace tarnwick::settings
