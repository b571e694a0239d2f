#include <fcntl.h>
#include <sys/stat.h>

#include <ctime>

#include "desk.h"
#include "rename/file_dates.h"
#include "support/fault_of.h"

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
    // The moment of last modification.
    QString momentOf(const QString& name) const {
        struct stat state {};
        stat(in(name).toStdString().c_str(), &state);
        return QDateTime::fromSecsSinceEpoch(state.st_mtim.tv_sec, Qt::UTC).toString(Qt::ISODate);
    }
    // The date of last modification, to the nanosecond; "touched" where another one changed.
    QString dateOf(const QString& name) const {
        struct stat state {};
        stat(in(name).toStdString().c_str(), &state);
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
    const struct {
        const char* from;
        double hours;
        const char* text;
    } cases[] = {{"2024-03-30T12:00:01", 24, "2024-03-31 12:00:01"},
                 {"2024-10-28T12:00:01", -48, "2024-10-26 12:00:01"},
                 {"2024-03-31T00:30:00", 3, "2024-03-31 03:30:00"},
                 {"2024-02-28T23:59:59", 24, "2024-02-29 23:59:59"},
                 {"2024-01-01T00:00:00", 1.5, "2024-01-01 01:30:00"},
                 {"2024-01-01T00:00:00", 0.0002, "2024-01-01 00:00:01"},
                 {"2024-01-01T00:00:00", -0.0001, "2024-01-01 00:00:00"}};
    for (const auto& [from, hours, text] : cases)
        EXPECT_EQ(rename::textOfDate(rename::shifted(at(from), hours)), QLatin1String(text));
    const auto fault = [&](double hours) {
        return test::faultOf([&] { rename::shifted(at("2024-01-01T00:00:00"), hours); });
    };
    EXPECT_EQ(fault(1e8), u"Invalid procedure call or argument");
    EXPECT_EQ(fault(-1e8), u"Invalid procedure call or argument");
    EXPECT_EQ(fault(1e300), u"Overflow");
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
    EXPECT_FALSE(rename::SetFileDateTime(files, in(u"b"_qs), u"2024-07-01 01:02:03"_qs));
    EXPECT_FALSE(rename::SetFileDateTime(files, folder.path(), u"2024-07-01 01:02:03"_qs));
}

// Where the clocks change a time comes twice, and the first is meant, or not at all, and the one as
// much later is.
TEST_F(Dates, LeadToMomentsWhereTheClocksChange) {
    const struct {
        const char *zone, *date, *moment;
    } cases[] = {{"Europe/Berlin", "2024-03-31 01:59:59", "2024-03-31T00:59:59Z"},
                 {"Europe/Berlin", "2024-03-31 02:30:00", "2024-03-31T01:30:00Z"},
                 {"Europe/Berlin", "2024-03-31 03:00:00", "2024-03-31T01:00:00Z"},
                 {"Europe/Berlin", "2024-10-27 01:59:59", "2024-10-26T23:59:59Z"},
                 {"Europe/Berlin", "2024-10-27 02:00:00", "2024-10-27T00:00:00Z"},
                 {"Europe/Berlin", "2024-10-27 02:30:00", "2024-10-27T00:30:00Z"},
                 {"Europe/Berlin", "2024-10-27 03:00:00", "2024-10-27T02:00:00Z"},
                 // Here it is the winter's time that is shifted.
                 {"Europe/Dublin", "2026-03-29 00:59:59", "2026-03-29T00:59:59Z"},
                 {"Europe/Dublin", "2026-03-29 01:30:00", "2026-03-29T01:30:00Z"},
                 {"Europe/Dublin", "2026-03-29 02:00:00", "2026-03-29T01:00:00Z"},
                 {"Europe/Dublin", "2026-10-25 01:30:00", "2026-10-25T00:30:00Z"},
                 {"Europe/Dublin", "2026-10-25 02:00:00", "2026-10-25T02:00:00Z"},
                 {"Africa/Casablanca", "2024-04-14 02:30:00", "2024-04-14T02:30:00Z"},
                 {"Africa/Casablanca", "2024-03-10 02:30:00", "2024-03-10T01:30:00Z"},
                 {"Australia/Lord_Howe", "2024-10-06 02:15:00", "2024-10-05T15:45:00Z"},
                 {"Australia/Lord_Howe", "2024-04-07 01:45:00", "2024-04-06T14:45:00Z"},
                 {"Pacific/Apia", "2011-12-30 12:00:00", "2011-12-30T22:00:00Z"},
                 {"Pacific/Apia", "2011-12-31 00:00:00", "2011-12-30T10:00:00Z"},
                 {"America/New_York", "2024-11-03 01:30:00", "2024-11-03T05:30:00Z"},
                 {"UTC", "2024-03-31 02:30:00", "2024-03-31T02:30:00Z"}};
    put(u"a"_qs, "2020-01-01T00:00:00");
    for (const auto& [zone, date, moment] : cases) {
        inZone(zone);
        ASSERT_TRUE(rename::SetFileDateTime(files, in(u"a"_qs), QString::fromLatin1(date)));
        EXPECT_EQ(momentOf(u"a"_qs), QLatin1String(moment)) << zone << ' ' << date;
    }
}

TEST_F(Dates, PreviewShowsTheFirstAndReDateMovesEachFromItsOwn) {
    put(u"a"_qs, "2024-04-05T06:07:08");
    put(u"b.wav"_qs, "2024-11-02T16:00:59");
    put(u"c.wav"_qs, "2024-11-02T16:00:59");
    put(u"d.wav"_qs, "2024-11-02T16:00:59");
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
