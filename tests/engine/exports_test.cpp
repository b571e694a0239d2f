#include <QDir>
#include <filesystem>

#include "desk.h"

namespace tarnwick::engine {
namespace {

// The first is the longest by far, so that others are complete before it; some fail at once, and
// one target is written again and again under several spellings.
TEST_F(Desk, ManyExportsEndInTheOrderOfTheCalls) {
    Samples take = wave(1000, 8000);
    for (int i = 0; i < 5; ++i)
        take = take + take;
    load(take);
    std::filesystem::create_directory_symlink(folder.path().toStdString(),
                                              path("link").toStdString());
    std::filesystem::create_symlink("same.wav", path("alias.wav").toStdString());
    const char* const spellings[] = {"same.wav", "./same.wav", "link/same.wav", "link/./same.wav",
                                     "link/alias.wav"};
    QStringList expected;
    qsizetype told = 0;
    QObject::connect(editor.get(), &SoundEditor::SoundExportDone, editor.get(), [&] {
        EXPECT_EQ(QFile::exists(path(qPrintable(QString::number(told)))),
                  told % 4 == 0 && told % 7 != 3);
        EXPECT_EQ(editor->SoundExportsPending(), 39 - told++);
    });
    for (int i = 0; i < 40; ++i) {
        const QByteArray own = QByteArray::number(i);
        const bool fails = i % 7 == 3;
        const QByteArray name = fails        ? "gone/x.wav"
                                : i % 4 == 0 ? own
                                             : QByteArray(spellings[i % 5]);
        expected << QString::fromLatin1(fails ? "ExportDone 0" : "ExportDone 1");
        ASSERT_EQ(write(name.constData(), 0, i == 0 ? -1 : 10 * i), kOk);
    }
    ASSERT_TRUE(waitUntil([&] { return events.size() == 40; })) << said();
    EXPECT_EQ(events, expected);
    EXPECT_EQ(samplesOf(path("same.wav")), slice(take, 0, 390 * kRate / 1000));
}

// Gone in the midst of all, it gives up what is being written and leaves nothing behind.
TEST_F(Desk, AnEditorThatGoesLeavesNoHalfFile) {
    Samples take = wave(1000, 8000);
    for (int i = 0; i < 6; ++i)
        take = take + take;
    load(take);
    for (int i = 0; i < 40; ++i)
        ASSERT_EQ(write(QByteArray::number(i).constData()), kOk);
    editor->SoundPlay();
    editor->effects().Normalize(0, -1, 80.0f, 100.0f, 100.0f);
    editor->waveform().AnalyzeSound();
    test::pass(20);
    editor->SilencePositionsDetect(600, 20, 0);
    editor.reset();
    for (const QString& name : QDir(folder.path()).entryList(QDir::Files | QDir::Hidden)) {
        if (name != u"take.wav") {
            EXPECT_EQ(samplesOf(folder.filePath(name)), take);
        }
    }
    EXPECT_LT(QDir(folder.path()).count(), 20u);
}

}  // namespace
}  // namespace tarnwick::engine
