#include "settings/settings_database.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "runtime/fault.h"
#include "runtime/file_names.h"
#include "settings/connection.h"
#include "settings/recordset.h"

namespace tarnwick::settings {

SettingsDatabase::SettingsDatabase() = default;
SettingsDatabase::~SettingsDatabase() {
    adoRecordset.reset();
    try {
        Close();
    } catch (const runtime::Fault&) {
        // A destructor has nobody to report it to.
    }
}

void SettingsDatabase::Open(const QString& vsConnection) {
    if (!adoConnection) adoConnection = std::make_unique<Connection>();
    adoConnection->Open(vsConnection);
}

Connection& SettingsDatabase::opened() {
    if (!isOpen())
        throw runtime::Fault(QStringLiteral("Operation is not allowed when the object is closed."));
    return *adoConnection;
}

Record SettingsDatabase::Read(const QString& select) {
    vsSQL = select;
    const Connection& connection = opened();
    if (!adoRecordset) adoRecordset = std::make_unique<Recordset>();
    adoRecordset->Open(vsSQL, connection);
    const auto close = qScopeGuard([this] { adoRecordset->Close(); });
    return adoRecordset->Fields();
}

void SettingsDatabase::Execute(const QString& statement) { opened().Execute(statement); }

void SettingsDatabase::Close() {
    if (adoConnection) adoConnection->Close();
}

void SettingsDatabase::Release() {
    adoRecordset.reset();
    const std::unique_ptr<Connection> released = std::move(adoConnection);
    if (released) released->Close();
}

bool SettingsDatabase::isOpen() const { return adoConnection && adoConnection->isOpen(); }

int whyNotWritable(const QString& vsConnection) {
    const std::filesystem::path file = runtime::pathOf(databaseFile(vsConnection));
    for (const auto& [place, mode] :
         {std::pair(file, W_OK), std::pair(file.parent_path(), W_OK | X_OK)})
        if (::faccessat(AT_FDCWD, place.c_str(), mode, AT_EACCESS) != 0) return errno;
    return 0;
}

Access::Access(SettingsDatabase& database, const QString& vsConnection) : database_(database) {
    database_.Open(vsConnection);
}

Access::~Access() {
    try {
        database_.Close();
    } catch (const runtime::Fault&) {
        // Only reached while another fault is being thrown, and that one is reported.
    }
}

}  // namespace tarnwick::settings
