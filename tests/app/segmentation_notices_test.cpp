#include "journey.h"
#include "model/list_columns.h"
#include "support/wav_samples.h"

using namespace tarnwick;
using test::operator+;

namespace {

// A session of three prompts.
struct Told : test::Launched {
    void SetUp() override {
        Launched::SetUp();
        test::Samples take;
        for (int i = 0; i < 3; ++i)
            take = take + test::wave(400, 9000) + test::wave(1600, 100);
        write(u"take.wav"_qs, test::wavFile(take));
        writeScript(4);
        load();
        ASSERT_TRUE(settled(3));
    }
    // Waits for a notice that begins with `text`.
    bool told(const QString& text) {
        const auto begins = [&](const app::NoticeBoard::Entry& entry) {
            return entry.notice.what.startsWith(text);
        };
        return test::waitUntil([&] { return std::ranges::any_of(notices.entries(), begins); },
                               10000);
    }
};

TEST_F(Told, PromptsWhoseNamesAreTakenByFolders) {
    for (const QString& name : {u"Prompt 2.wav"_qs, u"Prompt 4.wav"_qs})
        QDir(session.path()).mkdir(name);
    write(u"BU_Source_Files/script.xlsx"_qs, "in the way");
    form().mnuExport->trigger();
    ASSERT_TRUE(test::waitUntil([&] { return !form().isVisible(); }, 10000));
    const QString missing =
        u"2 of 3 prompts were not written: Prompt 2.wav and Prompt 4.wav: a folder has that name."_qs;
    EXPECT_TRUE(told(missing));
    EXPECT_TRUE(files.FileExists(in(u"Prompt 3.wav"_qs)));
    EXPECT_TRUE(files.FileExists(in(u"BU_Source_Files/take.wav"_qs)));
    EXPECT_TRUE(told(u"script.xlsx was not moved"_qs));
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(Told, UndoBelowTheLoadAndASoundThatIsGone) {
    const QString before = cell(0, model::kStartMsec);
    for (const QString& place : {u"end"_qs, u"start"_qs}) {
        ASSERT_TRUE(test::waitUntil([&] { return form().cbUndo->isEnabled(); }));
        form().cbUndo->click();
        EXPECT_TRUE(told(u"Undo took back the pause that the load had added at the "_qs + place));
    }
    ASSERT_TRUE(
        test::waitUntil([&] { return settled(3) && cell(0, model::kStartMsec) != before; }));
    EDT->waveform().SetSelection(1, 0, EDT->GetSoundDuration());
    form().cbDeleteSelection->click();
    EXPECT_TRUE(told(u"The whole sound was deleted, which cannot be undone."_qs));
    desk.boxes.yes = true;
    form().mnuExport->trigger();
    EXPECT_TRUE(told(u"The export stopped at prompt 1 of 3, Prompt 2.wav: no sound is loaded."_qs));
    form().mnuUndo->trigger();
    EXPECT_TRUE(told(u"Undo changed nothing: no sound is loaded."_qs));
    EXPECT_EQ(boxes().size(), 2) << "one about different counters, one about the edit";
}

}  // namespace
