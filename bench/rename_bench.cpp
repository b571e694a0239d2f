#include <benchmark/benchmark.h>

#include <QApplication>
#include <fstream>

#include "forms/frm_rename_wiz.h"
#include "reference.h"
#include "rename/rename_wizard.h"
#include "support/scripted_ports.h"

// The Rename Wizard in its window off-screen: renaming files, and typing in the filter.

namespace tarnwick::bench {
namespace {

namespace fs = std::filesystem;

constexpr int kMostFiles = 300;
constexpr int kFilesOfABigFolder = 20000;

// A folder of empty files, "take00000.wav" and so on.
class Folder {
  public:
    explicit Folder(int files) : files_(files) { fill(); }

    fs::path path() const { return folder_.path().toStdString(); }
    void fill() const {
        fs::remove_all(path());
        fs::create_directory(path());
        for (int i = 0; i < files_; ++i) {
            const QString name = QStringLiteral("take%1.wav").arg(i, 5, 10, QLatin1Char('0'));
            std::ofstream(path() / name.toStdString()) << name.toStdString();
        }
    }

  private:
    const int files_;
    QTemporaryDir folder_;
};

// The window of the real wizard.
struct Wizard {
    int argc = 1;
    char name[6] = "bench";
    char* argv[2] = {name, nullptr};
    QApplication program{argc, argv};
    test::FailureDesk desk;
    test::ScriptedDialog cmdlg;
    platform::Disk files;
    runtime::ProcessState state;
    forms::frmRenameWiz form;
    rename::RenameWizard* wizard = new rename::RenameWizard(form, {.failure = desk.failure,
                                                                   .state = state,
                                                                   .boxes = desk.boxes,
                                                                   .cmdlg = cmdlg,
                                                                   .files = files,
                                                                   .notices = desk.notices,
                                                                   .openWorkbook = {}});

    explicit Wizard(const Folder& folder) {
        form.show();
        wizard->setFolder(QString::fromStdString(folder.path()));
        QApplication::processEvents();
    }
};

void offScreen() { qputenv("QT_QPA_PLATFORM", "offscreen"); }

void giveNames(benchmark::State& state) {
    offScreen();
    const Folder ours(kMostFiles), theirs(kMostFiles);
    Wizard wizard(ours);
    Race race("perl", "cd " + quoted(theirs.path()) + R"( && perl -e 'rename $_, "p_$_" for <*>')",
              [&] {
                  ours.fill();
                  theirs.fill();
                  wizard.form.cbRemoveAll->click();
                  wizard.form.txbFileExtFilter->setText(QStringLiteral("*"));
                  wizard.form.txbFileExtFilter->setText(QStringLiteral("*.*"));
                  wizard.form.cbAddAll->click();
                  wizard.form.txbAddPrefix->setText(QStringLiteral("p_"));
                  wizard.form.cbPreview->click();
                  QApplication::processEvents();
              });
    for (auto _ : state)
        race.round(state, [&] {
            wizard.form.cbRename->click();
            QApplication::processEvents();
            if (!fs::exists(ours.path() / "p_take00299.wav")) state.SkipWithError("not renamed");
        });
    race.report(state);
}
BENCHMARK(giveNames)->Name("rename/300 files")->Unit(benchmark::kMillisecond)->UseManualTime();

// Measures each key of "*.*" and "take1*.wav" separately, until the lists are drawn.
void typeFilter(benchmark::State& state) {
    offScreen();
    const Folder folder(kFilesOfABigFolder);
    Wizard wizard(folder);
    Race race("ls", "ls " + quoted(folder.path()) + " | grep -ci '^take1.*wav$' >/dev/null");
    const QString keys = QStringLiteral("*.*;take1*.wav");
    double slowest = 0.0;
    qsizetype typed = 0;
    for (auto _ : state) {
        typed = typed % keys.size() + 1;
        race.round(state, [&] {
            const auto start = std::chrono::steady_clock::now();
            wizard.form.txbFileExtFilter->setText(keys.left(typed));
            QApplication::processEvents();
            const std::chrono::duration<double> key = std::chrono::steady_clock::now() - start;
            slowest = std::max(slowest, key.count() * 1e3);
        });
    }
    state.counters["slowest_ms"] = slowest;
    race.report(state);
}
BENCHMARK(typeFilter)
    ->Name("rename/a key in the filter of 20,000 files")
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(56);

}  // namespace
}  // namespace tarnwick::bench
