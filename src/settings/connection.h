#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

namespace tarnwick::settings {

// A connection to the provider: opens the encrypted file, executes statements, closes.
// Every failure is a runtime::Fault with the provider's description; the detail is the file and
// what is wrong with it.
class Connection {
  public:
    Connection() = default;
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    void Open(const QString& connectionString);
    void Execute(const QString& statement);
    void Close();
    bool isOpen() const { return database_ != nullptr; }

  private:
    friend class Recordset;

    struct StatementCloser {
        void operator()(sqlite3_stmt* statement) const;
    };
    using Statement = std::unique_ptr<sqlite3_stmt, StatementCloser>;

    Statement prepare(const QString& statement) const;
    bool step(const Statement& statement) const;  // true for a row, false at the end
    QByteArray journalMode(const char* pragma) const;
    void prepareToWrite();
    void drop();
    [[noreturn]] void fail() const;
    QString causeOf(int code) const;

    QString file_;  // full path, of the last Open
    sqlite3* database_ = nullptr;
    bool readyToWrite_ = false;
};

}  // namespace tarnwick::settings
