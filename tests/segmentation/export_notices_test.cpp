#include "segmentation/export_notices.h"

#include <cerrno>

#include "export_desk.h"
#include "segmentation/export_size.h"

using namespace tarnwick;
using namespace tarnwick::segmentation;
using engine::Failure;
using engine::Operation;

namespace {

TEST(ExportSize, CountsWhatTheFolderGrowsBy) {
    EXPECT_EQ(addedBytes({{u"a"_qs, 20'000'000, 0}, {u"b"_qs, 500, 100}}, 2),
              2 * 44 + (882'000'000LL + 22050) * 2 * 3 - 100);
    EXPECT_EQ(addedBytes({{u"a"_qs, 9000, 0}, {u"a"_qs, -7500, 0}}, 1), 44) << "the later row wins";
}

TEST(ExportNotices, UnwrittenPromptsAreGroupedByReason) {
    QList<Failure> many;
    for (const QString& name : u"a b c d e f g h i j k l"_qs.split(u' '))
        many << Failure{Operation::Export, u"/p/%1.wav"_qs.arg(name), engine::kWriteFailed, 0};
    QList<Failure> full = many.mid(0, 3);
    for (Failure& failure : full)
        failure.systemError = ENOSPC;
    const std::tuple<QList<Failure>, QString, QString> cases[] = {
        {many.mid(0, 1), u"1 of 40 prompts was not written: a.wav: the file cannot be written."_qs,
         u"Remove the cause."_qs},
        {many.mid(3, 1) + full + many.mid(4, 1),
         u"5 of 40 prompts were not written: d.wav and e.wav: the file cannot be written; a.wav, "
         u"b.wav and c.wav: no space left on the device."_qs,
         u"Free some space."_qs},
        {many,
         u"12 of 40 prompts were not written: a.wav, b.wav, c.wav, d.wav, e.wav, f.wav, g.wav, "
         u"h.wav, i.wav, j.wav and 2 more: the file cannot be written."_qs,
         u"Remove the cause."_qs}};
    for (const auto& [unwritten, what, remedy] : cases) {
        const platform::Notice notice = promptsNotWritten(40, unwritten, {.inProjectFolder = true});
        EXPECT_EQ(notice.what, what);
        EXPECT_EQ(notice.files.size(), unwritten.size());
        EXPECT_EQ(notice.files.last(), unwritten.last().path);
        EXPECT_EQ(notice.safe, u"The recording is still in the project folder.");
        EXPECT_TRUE(notice.remedy.startsWith(remedy));
    }
}

TEST(ExportNotices, TellWhereTheRecordingIsAndWhatItLacks) {
    const Failure failure{Operation::Export, u"/p/a.wav"_qs, engine::kWriteFailed};
    const QString copy = u"/p/BU_Source_Files/take_101.wav"_qs;
    const QString edits = u"Pauses and edits that were not saved are in no file."_qs;
    const std::pair<RecordingPlace, QString> cases[] = {
        {{}, {}},
        {{.state = {.unsaved = true}}, edits},
        {{.state = {.goodCopy = copy}},
         u"The newest copy of the recording is take_101.wav in BU_Source_Files."_qs},
        {{.inBackupFolder = true, .state = {.goodCopy = copy, .unsaved = true}},
         u"The recording is in BU_Source_Files. "_qs + edits},
        {{.inBackupFolder = true, .state = {.goodCopy = copy, .damaged = true}},
         u"The file of the recording was changed by another program; the newest copy from before "
         u"is take_101.wav in BU_Source_Files."_qs},
        {{.inProjectFolder = true, .state = {.damaged = true}},
         u"The file of the recording was changed by another program, and there is no copy from "
         u"before."_qs}};
    for (const auto& [recording, safe] : cases)
        for (const platform::Notice& notice :
             {promptsNotWritten(1, {failure}, recording), rowRefused({}, failure, recording),
              exportStandsStill({}, true, recording), exportGivenUp({}, recording)})
            EXPECT_EQ(notice.safe, safe);
    const QList<Failure> many(
        14, {Operation::Export, u"/p/"_qs + QString(266, u'n'), engine::kWriteFailed});
    EXPECT_LE(promptsNotWritten(40, many, {}).what.size(), 300);
}

struct ExportTells : test::ExportDesk {
    // The sentences told and noted since the last call.
    QStringList sentences() {
        return test::takeSentences(desk.notices.told) + test::takeSentences(desk.notices.noted);
    }
    void fail(int systemError) {
        EDT.failExport(engine::kWriteFailed, systemError);
        fire(form.EDTTimerSoundExportDone);
    }
    void finishRun() {
        form.mnuExport->trigger();
        for (int i = 0; i < 3; ++i)
            next();
    }
};

TEST_F(ExportTells, OnceAtTheEndWhichPromptsAreMissing) {
    EDT.pending = 1;  // a backup
    form.mnuExport->trigger();
    EDT.failExport(engine::kWriteFailed, EIO);
    fire(form.EDTTimerSoundExportDone);
    EXPECT_EQ(EDT.calls.size(), 1) << "this event belongs to the backup";
    fail(ENOSPC);
    next();
    EXPECT_TRUE(sentences().isEmpty());
    fail(ENOSPC);
    EXPECT_EQ(desk.notices.told.value(0).safe, u"The recording is in BU_Source_Files.");
    EXPECT_EQ(sentences(), QStringList(u"2 of 3 prompts were not written: P1.wav and P3.wav: no "
                                       u"space left on the device."_qs));
    EXPECT_EQ(batch, 1);
    desk.notices.settled.clear();
    form.mnuExport->trigger();
    EXPECT_TRUE(desk.notices.settled.contains(promptsTopic(project.path()))) << "written anew";
    QDir(project.path()).removeRecursively();
    fail(EIO);
    next();
    next();
    EXPECT_EQ(desk.notices.told.value(0).safe, QString()) << "the project folder is gone";
    sentences();
    EDT.failExport(engine::kWriteFailed, EIO);  // a backup after the run
    finishRun();
    desk.notices.noted.clear();  // about the recording, which was moved before
    EXPECT_TRUE(sentences().isEmpty()) << "every prompt was written";
}

TEST_F(ExportTells, QuietlyWhatStaysInTheFolder) {
    session.vsWordFile = u"script.docx"_qs;
    test::writeFile(project.filePath(u"script.docx"_qs), "document");
    for (const QString& name : {u"take.wav"_qs, u"script.xlsx"_qs})
        test::writeFile(project.filePath(u"BU_Source_Files/"_qs + name), "in the way");
    finishRun();
    EXPECT_TRUE(desk.notices.told.isEmpty());
    EXPECT_EQ(desk.notices.noted.value(0).files, QStringList(project.filePath(u"take.wav"_qs)));
    EXPECT_EQ(sentences().join(u'|'),
              u"take.wav was not moved to BU_Source_Files: file already exists "
              u"(%1/BU_Source_Files/take.wav).|script.docx stays in the project folder: an export "
              u"moves only workbooks to BU_Source_Files.|script.xlsx was not moved to "
              u"BU_Source_Files: file already exists (%1/BU_Source_Files/script.xlsx)."_qs.arg(
                  project.path()));
    session.loadedScript = u"left over.xlsx"_qs;
    session.vsWordFile.clear();
    form.lvAudioDetails->topLevelItem(0)->setText(1, u"take"_qs);
    finishRun();
    EXPECT_TRUE(sentences().isEmpty()) << "the recording was copied, the script is of another load";
    session.scriptWasThere = true;
    form.lvAudioDetails->topLevelItem(0)->setText(1, u"P1"_qs);
    QDir(project.filePath(u"BU_Source_Files"_qs)).removeRecursively();
    finishRun();
    for (const platform::Notice& notice : desk.notices.noted)
        EXPECT_FALSE(notice.remedy.contains(u"BU_Source_Files")) << "it is not in the way";
    EXPECT_TRUE(sentences().value(1).startsWith(u"left over.xlsx was not moved"));
}

TEST_F(ExportTells, WhyARunStopsOrDoesNotStart) {
    form.mnuExport->trigger();
    fail(ENOSPC);
    EDT.refuseExports = true;
    next();
    EXPECT_EQ(stuck, 1);
    EXPECT_EQ(
        sentences().join(u'|'),
        u"The export stopped at prompt 3 of 3, P3.wav: this format, rate or number of channels "
        u"cannot be written. This prompt and those after it were not written.|1 of 3 prompts "
        u"was not written: P1.wav: no space left on the device."_qs);
    exporting.drop();
    EXPECT_TRUE(sentences().isEmpty()) << "no run is open";
    EDT.refuseExports = false;
    form.mnuExport->trigger();
    form.lvAudioDetails->clear();
    EDT.endExport();
    for (int i = 0; i < 3; ++i)  // the timer arms itself again
        QMetaObject::invokeMethod(form.EDTTimerSoundExportDone, "timeout");
    EXPECT_EQ(sentences().join(u'|'),
              u"The export is waiting after prompt 1 of 3: the list has no next row.");
    exporting.drop();
    EXPECT_EQ(
        sentences().join(u'|'),
        u"The export ended early, at prompt 1 of 3, because its sound was closed or replaced.");
    form.mnuExport->trigger();
    changing = true;
    form.mnuExport->trigger();
    EXPECT_EQ(
        sentences().join(u'|'),
        u"There is nothing to export: the list is empty.|The export did not start, because the "
        u"list is being rebuilt.");
    desk.notices.settled.clear();
    addRows(1);
    EXPECT_EQ(desk.notices.settled, QStringList(startTopic()));
}

TEST_F(ExportTells, BeforeItStartsThatTheDiskIsTooSmall) {
    const qint64 needed = 3 * (44 + 26460 * 3) - 9;
    test::writeFile(project.filePath(u"P2.wav"_qs), "replaced!");
    for (const qint64 free : {needed, qint64{-1}, needed - 1}) {
        files.free = free;
        form.mnuExport->trigger();
        EXPECT_EQ(sentences().size(), free == needed - 1) << free;
    }
    EXPECT_EQ(EDT.calls.size(), 3) << "it starts all the same";
    EXPECT_EQ(spaceIsShort({}, 1'240'000'000, 99'000'000).what,
              u"The prompts need 1.2 GB of disk space, but only 99.0 MB is free.");
}

}  // namespace
