#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>

#include "desk.h"
#include "rename/file_dates.h"
#include "support/fault_of.h"
#include "support/text_table.h"

using namespace tarnwick;

namespace {

// In the time zone of a place where the clocks change.
struct Dates : test::RenameDesk {
    Dates() { inZone("Europe/Berlin"); }
    ~Dates() override { inZone(nullptr); }

    static void inZone(const char* zone) {
        zone != nullptr ? qputenv("TZ", zone) : qunsetenv("TZ");
        tzset();
    }
    static QDateTime at(const char* text) {
        const QDateTime time = QDateTime::fromString(QLatin1String(text), Qt::ISODate);
        return {time.date(), time.time(), Qt::LocalTime};
    }
    // With the time of access long ago, and a fraction of a second.
    void put(const QString& name, const char* date) const {
        RenameDesk::put({name});
        const timespec times[] = {{.tv_sec = 1000, .tv_nsec = 5},
                                  {.tv_sec = at(date).toSecsSinceEpoch(), .tv_nsec = 700'000'000}};
        ASSERT_EQ(utimensat(AT_FDCWD, in(name).toStdString().c_str(), times, 0), 0);
    }
    struct stat statusOf(const QString& name) const {
        struct stat state {};
        stat(in(name).toStdString().c_str(), &state);
        return state;
    }
    // The date of last modification, to the nanosecond; "touched" where another one changed.
    QString dateOf(const QString& name) const {
        const struct stat state = statusOf(name);
        if (state.st_atim.tv_sec != 1000 || state.st_atim.tv_nsec != 5) return u"touched"_qs;
        const QString fraction = state.st_mtim.tv_nsec == 0 ? QString() : u" and a bit"_qs;
        return QDateTime::fromSecsSinceEpoch(state.st_mtim.tv_sec).toString(Qt::ISODate) + fraction;
    }
    void choose() {
        wizard->setFolder(folder.path());
        form.cbAddAll->click();
    }
    void reDate(const QString& hours) {
        form.txbDateModified->setText(hours);
        form.cbReDatePreview->click();
        form.cbReDate->click();
    }
    QString state() const {
        const auto shown = [](const QPushButton* b) { return b->isHidden() ? u'-' : u'+'; };
        return QString(shown(form.cbReDatePreview)) + shown(form.cbReDateCancel) +
               shown(form.cbReDate) + form.txbDateModified->text() + u'|' + form.txbNewDate->text();
    }
};

TEST_F(Dates, AreShiftedOnTheClocksFace) {
    const char* const cases = R"(
2024-03-30T12:00:01|24|2024-03-31 12:00:01|2024-10-28T12:00:01|-48|2024-10-26 12:00:01|
2024-03-31T00:30:00|3|2024-03-31 03:30:00|2024-02-28T23:59:59|24|2024-02-29 23:59:59|
2024-01-01T00:00:00|1.5|2024-01-01 01:30:00|2024-01-01T00:00:00|0.0002|2024-01-01 00:00:01|
2024-01-01T00:00:00|-0.0001|2024-01-01 00:00:00|0100-01-01T01:00:00|-1|0100-01-01 00:00:00|
9999-12-31T22:59:59|1|9999-12-31 23:59:59|
0100-01-01T01:00:00|-2|Invalid procedure call or argument|
9999-12-31T22:59:59|2|Invalid procedure call or argument|
2024-01-01T00:00:00|-1e8|Invalid procedure call or argument|
2024-01-01T00:00:00|1e300|Overflow)";
    for (const QStringList& row : test::rowsOf(cases, 3))
        EXPECT_EQ(test::resultOf([&] {
                      return rename::textOfDate(
                          rename::shifted(at(qPrintable(row[0])), row[1].toDouble()));
                  }),
                  row[2])
            << qPrintable(row[0]);
}

TEST_F(Dates, TextsLeadToFilesDates) {
    put(u"a"_qs, "2020-01-01T00:00:00");
    const auto set = [&](const QString& text) {
        return rename::SetFileDateTime(files, in(u"a"_qs), text) ? dateOf(u"a"_qs) : u"no"_qs;
    };
    EXPECT_EQ(set(u"2024-07-01 01:02:03"_qs), u"2024-07-01T01:02:03");
    EXPECT_EQ(set(u"1969-12-31 23:59:58"_qs), u"1969-12-31T23:59:58");
    for (const QString& text : {u""_qs, u"no date"_qs, u"2024-02-30 00:00:00"_qs, u"2024-02-03"_qs})
        EXPECT_EQ(set(text), u"no") << text.toStdString();
    for (const QString& other : {in(u"b"_qs), folder.path()})
        EXPECT_FALSE(rename::SetFileDateTime(files, other, u"2024-07-01 01:02:03"_qs));
}

// Where the clocks change a time comes twice, and the first is meant, or not at all, and the one as
// much later is.
TEST_F(Dates, LeadToMomentsWhereTheClocksChange) {
    // Place, time there, and how many minutes it is ahead of Greenwich. In Dublin it is the
    // winter's time that is shifted.
    const char* const cases = R"(
Europe/Berlin|2024-03-31 01:59:59|60|Europe/Berlin|2024-03-31 02:30:00|60|
Europe/Berlin|2024-03-31 03:00:00|120|Europe/Berlin|2024-10-27 01:59:59|120|
Europe/Berlin|2024-10-27 02:00:00|120|Europe/Berlin|2024-10-27 02:30:00|120|
Europe/Berlin|2024-10-27 03:00:00|60|Europe/Dublin|2026-03-29 00:59:59|0|
Europe/Dublin|2026-03-29 01:30:00|0|Europe/Dublin|2026-03-29 02:00:00|60|
Europe/Dublin|2026-10-25 01:30:00|60|Europe/Dublin|2026-10-25 02:00:00|0|
Africa/Casablanca|2024-04-14 02:30:00|0|Africa/Casablanca|2024-03-10 02:30:00|60|
Australia/Lord_Howe|2024-10-06 02:15:00|630|Australia/Lord_Howe|2024-04-07 01:45:00|660|
Pacific/Apia|2011-12-30 12:00:00|-600|Pacific/Apia|2011-12-31 00:00:00|840|
America/New_York|2024-11-03 01:30:00|-240|UTC|2024-03-31 02:30:00|0)";
    put(u"a"_qs, "2020-01-01T00:00:00");
    for (const QStringList& row : test::rowsOf(cases, 3)) {
        inZone(qPrintable(row[0]));
        ASSERT_TRUE(rename::SetFileDateTime(files, in(u"a"_qs), row[1]));
        const qint64 ahead = 60 * row[2].toInt();
        const auto there =
            QDateTime::fromSecsSinceEpoch(statusOf(u"a"_qs).st_mtim.tv_sec + ahead, Qt::UTC);
        EXPECT_EQ(there.toString(u"yyyy-MM-dd HH:mm:ss"_qs), row[1]) << qPrintable(row[0]);
    }
}

TEST_F(Dates, PreviewShowsTheFirstAndReDateMovesEachFromItsOwn) {
    put(u"a"_qs, "2024-04-05T06:07:08");
    for (const QString& name : {u"b.wav"_qs, u"c.wav"_qs, u"d.wav"_qs})
        put(name, "2024-11-02T16:00:59");
    choose();
    form.txbDateModified->setText(u"-240"_qs);
    form.cbReDatePreview->click();
    EXPECT_EQ(state(), u"-++-240|03/26/2024  06:07:08");
    form.cbReDateCancel->click();
    EXPECT_EQ(state(), u"+--|");
    reDate(u"-240"_qs);
    EXPECT_EQ(state() + boxes(), u"+--|");
    EXPECT_EQ(dateOf(u"a"_qs), u"2024-03-26T06:07:08");
    EXPECT_EQ(dateOf(u"b.wav"_qs), u"2024-11-02T16:00:59 and a bit") << "no preview counted it";

    form.cbRemoveAll->click();
    form.lbxAvailableFiles->clear();
    form.lbxSelectedFiles->setNames({u"b.wav"_qs, u"c.wav"_qs});
    form.txbSearchFor->setText(u"x"_qs);
    form.txbReplaceWith->setText(u"y"_qs);
    form.cbPreview->click();
    form.cbCancel->click();
    form.lbxSelectedFiles->setNames({u"b.wav"_qs, u"c.wav"_qs, u"d.wav"_qs});
    reDate(u"-240.5"_qs);
    EXPECT_EQ(dateOf(u"b.wav"_qs), u"2024-10-23T15:30:59");
    EXPECT_EQ(dateOf(u"c.wav"_qs), u"2024-10-23T15:30:59");
    EXPECT_EQ(dateOf(u"d.wav"_qs), u"2024-11-02T16:00:59 and a bit");
    EXPECT_TRUE(endOf(form.cbRename).contains(u"to \"\"")) << "the table has no new names any more";
}

TEST_F(Dates, WhatCannotBeDoneIsTold) {
    form.cbReDatePreview->click();
    EXPECT_EQ(boxes() + state(), u"No file selected.+--|");
    put(u"a"_qs, "2024-04-05T06:07:08");
    choose();
    for (const QString& none : {u""_qs, u"ten"_qs, u"0"_qs}) {
        form.txbDateModified->setText(none);
        form.cbReDatePreview->click();
        EXPECT_EQ(boxes() + state(), u"No Hours indicated.+--|") << none.toStdString();
    }
    form.txbDateModified->setText(u"12abc"_qs);
    EXPECT_EQ(endOf(form.cbReDatePreview), u"Tarnwick|Type mismatch");
    form.txbDateModified->setText(u"1"_qs);
    form.cbReDatePreview->click();
    form.txbDateModified->setText(u"12abc"_qs);
    form.cbReDate->click();
    EXPECT_EQ(dateOf(u"a"_qs), u"2024-04-05T18:07:08");
    form.txbDateModified->setText(u"1"_qs);
    form.cbReDatePreview->click();
    form.lbxSelectedFiles->setNames({u"gone"_qs});
    EXPECT_EQ(endOf(form.cbReDate), u"Tarnwick|File not found");
    form.lbxSelectedFiles->clear();
    form.cbReDate->click();
    EXPECT_EQ(boxes() + state(), u"No file selected.+--1|04/05/2024  19:07:08");
}

}  // namespace
