#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <thread>

#include "runtime/file_names.h"
#include "settings/connection.h"
#include "settings/quote.h"
#include "settings/recordset.h"
#include "settings/settings_database.h"
#include "settings/update_statement.h"
#include "support/fault_of.h"
#include "support/files.h"
#include "support/plain_user.h"

using namespace tarnwick;
using settings::Access;
using settings::Record;
using settings::SettingsDatabase;
using test::faultOf;

namespace {

// Each test works on a copy of the delivered database.
class SettingsDatabaseTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(QFile::copy(QStringLiteral(TARNWICK_SEED_DATABASE), file()));
    }
    QString file() const { return folder_.filePath(QStringLiteral("Tarnwick.mdb")); }
    QString connection() const { return settings::connectionString(folder_.path()); }
    Record admin(int row) {
        const Access access(database_, connection());
        return database_.Read(QStringLiteral("SELECT * FROM Admin WHERE F1 = %1").arg(row));
    }
    void execute(const QString& statement) {
        const Access access(database_, connection());
        database_.Execute(statement);
        database_.Close();
    }
    QStringList files() const { return QDir(folder_.path()).entryList(QDir::Files); }

    QTemporaryDir folder_;
    SettingsDatabase database_;
};

}  // namespace

TEST_F(SettingsDatabaseTest, DeliveredRowsAreTheFormDefaults) {
    const std::pair<int, QString> rows[] = {// the texts from F2; "-" is Null
                                            {12, "-,0,0,500,500,-26,300,50,-,-,-,-"},
                                            {13, "-,0,0.0,0,-,-,-,-,-,-,-,-"},
                                            {14, "-,1,0,5,2,1,,,,-,-,-"},
                                            {17, "1500,-35,150,50,32000,8,1,96,-,-,-,-"},
                                            {18, "0,101,195,1,0,0,1,0,1000,0,1,153"},
                                            {19, "1,ACME_,1000,5,,1,-,-,-,-,-,-"}};
    for (const auto& [row, texts] : rows) {
        const Record record = admin(row);
        QStringList found;
        for (int column = 2; column <= 13; ++column) {
            const QString name = QStringLiteral("F%1").arg(column);
            found << (record.isNull(name) ? QStringLiteral("-") : record.text(name));
        }
        EXPECT_EQ(found.join(u','), texts) << row;
    }
    const Access access(database_, connection());
    EXPECT_EQ(database_.Read("SELECT count(*) AS n FROM Silences").number("n"), 0);
    EXPECT_FALSE(test::contentOf(file()).contains("SQLite")) << "not encrypted";
}

TEST_F(SettingsDatabaseTest, ColumnsAreReadAsWhatTheReaderWants) {
    execute(
        "UPDATE Admin SET  F2 = 1.5, F3 = 'O''Hara', F4 = -0.25, F5 = '12', F6 = 'true', "
        "F7 = NULL, F8 = 3000000000, F9 = 2, F10 = 0 WHERE F1 = 19");
    const Record row = admin(19);
    EXPECT_EQ(row.text("F2"), "1.5");
    EXPECT_EQ(row.number("F2"), 2);
    EXPECT_EQ(row.text("f3"), "O'Hara");
    EXPECT_EQ(row.real("F4"), -0.25);
    EXPECT_EQ(row.number("F5"), 12);
    EXPECT_EQ(row.text("F8"), "3000000000");
    EXPECT_TRUE(row.isTrue("F6") && row.isTrue("F9"));
    EXPECT_FALSE(row.isTrue("F10") || row.isTrue("F3") || row.isTrue("F7"));
    EXPECT_EQ(faultOf([&] { row.text("F7"); }), "Invalid use of Null");
    EXPECT_EQ(faultOf([&] { row.number("F3"); }), "Type mismatch");
    EXPECT_EQ(faultOf([&] { row.real("F3"); }), "Type mismatch");
    EXPECT_EQ(faultOf([&] { row.number("F8"); }), "Overflow");
    EXPECT_TRUE(row.textOr("F7", "none") == "none" && row.textOr("F5", "none") == "12");
    execute("UPDATE Admin SET  F2 = 1, F3 = 2, F4 = 40000 WHERE F1 = 18");
    EXPECT_TRUE(admin(18).ticked("F2") && !admin(18).ticked("F3"));
    EXPECT_EQ(faultOf([&] { admin(18).ticked("F4"); }), "Overflow");
    for (const char* none : {"F14", ""})
        EXPECT_EQ(faultOf([&] { row.isNull(none); }),
                  "Item cannot be found in the collection corresponding to the requested name or "
                  "ordinal.");
}

TEST_F(SettingsDatabaseTest, AFaultHasTheFieldOrTheFileAsItsDetail) {
    const auto detailOf = [](auto&& call) {
        try {
            call();
        } catch (const runtime::Fault& fault) {
            return fault.detail();
        }
        return QString("no fault");
    };
    execute("UPDATE Admin SET  F3 = 'x', F4 = 40000, F8 = 3000000000 WHERE F1 = 18");
    const Record row = admin(18);
    EXPECT_EQ(detailOf([&] { row.number("F3"); }), "stored value F3 is \"x\"");
    EXPECT_EQ(detailOf([&] { row.real("F3"); }), "stored value F3 is \"x\"");
    EXPECT_EQ(detailOf([&] { row.ticked("F4"); }), "stored value F4 is \"40000\"");
    EXPECT_EQ(detailOf([&] { row.number("F8"); }), "stored value F8 is \"3000000000\"");
    EXPECT_EQ(detailOf([] { settings::UpdateStatement().number(u"1e999"); }),
              "the entry \"1e999\"");
    EXPECT_EQ(detailOf([&] {
                  const Access access(database_, connection());
                  database_.Execute("PRAGMA query_only = 1");
                  database_.Execute("DELETE FROM Silences");
              }),
              file() + " or its folder is write-protected");
    test::writeFile(file(), QByteArray(5000, 'x'));
    EXPECT_EQ(detailOf([&] { admin(17); }), file() + " is damaged");
    QFile::remove(file());
    EXPECT_EQ(detailOf([&] { admin(17); }), file() + " or its folder cannot be opened");
}

TEST_F(SettingsDatabaseTest, BadStatementsFaultAndChangeNothing) {
    for (const char* statement : {"UPDATE Admin SET  F3 = 'O'Hara' WHERE F1 = 19",
                                  "UPDATE Admin SET  F3 = ''; DELETE FROM Admin; --' WHERE F1 = 19",
                                  "UPDATE Admin SET  F3 = twelve WHERE F1 = 19", ""})
        EXPECT_NE(faultOf([&] { execute(statement); }), "none") << statement;
    EXPECT_EQ(admin(19).text("F3"), "ACME_");
    execute("UPDATE Admin SET  F3 = 'x' WHERE F1 = 20");  // no such row: nothing happens
    EXPECT_TRUE(faultOf([&] { admin(20); }).startsWith("Either BOF or EOF is True"));
    EXPECT_FALSE(database_.isOpen());
    EXPECT_EQ(database_.lastSelect(), "SELECT * FROM Admin WHERE F1 = 20");
}

TEST(UpdateStatement, IsPutTogetherToTheBlank) {
    EXPECT_EQ(
        settings::UpdateStatement()
            .number(u" -0.50 dB")
            .number(u"")
            .boolean(true)
            .quoted("Hara -- ")
            .quotedDoubled("O'Hara")
            .boolean(false)
            .where(u" WHERE F1 = 19"),
        "UPDATE Admin SET  F2 = -0.5, F3 = 0, F4 = 1, F5 = 'Hara -- ', F6 = 'O''Hara', F7 = 0 "
        "WHERE F1 = 19");
    EXPECT_EQ(faultOf([] { settings::UpdateStatement().quoted("' || '"); }),
              "Syntax error in string '' || ''.");
    EXPECT_EQ(settings::UpdateStatement(3).integer(7).where(u"  WHERE F1 = 12"),
              "UPDATE Admin SET  F3 = 7  WHERE F1 = 12");
    EXPECT_EQ(faultOf([] { settings::UpdateStatement().number(u"1e999"); }), "Overflow");
}

TEST_F(SettingsDatabaseTest, ATypedEntryIsANumberOrNoStatement) {
    const std::pair<const char*, const char*> entries[] = {
        {"500", "500"},      {" -2.50 ", "-2.5"}, {"+.5e1", "5"},    {"1e999", "Overflow"},
        {"", nullptr},       {"abc", nullptr},    {"0x10", nullptr}, {"1, F4 = 1", nullptr},
        {"5 -- x", nullptr}, {"5;", nullptr},     {"1,5", nullptr},  {"NULL", nullptr}};
    for (const auto& [entry, expected] : entries) {
        const QString stored = test::resultOf([&, typed = entry] {
            execute(settings::UpdateStatement(3).asTyped(typed).where(u"  WHERE F1 = 12"));
            return admin(12).text("F3");
        });
        const QString refusal = QStringLiteral("Syntax error in number '%1'.").arg(entry);
        EXPECT_EQ(stored, expected == nullptr ? refusal : expected);
    }
}

TEST_F(SettingsDatabaseTest, RefusesWhatIsNotTheDatabase) {
    const QString good = connection();
    QString wrong = good;
    wrong.chop(1);
    EXPECT_EQ(faultOf([&] { database_.Open(wrong); }), "file is encrypted or is not a database");
    EXPECT_FALSE(database_.isOpen());
    EXPECT_NE(faultOf([&] { database_.Execute("DELETE FROM Silences"); }), "none");
    database_.Open(good);
    EXPECT_NE(faultOf([&] { database_.Open(good); }), "none");
    EXPECT_TRUE(database_.isOpen());
    database_.Release();
    EXPECT_FALSE(database_.isOpen());
    database_.Open(good);
    database_.Execute("BEGIN IMMEDIATE");
    EXPECT_NE(faultOf([&] { database_.Close(); }), "none") << "a transaction that does not end";
    EXPECT_FALSE(database_.isOpen());
    for (const QByteArray& content : {QByteArray(), QByteArray(5000, 'x')}) {
        test::writeFile(file(), content);
        EXPECT_NE(faultOf([&] { admin(17); }), "none") << content.size();
    }
    QFile::remove(file());
    EXPECT_EQ(faultOf([&] { database_.Open(good); }), "unable to open database file");
    EXPECT_FALSE(QFile::exists(file()));
}

TEST_F(SettingsDatabaseTest, IsFoundInAnyFolder) {
    for (const std::string name :
         {"l\xc3\xa4nge", "a\xff\xc3", "a;b", "Database Password=", "a;Database Password=x", ";",
          "=", "\"", "\"a\";'b'", "\";Data Source=/", " ", "%1\n"}) {
        const std::filesystem::path folder = folder_.path().toStdString() + '/' + name;
        std::filesystem::create_directory(folder);
        std::filesystem::copy_file(file().toStdString(), folder / "Tarnwick.mdb");
        const QString found = test::resultOf([&] {
            const Access access(
                database_, settings::connectionString(runtime::textOfFileName(folder.native())));
            database_.Execute("UPDATE Admin SET  F2 = 1600 WHERE F1 = 17");
            return database_.Read("SELECT * FROM Admin WHERE F1 = 17").text("F2");
        });
        EXPECT_EQ(found, "1600") << name;
        std::filesystem::remove_all(folder);  // Qt would leave it behind
    }
}

TEST_F(SettingsDatabaseTest, ARecordSetThatIsNotOpenHasNoRow) {
    settings::Connection open;
    open.Open(connection());
    settings::Recordset rows;
    rows.Open("SELECT 7 AS n", open);
    EXPECT_EQ(rows.Fields().number("n"), 7);
    EXPECT_NE(faultOf([&] { rows.Open("SELECT", open); }), "none");
    EXPECT_TRUE(faultOf([&] { rows.Fields(); }).startsWith("Either BOF or EOF is True"));
}

TEST_F(SettingsDatabaseTest, TwoCopiesShareTheFileAndASaveWaitsForAnother) {
    SettingsDatabase other;
    other.Open(connection());
    EXPECT_EQ(other.Read("SELECT * FROM Admin WHERE F1 = 17").text("F2"), "1500");
    execute("UPDATE Admin SET  F2 = 1600 WHERE F1 = 17");
    EXPECT_EQ(other.Read("SELECT * FROM Admin WHERE F1 = 17").text("F2"), "1600");
    other.Execute("UPDATE Admin SET  F3 = -40 WHERE F1 = 17");
    EXPECT_EQ(admin(17).text("F2") + admin(17).text("F3"), "1600-40") << "held by no crash";
    EXPECT_TRUE(files().contains("Tarnwick.mdb-wal")) << "the quick journal";
    other.Close();
    EXPECT_EQ(files(), QStringList{"Tarnwick.mdb"});
    other.Open(connection());
    other.Execute("BEGIN IMMEDIATE");
    EXPECT_TRUE(files().contains("Tarnwick.mdb-wal")) << "also after it was closed";
    std::thread end([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        other.Execute("COMMIT");
    });
    EXPECT_EQ(faultOf([&] { execute("UPDATE Admin SET  F2 = 1600 WHERE F1 = 17"); }), "none");
    end.join();
}

// As a killed process leaves it: the log stands beside the file.
TEST_F(SettingsDatabaseTest, ALeftLogIsInForceAndFoldedIn) {
    const QTemporaryDir left;
    SettingsDatabase other;
    other.Open(connection());
    other.Execute("UPDATE Admin SET  F2 = 1600 WHERE F1 = 17");
    for (const QString& name : files())
        QFile::copy(folder_.filePath(name), left.filePath(name));
    const Access access(database_, settings::connectionString(left.path()));
    EXPECT_EQ(database_.Read("SELECT * FROM Admin WHERE F1 = 17").text("F2"), "1600");
    database_.Close();
    EXPECT_EQ(QDir(left.path()).entryList(QDir::Files), QStringList{"Tarnwick.mdb"});
}

TEST_F(SettingsDatabaseTest, AReadOnlyDatabaseFailsOnTheFirstSaveOnly) {
    // After saves, also one by somebody who does not close.
    execute("UPDATE Admin SET  F2 = 1600 WHERE F1 = 17");
    {
        SettingsDatabase unclosed;
        unclosed.Open(connection());
        unclosed.Execute("UPDATE Admin SET  F2 = 1500 WHERE F1 = 17");
    }
    for (const bool folderToo : {false, true}) {
        ASSERT_EQ(chmod(qPrintable(file()), folderToo ? 0666 : 0444), 0);
        ASSERT_EQ(chmod(qPrintable(folder_.path()), folderToo ? 0555 : 0777), 0);
        auto user = std::make_unique<test::PlainUser>();
        const QString read = faultOf([&] { admin(17); });
        const QString written = faultOf([&] { execute("UPDATE Admin SET  F2 = 9 WHERE F1 = 17"); });
        const int why = settings::whyNotWritable(connection());
        user.reset();
        EXPECT_EQ(read, "none") << folderToo;
        EXPECT_NE(written, "none") << folderToo;
        EXPECT_EQ(why, EACCES) << folderToo;
    }
    ASSERT_EQ(chmod(qPrintable(folder_.path()), 0755), 0);
    EXPECT_EQ(settings::whyNotWritable(connection()), 0);
    EXPECT_EQ(admin(17).text("F2"), "1500");
}

TEST(SettingsText, TheFileIsBesideTheExecutableAndApostrophesAreDoubled) {
    EXPECT_EQ(settings::connectionString("/opt/a=b"),
              "Provider=SQLCipher;Data Source=/opt/a=b/Tarnwick.mdb;Database Password=t9c27p5");
    EXPECT_EQ(settings::connectionString("/"),
              "Provider=SQLCipher;Data Source=/Tarnwick.mdb;Database Password=t9c27p5");
    EXPECT_TRUE(settings::connectionString("/a;\"b\"/")
                    .contains(";Data Source=\"/a;\"\"b\"\"/Tarnwick.mdb\";"));
    for (const char* bad : {"x", "a=b;x", "a=\"b", "a=\"b\"c", "a=\"\"\"", "b=a"})
        EXPECT_EQ(faultOf([&] { settings::partOf(bad, "a"); }), "Invalid connection string.")
            << bad;
    EXPECT_EQ(settings::partOf("a=;b=\"\";c=\"\"\"\"", "c"), "\"");
    EXPECT_EQ(settings::partOf("a=x;b=a", "a"), "x");
    EXPECT_EQ(settings::Quote_Doubled("it's ''"), "it''s ''''");
}
