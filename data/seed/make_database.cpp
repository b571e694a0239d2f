#include <openssl/rand.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "seed_values.h"
#include "settings/cipher.h"

// Makes the settings database that is delivered beside the executable.
// Usage: tarnwick_seed <file>. An existing file is replaced. The bytes are the same in every build.

namespace {

using namespace tarnwick;

std::string literal(const seed::Value& value) {
    if (const int* number = std::get_if<int>(&value)) return std::to_string(*number);
    if (const char* const* text = std::get_if<const char*>(&value))
        return std::string(1, '\'').append(*text).append(1, '\'');
    return "NULL";
}

// Only F1 of Admin has a type, so the provider returns the other values as they were written: a
// text stays a text.
std::string statements() {
    std::string sql = "BEGIN; CREATE TABLE Admin(F1 INTEGER PRIMARY KEY";
    for (int column = 2; column < 2 + seed::kColumns; ++column)
        sql += ", F" + std::to_string(column);
    sql += "); CREATE TABLE Silences(Nber INTEGER, StartAt INTEGER, FinishAt INTEGER);";
    for (const seed::AdminRow& row : seed::kAdminRows) {
        sql += "INSERT INTO Admin VALUES (" + std::to_string(row.number);
        for (const seed::Value& value : row.values)
            sql.append(", ").append(literal(value));
        sql += ");";
    }
    return sql + "COMMIT;";
}

int repeatedBytes(unsigned char* bytes, int count) {
    static std::mt19937 generator;
    std::generate_n(bytes, count, [] { return generator() & 0xffu; });
    return 1;
}

// The provider draws the salt of the file and the start value of each page from OpenSSL. In this
// tool the draws repeat, so that a package can be built again byte for byte. That gives nothing
// away: the password is the same everywhere, and the program writes pages with start values of its
// own.
void repeatRandomBytes() {
    static RAND_METHOD method{};
    method.bytes = repeatedBytes;
    method.status = [] { return 1; };
    RAND_set_rand_method(&method);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: tarnwick_seed <file>\n");
        return 2;
    }
    repeatRandomBytes();
    std::remove(argv[1]);
    sqlite3* database = nullptr;
    int code = sqlite3_open(argv[1], &database);
    if (code == SQLITE_OK) code = settings::applyKey(database, settings::kDatabasePassword);
    if (code == SQLITE_OK)
        code = sqlite3_exec(database, statements().c_str(), nullptr, nullptr, nullptr);
    if (code != SQLITE_OK)
        std::fprintf(stderr, "tarnwick_seed: %s: %s\n", argv[1], sqlite3_errmsg(database));
    sqlite3_close(database);
    return code == SQLITE_OK ? 0 : 1;
}
