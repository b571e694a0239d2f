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
// procedure: accesses must not overlap, stay open across an event, or outlive main.
// Every failure is a runtime::Fault with the provider's own description. UI thread.
class SettingsDatabase {
  public:
    SettingsDatabase();
    ~SettingsDatabase();
    SettingsDatabase(const SettingsDatabase&) = delete;
    SettingsDatabase& operator=(const SettingsDatabase&) = delete;

    // `vsConnection`: from connectionString(). Makes the connection object if there is none.
    // Waits up to two seconds for a file that another program has locked.
    void Open(const QString& vsConnection);

    // Stores `select` in vsSQL and returns its first row; the record set is closed again on return.
    // Faults if there is no row.
    Record Read(const QString& select);

    // Executes one complete statement as its own transaction. Its changes are durable when Close
    // has returned; a crash or a power cut before that leaves an intact file with the statements up
    // to some point.
    void Execute(const QString& statement);

    // No effect if closed. Faults if the changes cannot be written to disk, but closes anyway.
    void Close();

    // Closes and deletes the connection and record set objects; the next access makes new ones.
    void Release();

    bool isOpen() const;
    const QString& lastSelect() const { return vsSQL; }

  private:
    Connection& opened();

    std::unique_ptr<Connection> adoConnection;
    std::unique_ptr<Recordset> adoRecordset;
    QString vsSQL;
};

// Why the file or its folder is not writable, as an errno value; 0 if both are. Does not detect a
// full disk or a file that is in use.
int whyNotWritable(const QString& vsConnection);

// Opens the database and makes sure that it is closed on every way out. On the normal way out the
// caller closes it itself with Close (or Release), so that faults are seen; the destructor ignores
// them.
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
