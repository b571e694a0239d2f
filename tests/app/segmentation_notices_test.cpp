#include "forms/frm_batch_processor.h"
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
    // What is on the strip, waiting until it has `count` notices.
    QStringList told(qsizetype count) {
        test::waitUntil([&] { return notices.shown().size() == count; }, 10000);
        QStringList texts;
        for (const app::NoticeBoard::Entry& entry : notices.shown())
            texts << app::sentencesOf(entry);
        return texts;
    }
};

TEST_F(Told, PromptsWhoseNamesAreTakenByFolders) {
    for (const QString& name : {u"Prompt 2.wav"_qs, u"Prompt 4.wav"_qs})
        QDir(session.path()).mkdir(name);
    write(u"BU_Source_Files/script.xlsx"_qs, "in the way");
    form().mnuExport->trigger();
    ASSERT_TRUE(
        test::waitUntil([&] { return find<forms::frmBatchProcessor>() != nullptr; }, 10000));
    EXPECT_EQ(told(1).join(u'|').left(100),
              u"2 of 3 prompts were not written: Prompt 2.wav and Prompt 4.wav: the file cannot be "
              u"written. ");
    EXPECT_EQ(notices.shown()[0].notice.files,
              QStringList({in(u"Prompt 2.wav"_qs), in(u"Prompt 4.wav"_qs)}));
    EXPECT_TRUE(files.FileExists(in(u"Prompt 3.wav"_qs)));
    EXPECT_TRUE(files.FileExists(in(u"BU_Source_Files/take.wav"_qs)));
    EXPECT_EQ(notices.entries().value(0).notice.files, QStringList(in(u"script.xlsx"_qs)));
    EXPECT_TRUE(boxes().isEmpty());
}

TEST_F(Told, UndoBelowTheLoadAndASoundThatIsGone) {
    const QString before = cell(0, model::kStartMsec);
    for (const QString& place : {u"the end"_qs, u"the start"_qs}) {
        ASSERT_TRUE(test::waitUntil([&] { return form().cbUndo->isEnabled(); }));
        form().cbUndo->click();
        EXPECT_TRUE(told(place == u"the end" ? 1 : 2)
                        .value(0)
                        .contains(u"the pause that the load had added at the end"));
        ASSERT_TRUE(settled(3)) << qPrintable(place);
    }
    ASSERT_TRUE(test::waitUntil([&] { return cell(0, model::kStartMsec) != before; }));
    EXPECT_TRUE(told(2).value(1).contains(u"at the start, so each row can now"));
    EDT->waveform().SetSelection(1, 0, EDT->GetSoundDuration());
    form().cbDeleteSelection->click();
    EXPECT_TRUE(
        told(3).value(2).startsWith(u"The whole sound was deleted, which cannot be undone."));
    form().mnuExport->trigger();
    EXPECT_TRUE(told(4).value(3).startsWith(
        u"The export stopped at prompt 1 of 3, Prompt 2.wav: no sound is loaded."));
    form().mnuUndo->trigger();
    EXPECT_TRUE(told(5).value(4).startsWith(u"Undo changed nothing: no sound is loaded."));
    EXPECT_EQ(boxes().size(), 1) << "of the edit";
}

}  // namespace
