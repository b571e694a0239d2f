#include "settings/connection.h"

#include <sqlite3.h>

#include "runtime/fault.h"
#include "runtime/file_names.h"
#include "settings/cipher.h"
#include "settings/connection_string.h"

namespace tarnwick::settings {

namespace {

constexpr int kLockedFileWaitMs = 2000;

}  // namespace

void Connection::StatementCloser::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Connection::~Connection() { drop(); }

void Connection::drop() {
    sqlite3_close(database_);
    database_ = nullptr;
    readyToWrite_ = false;
}

// What an error code of the database means for the file, in words that follow its name.
QString Connection::causeOf(int code) const {
    switch (code & 0xff) {
        case SQLITE_READONLY:
            return QStringLiteral(" or its folder is write-protected");
        case SQLITE_CANTOPEN:
            return QStringLiteral(" or its folder cannot be opened");
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return QStringLiteral(" is in use by another program");
        case SQLITE_NOTADB:
        case SQLITE_CORRUPT:
            return QStringLiteral(" is damaged");
        default:
            return {};
    }
}

void Connection::fail() const {
    throw runtime::Fault(
        QString::fromUtf8(sqlite3_errmsg(database_)),
        runtime::readableFileName(file_) + causeOf(sqlite3_extended_errcode(database_)));
}

void Connection::Open(const QString& connectionString) {
    if (isOpen())
        throw runtime::Fault(QStringLiteral("Operation is not allowed when the object is open."));
    file_ = databaseFile(connectionString);
    const QString password = partOf(connectionString, QStringLiteral("Database Password"));
    const int code = sqlite3_open_v2(runtime::bytesOfFileName(file_).c_str(), &database_,
                                     SQLITE_OPEN_READWRITE, nullptr);
    try {
        if (code != SQLITE_OK) fail();
        sqlite3_busy_timeout(database_, kLockedFileWaitMs);
        if (applyKey(database_, password.toUtf8()) != SQLITE_OK) fail();
        // The provider checks the key only when something is read.
        step(prepare(QStringLiteral("SELECT count(*) FROM sqlite_master")));
    } catch (...) {
        drop();
        throw;
    }
}

Connection::Statement Connection::prepare(const QString& statement) const {
    const QByteArray utf8 = statement.toUtf8();
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    if (sqlite3_prepare_v2(database_, utf8.constData(), static_cast<int>(utf8.size()), &prepared,
                           &rest) != SQLITE_OK)
        fail();
    Statement result(prepared);
    // A second statement after the first is refused as well.
    const QByteArray tail = QByteArray(rest).trimmed();
    if (!result || !tail.isEmpty())
        throw runtime::Fault(QStringLiteral("Characters found after end of SQL statement."));
    return result;
}

bool Connection::step(const Statement& statement) const {
    const int code = sqlite3_step(statement.get());
    if (code != SQLITE_ROW && code != SQLITE_DONE) fail();
    return code == SQLITE_ROW;
}

QByteArray Connection::journalMode(const char* pragma) const {
    const Statement statement = prepare(QString::fromLatin1(pragma));
    if (!step(statement)) return {};
    return reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
}

// Each statement is its own transaction. With the rollback journal each would wait for the disk
// several times; the write-ahead log keeps them in order and waits only at the checkpoint in Close.
// If the log is not available (read-only folder, file in use by a reader), the statement runs on
// the slow journal or fails by itself.
void Connection::prepareToWrite() {
    if (readyToWrite_) return;
    readyToWrite_ = true;
    try {
        if (journalMode("PRAGMA journal_mode = WAL") == "wal")
            step(prepare(QStringLiteral("PRAGMA synchronous = NORMAL")));
    } catch (const runtime::Fault&) {
    }
}

void Connection::Execute(const QString& statement) {
    const Statement prepared = prepare(statement);
    prepareToWrite();
    while (step(prepared)) {
    }
}

// Leaves the file in the rollback journal mode, which also opens from a read-only folder. A log
// left by a killed process is checkpointed here, too. While another process has the file open, the
// log stays beside it, complete and valid on disk, until a later Close checkpoints it; so there is
// no need to wait here.
void Connection::Close() {
    if (!isOpen()) return;
    try {
        if (journalMode("PRAGMA journal_mode") == "wal") {
            step(prepare(QStringLiteral("PRAGMA synchronous = FULL")));
            const int code = sqlite3_wal_checkpoint_v2(database_, nullptr,
                                                       SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
            if (code != SQLITE_OK && code != SQLITE_BUSY && code != SQLITE_READONLY) fail();
            sqlite3_busy_timeout(database_, 0);
            sqlite3_exec(database_, "PRAGMA journal_mode = DELETE", nullptr, nullptr, nullptr);
        }
    } catch (...) {
        drop();
        throw;
    }
    drop();
}

}  // namespace tarnwick::settings
