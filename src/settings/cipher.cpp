#define SQLITE_HAS_CODEC 1
#include "settings/cipher.h"

#include <sqlite3.h>

namespace tarnwick::settings {

namespace {

// Rounds of the key derivation. The provider's default costs 60 ms at each opening and would not
// help, because the password is the same everywhere.
constexpr char kKeyDerivation[] = "PRAGMA kdf_iter = 4000";

}  // namespace

int applyKey(sqlite3* database, const QByteArray& password) {
    const int code = sqlite3_key(database, password.constData(), static_cast<int>(password.size()));
    if (code != SQLITE_OK) return code;
    return sqlite3_exec(database, kKeyDerivation, nullptr, nullptr, nullptr);
}

}  // namespace tarnwick::settings
