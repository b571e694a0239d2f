#include <QDirIterator>

#include "forms/frm_batch_processor.h"
#include "forms/frm_rename_wiz.h"
#include "forms/name_list.h"
#include "journey.h"
#include "support/failing_calls.h"
#include "support/wav_samples.h"

using namespace tarnwick;
using test::operator+;

namespace {

constexpr int kRows = 6;
constexpr int kSteps = 4;                    // load and edits, export, batch, rename
constexpr int kPatienceMs = 6000;            // for a step that may never end because a call failed
const QString kNames = u"zz_names.xlsx"_qs;  // sorts after the script, which the load takes

int fromEnvironment(const char* name, int otherwise) {
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : otherwise;
}

// One call in so many fails.
const auto kOneIn = static_cast<unsigned>(fromEnvironment("TARNWICK_FAULTS_ONE_IN", 50));

// Runs a whole session while system calls below its folder fail at random. The parameter is the
// seed; tests/app/faults runs as many seeds as requested.
struct Faults : test::Launched, testing::WithParamInterface<int> {
    QByteArray recording, script;
    std::optional<test::FailingCalls> failing;

    void prepare() {
        test::Samples take = test::wave(300, 100);
        for (int i = 0; i < kRows; ++i)
            take = take + test::wave(600 + 40 * i, 9000 + i) + test::wave(1900, 90);
        recording = test::wavFile(take);
        write(u"take.wav"_qs, recording);
        writeScript(kRows + 1);  // the first row is the header
        script = read(u"script.xlsx"_qs);
        Rows names;
        for (int i = 0; i < kRows; ++i)
            names.push_back({prompt(i), renamed(i)});
        write(kNames, zipOf(workbookParts(cellsOf(names))));
    }
    static QString prompt(int i) { return u"Prompt %1.wav"_qs.arg(i + 2); }
    static QString renamed(int i) { return u"Take %1.wav"_qs.arg(i + 2); }

    // Whether a notice, a quiet note or a box names the file.
    bool named(const QString& file) {
        const QString bare = file.chopped(4);
        for (const app::NoticeBoard::Entry& entry : notices.entries())
            if ((entry.notice.what + entry.notice.safe + entry.notice.files.join(u'\n'))
                    .contains(bare))
                return true;
        return desk.boxes.shown.join(u'\n').contains(bare);
    }
    // All notices and boxes, for the message of a failure.
    std::string told() {
        QStringList lines = desk.boxes.shown;
        for (const app::NoticeBoard::Entry& entry : notices.entries())
            lines << sentencesOf(entry) + u" ["_qs + entry.notice.files.join(u", ") + u']';
        return lines.join(u'\n').toStdString();
    }
    // Every file below the session, by its path in it.
    std::map<QString, QByteArray> tree() const {
        std::map<QString, QByteArray> all;
        QDirIterator next(session.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (next.hasNext()) {
            const QString path = next.next();
            all[path.mid(session.path().size() + 1)] = test::contentOf(path);
        }
        return all;
    }

    bool calm() {
        return test::waitUntil(
            [&] {
                return form().lvAudioDetails->topLevelItemCount() == kRows &&
                       form().txbCalculating->isHidden() && EDT->SoundExportsPending() == 0;
            },
            kPatienceMs);
    }
    // The list was emptied for the edit and is filled again.
    bool edited(QPushButton* edit) {
        edit->click();
        return test::waitUntil([&] { return form().lvAudioDetails->topLevelItemCount() == 0; },
                               kPatienceMs) &&
               calm();
    }
    // Expects the recording on the disk to be the sound in the window, or a notice to name it.
    void expectSaved(const char* after) {
        const qsizetype samples =
            std::ssize(test::samplesOf(in(u"take.wav"_qs))) * 1000 / test::kRate;
        if (std::abs(samples - EDT->GetSoundDuration()) > 1) {
            EXPECT_TRUE(named(u"take.wav"_qs)) << after << '\n' << told();
        }
    }
    bool loadAndEdit() {
        load();
        if (!calm()) return false;
        expectSaved("the load");
        if (!edited(form().cbInsertSilence)) return false;
        expectSaved("an edit");
        if (!edited(form().cbUndo)) return false;
        expectSaved("an undo");
        return true;
    }
    bool exportAll() {
        form().mnuExport->trigger();
        if (!test::waitUntil([&] { return !form().isVisible(); }, kPatienceMs)) return false;
        for (int i = 0; i < kRows; ++i)
            if (!files.FileExists(in(prompt(i)))) {
                EXPECT_TRUE(named(prompt(i))) << "export of " << i << '\n' << told();
            }
        return true;
    }
    bool processAll() {
        auto& window = *find<forms::frmBatchProcessor>();
        window.opFrequency[4]->setChecked(true);
        window.opChannel[0]->setChecked(true);
        const QStringList sources = files.list(session.path(), u"*.wav"_qs);
        if (sources.isEmpty()) return false;
        window.cbProcess->click();
        const bool ended = test::waitUntil(
            [&] { return window.lbConversion->text().contains(u"Have Been Processed"); },
            kPatienceMs);
        for (const QString& name : sources)
            if (!files.FileExists(in(name))) {
                EXPECT_TRUE(named(name)) << "batch of " << name.toStdString() << '\n' << told();
            }
        window.parentWidget()->close();
        return ended;
    }
    void renameAll() {
        renameDialog.path = in(kNames);
        form().mnuRenameWizard->trigger();
        find<forms::frmRenameWiz>()->cbRenamePerList->click();
        for (int i = 0; i < kRows; ++i)
            if (!files.FileExists(in(renamed(i)))) {
                EXPECT_TRUE(named(kNames)) << "rename of " << i << '\n' << told();
            }
    }
    // Runs the steps of a session until one does not come to its end; calls fail from step `first`
    // on. Returns how many steps came to their end.
    int work(int first) {
        const std::function<bool()> steps[] = {
            [this] { return loadAndEdit(); }, [this] { return exportAll(); },
            [this] { return processAll(); }, [this] { return renameAll(), true; }};
        int done = 0;
        for (const auto& step : steps) {
            if (done == first) failing.emplace(session.path().toStdString(), kOneIn, GetParam());
            if (!step()) break;
            ++done;
        }
        return done;
    }
};

TEST_P(Faults, EveryMissingFileIsNamedAndNothingIsLost) {
    prepare();
    int steps = 0;
    try {
        steps = work(GetParam() % kSteps);
    } catch (const test::ProcessEnded&) {  // a fault box, which names its file
    }
    const QStringList failures = failing ? failing->failed() : QStringList();
    failing.reset();
    RecordProperty("steps", steps);
    RecordProperty("failed calls", static_cast<int>(failures.size()));
    if (failures.isEmpty()) {
        EXPECT_EQ(steps, kSteps) << told();
    }
    SCOPED_TRACE("failed calls:\n" + failures.join(u'\n').toStdString());
    const auto all = tree();
    const auto kept = [&](const QByteArray& bytes) {
        return std::ranges::any_of(all, [&](const auto& file) { return file.second == bytes; });
    };
    EXPECT_TRUE(kept(recording)) << "the recording is lost";
    EXPECT_TRUE(kept(script)) << "the script is lost";
    for (const auto& [name, bytes] : all) {
        EXPECT_FALSE(name.section(u'/', -1).startsWith(u'.'))
            << "left behind: " << qPrintable(name);
        if (name.endsWith(u".wav")) {
            EXPECT_GT(test::samplesOf(in(name)).size(), 0U) << "half a file: " << qPrintable(name);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, Faults,
                         testing::Range(fromEnvironment("TARNWICK_FAULTS_FIRST", 1),
                                        fromEnvironment("TARNWICK_FAULTS_FIRST", 1) +
                                            fromEnvironment("TARNWICK_FAULTS_COUNT", 3)));

}  // namespace
