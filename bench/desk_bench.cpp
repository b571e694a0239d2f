#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>

#include "documents/package_maker.h"
#include "documents/workbook.h"
#include "support/wait_until.h"
#include "support/whole_program.h"
#include "take.h"

// The operations that the operator waits for: reading a workbook, storing a scan, and everything
// from the menu item to the full list, in the real program off-screen.

namespace {

using namespace tarnwick;

QByteArray script(int rows) {
    QByteArray cells;
    for (int row = 1; row <= rows; ++row) {
        const QByteArray n = QByteArray::number(row);
        cells += "<row r=\"" + n + "\">";
        for (const char* column : {"A", "B"})
            cells += "<c r=\"" + QByteArray(column) + n +
                     "\" t=\"inlineStr\"><is><t>A prompt of some ten words, as scripts have them, "
                     "number " +
                     n + "</t></is></c>";
        cells += "</row>";
    }
    return zipOf(workbookParts(cells));
}

void readWorkbook(benchmark::State& state) {
    const QByteArray bytes = script(500);
    for (auto _ : state) {
        const auto book = documents::Workbook::fromBytes(bytes, QStringLiteral("script.xlsx"));
        for (int row = 1; row <= 500; ++row)
            for (int column = 1; column <= 2; ++column)
                benchmark::DoNotOptimize(book.sheet(1).text(row, column));
    }
}
BENCHMARK(readWorkbook)->Name("workbook of 500 rows")->Unit(benchmark::kMillisecond);

void storeScan(benchmark::State& state) {
    const QTemporaryDir folder;
    QFile::copy(QStringLiteral(TARNWICK_SEED_DATABASE), folder.filePath(u"Tarnwick.mdb"_qs));
    settings::SettingsDatabase database;
    for (auto _ : state) {
        const settings::Access access(database, settings::connectionString(folder.path()));
        database.Execute(u"DELETE FROM Silences"_qs);
        for (int i = 0; i < 500; ++i)
            database.Execute(
                u"INSERT INTO Silences(Nber, StartAt, FinishAt)VALUES (%1,%2,%3)"_qs.arg(i)
                    .arg(i * 7000)
                    .arg(i * 7000 + 1500));
        database.Release();
    }
}
BENCHMARK(storeScan)
    ->Name("scan of 500 silences stored")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// The program, started off-screen.
class RunningProgram {
  public:
    RunningProgram() {
        program_.desk.takeDatabase();
        program_.application.Sub_Main();
        form().txbSilence->setText(u"2200"_qs);  // fewer than 500 stretches
    }

    forms::frmMain& form() { return program_.form(); }

    // Loads `recording` with a script of 480 rows, until the list is full.
    void load(const QString& recording) {
        const QString folder = QFileInfo(recording).path();
        QFile workbook(folder + u"/script.xlsx"_qs);
        if (workbook.open(QIODevice::WriteOnly)) workbook.write(script(481));
        workbook.close();
        program_.cmdlg.path = recording;
        form().mnuLoadFiles->trigger();
        test::waitUntil([&] {
            return form().lvAudioDetails->topLevelItemCount() == 480 &&
                   form().txbCalculating->isHidden();
        });
    }

  private:
    static int& argumentCount() {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        static int count = 1;
        return count;
    }

    char name_[6] = "bench";
    char* arguments_[2] = {name_, nullptr};
    const QApplication qt_{argumentCount(), arguments_};
    test::WholeProgram program_;
};

// From triggering "Load Working Files..." to the full list, without the automatic backup and minus
// the seven hand-offs of 100 ms.
void menuToList(benchmark::State& state) {
    RunningProgram program;
    program.form().chBUSource->setChecked(false);
    for (auto _ : state) {
        const QTemporaryDir session;
        const QString recording = session.filePath(u"take.wav"_qs);
        QFile::link(QFile::decodeName(bench::take().c_str()), recording);
        QElapsedTimer clock;
        clock.start();
        program.load(recording);
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) / 1e9 - 0.7);
    }
}
BENCHMARK(menuToList)
    ->Name("menu item to full list, without hand-offs")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5);

// The longest time for which the event loop does not turn while an hour is loaded and saved with
// its automatic backup.
void stallOfBackup(benchmark::State& state) {
    RunningProgram program;
    for (auto _ : state) {
        const QTemporaryDir session(
            QFileInfo(QFile::decodeName(bench::outputFile().c_str())).path() + u"/stall-XXXXXX"_qs);
        const QString recording = session.filePath(u"take.wav"_qs);
        QFile::copy(QFile::decodeName(bench::take().c_str()), recording);
        const QDateTime copied = QFileInfo(recording).lastModified();
        qint64 longest = 0;
        QElapsedTimer sinceTurn;
        QTimer turns;
        QObject::connect(&turns, &QTimer::timeout, [&] {
            longest = std::max(longest, sinceTurn.nsecsElapsed());
            sinceTurn.start();
        });
        sinceTurn.start();
        turns.start(1);
        program.load(recording);
        test::waitUntil([&] { return QFileInfo(recording).lastModified() != copied; }, 60'000);
        state.SetIterationTime(static_cast<double>(longest) / 1e9);
    }
}
BENCHMARK(stallOfBackup)
    ->Name("stall while an hour is loaded and saved")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(3);

}  // namespace
