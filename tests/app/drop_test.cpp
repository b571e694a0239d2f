#include <QDropEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <filesystem>

#include "app/dropped_recording.h"
#include "journey.h"
#include "runtime/file_names.h"
#include "support/wav_samples.h"

using namespace tarnwick;

namespace {

// Qt leaves folders with names that are not UTF-8.
void removeAll(const QString& folder) { std::filesystem::remove_all(runtime::pathOf(folder)); }

struct Dragged : ::testing::Test {
    QTemporaryDir folder;
    platform::Disk files;
    QByteArray root = QUrl::fromLocalFile(folder.path()).toEncoded();

    void TearDown() override { removeAll(folder.path()); }
    // Makes a file; the name has any bytes.
    void touch(const QByteArray& name) {
        test::writeFile(folder.filePath(u"new"_qs), "x");
        files.MoveFile(folder.filePath(u"new"_qs),
                       folder.filePath(runtime::textOfFileName(name.toStdString())));
    }
    // Bytes of the recording's path below the folder, for a list of URIs.
    QByteArray taken(const QByteArray& uriList) const {
        QMimeData data;
        data.setData(u"text/uri-list"_qs, uriList);
        return below(app::droppedRecording(data, files));
    }
    QByteArray below(const QString& path) const {
        return QByteArray::fromStdString(runtime::bytesOfFileName(path))
            .replace(folder.path().toUtf8() + '/', "");
    }
};

TEST_F(Dragged, OneRecordingOrAFolderWithOneIsTakenUnderItsExactName) {
    for (const char* sub : {"one", "two", "none", "f.wav"})
        files.createFolder(folder.filePath(QString::fromLatin1(sub)));
    for (const char* name :
         {"a.wav", "B.AIFF", "c.mp3", "d.Aif", "e.txt", ".f.wav", "50% #1?.wav", "\xC3\xA9.wav",
          "\xE9.wav", "one/\xE9t\xE9.wav", "one/s.xlsx", "one/._t.wav", "two/a.wav", "two/b.mp3"})
        touch(name);
    const std::pair<QByteArray, QByteArray> lists[] = {
        {root + "/a.wav\r\n", "a.wav"},
        {root + "/a.wav", "a.wav"},
        {root + "/B.AIFF\n", "B.AIFF"},
        {root + "/c.mp3", "c.mp3"},
        {root + "/d.Aif", "d.Aif"},
        {"# one file\r\n" + root + "/a.wav\r\n\r\n", "a.wav"},
        {QByteArray(root).replace("//", "//localhost") + "/a.wav", "a.wav"},
        {QByteArray(root).replace("//", "") + "/a.wav", "a.wav"},
        {root + "/50%25%20%231%3F.wav", "50% #1?.wav"},
        {root + "/%C3%A9.wav", "\xC3\xA9.wav"},
        {root + "/%E9.wav", "\xE9.wav"},
        {root + "/one", "one/\xE9t\xE9.wav"},
        {root + "/one/", "one/\xE9t\xE9.wav"},
        {root + "/two", {}},
        {root + "/none", {}},
        {root + "/f.wav", {}},
        {root + "/e.txt", {}},
        {root + "/.f.wav", {}},
        {root + "/gone.wav", {}},
        {root + "/a.wav\r\n" + root + "/c.mp3\r\n", {}},
        {QByteArray(root).replace("//", "//elsewhere") + "/a.wav", {}},
        {QByteArray(root).replace("file:", "sftp:") + "/a.wav", {}},
        {"a.wav", {}},
        {{}, {}}};
    for (const auto& [list, name] : lists)
        EXPECT_EQ(taken(list), name) << list.toStdString();
    QMimeData urls;
    urls.setUrls({QUrl::fromLocalFile(folder.filePath(u"50% #1?.wav"_qs))});
    EXPECT_EQ(below(app::droppedRecording(urls, files)), "50% #1?.wav");
    QMimeData text;
    text.setText(folder.filePath(u"a.wav"_qs));
    EXPECT_EQ(below(app::droppedRecording(text, files)), "");
}

struct Drop : test::Launched {
    void TearDown() override { removeAll(session.path()); }
    // Drags one file or folder of the session over `target` and lets it go there. Returns whether
    // the window would take it as a copy.
    bool dropped(QWidget* target, const QByteArray& name,
                 Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction) {
        QMimeData data;
        data.setData(u"text/uri-list"_qs,
                     QUrl::fromLocalFile(session.path()).toEncoded() + '/' + name);
        data.setText(u"typed"_qs);
        QDragEnterEvent enter(QPoint(3, 3), actions, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(target, &enter);
        QDragMoveEvent move(QPoint(4, 4), actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &move);
        if (!enter.isAccepted() || !move.isAccepted()) return false;
        QDropEvent drop(QPointF(4, 4), actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(target, &drop);
        return drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
    }
};

TEST_F(Drop, ARecordingOnAnyPartOfTheWindowBecomesTheList) {
    write(u"new"_qs, test::wavFile(test::wave(200, 9000)));
    files.MoveFile(in(u"new"_qs), in(runtime::textOfFileName("t\xE9ke.wav")));
    writeScript(2);
    QWidget* parts[] = {&form(), form().lvAudioDetails->viewport(), form().txbInsertSilence,
                        form().txbContent->viewport()};
    for (QWidget* part : parts) {
        removeAll(in(u"BU_Source_Files"_qs));
        form().txbInsertSilence->setText(u"7"_qs);
        EXPECT_TRUE(dropped(part, part == &form() ? "t%E9ke.wav" : ""));
        EXPECT_FALSE(files.FolderExists(in(u"BU_Source_Files"_qs))) << "not within the drop";
        ASSERT_TRUE(
            test::waitUntil([&] { return files.FolderExists(in(u"BU_Source_Files"_qs)); }, 5000));
        ASSERT_TRUE(settled(1));
        EXPECT_EQ(form().txbInsertSilence->text(), u"7");
    }
    EXPECT_TRUE(files.FileExists(in(runtime::textOfFileName("BU_Source_Files/t\xE9ke_103.wav"))));
    EXPECT_TRUE(dropped(&form(), ""));
    EXPECT_TRUE(boxIsShown()) << "the folder was loaded before";
    EXPECT_TRUE(boxes().value(0).startsWith(u"The Project folder cannot contain"));
    EXPECT_EQ(form().lvAudioDetails->topLevelItemCount(), 0);
}

TEST_F(Drop, NothingElseIsTakenAndOnlyByTheMainWindow) {
    write(u"take.wav"_qs, "x");
    EXPECT_FALSE(dropped(&form(), "script.xlsx"));
    EXPECT_FALSE(dropped(&form(), "take.wav", Qt::MoveAction)) << "the file would be deleted";
    form().txbInsertSilence->clear();
    dropped(form().txbInsertSilence, "script.xlsx");
    EXPECT_EQ(form().txbInsertSilence->text(), u"typed") << "text boxes take text, as ever";
    {
        QDialog box;
        box.setModal(true);
        box.show();
        EXPECT_FALSE(dropped(&form(), "take.wav"));
    }
    form().mnuRenameWizard->trigger();
    EXPECT_FALSE(dropped(find<QWidget>(u"frmRenameWiz"_qs), "take.wav"));
    EXPECT_FALSE(dropped(&application.frame(), "take.wav"));
}

}  // namespace
