#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>

#include "app/application.h"
#include "documents/package_maker.h"
#include "documents/workbook.h"
#include "engine/create_sound_editor.h"
#include "forms/frm_main.h"
#include "support/scripted_ports.h"
#include "support/wait_until.h"
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

// From triggering "Load Working Files..." to the full list, without the automatic backup and minus
// the seven hand-offs of 100 ms. The pause is long enough to find fewer than 500 stretches.
void menuToList(benchmark::State& state) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int argc = 1;
    char name[] = "bench";
    char* argv[] = {name, nullptr};
    const QApplication program(argc, argv);
    test::FailureDesk desk;
    QFile::copy(QStringLiteral(TARNWICK_SEED_DATABASE), desk.folder.filePath(u"Tarnwick.mdb"_qs));
    test::ScriptedDialog cmdlg;
    test::ScriptedOpener opener;
    platform::Disk files;
    runtime::ProcessState process;
    settings::SettingsDatabase database;
    const auto createEditor = [] { return engine::createSoundEditor(); };
    app::NoticeBoard notices(desk.clock);
    const app::Services services{.failure = desk.failure,
                                 .state = process,
                                 .database = database,
                                 .boxes = desk.boxes,
                                 .cmdlg = cmdlg,
                                 .batchDialog = cmdlg,
                                 .renameDialog = cmdlg,
                                 .files = files,
                                 .notices = notices,
                                 .opener = opener,
                                 .clock = desk.clock,
                                 .createEDT = createEditor,
                                 .createEDTX = createEditor,
                                 .notifyDesktop = [](const QString&) {},
                                 .endProcess = [] {}};
    app::Application application(services);
    application.Sub_Main();
    forms::frmMain& form = application.mainForm();
    form.chBUSource->setChecked(false);
    form.txbSilence->setText(u"2200"_qs);
    for (auto _ : state) {
        const QTemporaryDir session;
        cmdlg.path = session.filePath(u"take.wav"_qs);
        QFile::link(QFile::decodeName(bench::take().c_str()), cmdlg.path);
        QFile workbook(session.filePath(u"script.xlsx"_qs));
        if (workbook.open(QIODevice::WriteOnly)) workbook.write(script(481));
        workbook.close();
        QElapsedTimer clock;
        clock.start();
        form.mnuLoadFiles->trigger();
        test::waitUntil([&] {
            return form.lvAudioDetails->topLevelItemCount() == 480 &&
                   form.txbCalculating->isHidden();
        });
        state.SetIterationTime(static_cast<double>(clock.nsecsElapsed()) / 1e9 - 0.7);
    }
}
BENCHMARK(menuToList)
    ->Name("menu item to full list, without hand-offs")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(5);

}  // namespace
