#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QStringList>
#include <functional>

#include "desk.h"
#include "rename/new_names.h"
#include "support/fault_of.h"
#include "support/text_table.h"

using namespace tarnwick::rename;
using namespace tarnwick;
using tarnwick::test::resultOf;

namespace {

const QString kCountFault = u"Invalid procedure call or argument"_qs;

TEST(NewNames, LettersAreRepeatedPastZ) {
    const std::pair<int, QString> cases[] = {
        {0, u"A"_qs},   {25, u"Z"_qs},   {26, u"AA"_qs},           {27, u"BB"_qs},
        {51, u"ZZ"_qs}, {52, u"AAA"_qs}, {300, u"OOOOOOOOOOOO"_qs}};
    for (const auto& [index, letters] : cases)
        EXPECT_EQ(lettersOf(index), letters) << index;
}

// File after file: "!" is an abnormal one.
TEST(NewNames, TheLengthOfAnExtensionIsCarriedOn) {
    const std::pair<QString, QString> cases[] = {
        {u"take01.wav a.b.wav song.flac x.z .z x..y x.tar.gz"_qs,
         u"take01_x.wav a.b_x.wav song_x.flac x_x.z _x.z x._x.y x.tar_x.gz"_qs},
        {u"song.mpeg4"_qs, u"song.mpeg4_x !"_qs},
        {u"nodot"_qs, u"nodot_x !"_qs},
        {u"x.wav nodot"_qs, u"x_x.wav n_xodot !"_qs},
        {u"x.flac x.mpeg4 y.z"_qs, u"x_x.flac x._xmpeg4 ! y_x.z"_qs},
        {u"ends."_qs, u"ends._x !"_qs},
        {u"🎤.🎤🎤🎤🎤 🎤🎤🎤🎤🎤"_qs, u"🎤_x.🎤🎤🎤🎤 _x🎤🎤🎤🎤🎤 !"_qs},
        {u"four"_qs, kCountFault},
        {u"end."_qs, kCountFault},
        {u"a.wav b"_qs, kCountFault}};
    for (const auto& [names, wanted] : cases) {
        ExtensionLength extension;
        const QString result = resultOf([&, &names = names] {
            QStringList parts;
            for (const QString& name : names.split(u' ')) {
                const bool normal = extension.find(name);
                parts << withSuffix(name, extension.length(), u"_x"_qs);
                if (!normal) parts << u"!"_qs;
            }
            return parts.join(u' ');
        });
        EXPECT_EQ(result, wanted) << names.toStdString();
    }
}

TEST(NewNames, TextsAreReplacedInsertedAndRemoved) {
    const auto replaced = [](const QString& search, const QString& by, bool caseSensitive) {
        return withReplaced(u"Aa.wav"_qs, search, by, caseSensitive);
    };
    EXPECT_EQ(replaced(u"a"_qs, u"b"_qs, false), u"bb.wbv");
    EXPECT_EQ(replaced(u"a"_qs, u"b"_qs, true), u"Ab.wbv");
    EXPECT_EQ(replaced(u"a"_qs, u"aa"_qs, false), u"aaaa.waav");
    EXPECT_EQ(replaced(u"A.WAV"_qs, u"x"_qs, false), u"Ax");
    // Of 2.5, 1.5 and 4.5 characters are left: 2 and 4. Of 3.5, 2.5 and 3.5: 2 and 4.
    const std::pair<double, QString> inserts[] = {
        {1, u"-abcdef"_qs}, {3, u"ab-cdef"_qs},   {7, u"abcdef-"_qs},   {8, kCountFault},
        {0, kCountFault},   {2.5, u"ab-cdef"_qs}, {3.5, u"ab-cdef"_qs}, {1e10, u"Overflow"_qs}};
    for (const auto& [start, wanted] : inserts)
        EXPECT_EQ(resultOf([start = start] { return withInserted(u"abcdef"_qs, start, u"-"_qs); }),
                  wanted)
            << start;
    const std::tuple<double, double, QString> removals[] = {
        {1, 2, u"_c.wav"_qs},     {3, 1, u"abc.wav"_qs},    {8, 1, u"ab_c.wa"_qs},
        {8, 2, kCountFault},      {0, 1, kCountFault},      {1, 8, u""_qs},
        {2, -1, u"aab_c.wav"_qs}, {1, -20, u"ab_c.wav"_qs},
    };
    for (const auto& [start, count, wanted] : removals)
        EXPECT_EQ(resultOf([start = start, count = count] {
                      return withRemoved(u"ab_c.wav"_qs, start, count);
                  }),
                  wanted)
            << start << ' ' << count;
    const std::pair<QString, QString> cases[] = {
        {withRemoved(u"🎤a🎤b"_qs, 3, 1), u"🎤ab"_qs},
        {withInserted(u"🎤a"_qs, 2, u"x"_qs), u"🎤xa"_qs},
        {withInserted(u"\xDCFF\xDCFFz"_qs, 2, u"x"_qs), u"\xDCFFx\xDCFFz"_qs},  // bytes, no text
        {withExtension(u"x.wav"_qs, u".wav"_qs, u".mp3"_qs), u"x.mp3"_qs},
        {withExtension(u"x.wav"_qs, u".WAV"_qs, u".mp3"_qs), u"x.wav"_qs},
        {withExtension(u"x.wav"_qs, u"."_qs, u".mp3"_qs), u"x.wav"_qs}};
    for (const auto& [name, wanted] : cases)
        EXPECT_EQ(name, wanted);
}

struct Rules : test::RenameDesk {
    // Fills fields ("txbInsert=x") and clicks boxes ("chIncrNumberPrefix"), with ';' in between.
    void fill(const QString& fields) {
        for (const QString& field : fields.split(u';')) {
            auto* control = form.findChild<QWidget*>(field.section(u'=', 0, 0));
            if (auto* box = qobject_cast<QLineEdit*>(control)) box->setText(field.section(u'=', 1));
            if (auto* tick = qobject_cast<QCheckBox*>(control)) tick->click();
        }
    }
    // Which of the three buttons are shown.
    QString state() const {
        const auto shown = [](const QPushButton* button) {
            return button->isHidden() ? u'-' : u'+';
        };
        return QString(shown(form.cbPreview)) + shown(form.cbCancel) + shown(form.cbRename);
    }
    static void send(QLineEdit* box, QEvent::Type type, Qt::MouseButton button = Qt::LeftButton) {
        QMouseEvent event(type, {5, 5}, box->mapToGlobal(QPointF(5, 5)), button, button,
                          Qt::NoModifier);
        QApplication::sendEvent(box, &event);
    }
    QString preview() {
        form.cbPreview->click();
        return selected();
    }
};

TEST_F(Rules, EachWorksAloneAndOnlyWhenItsFieldsAreFilled) {
    // "nothing" where there is nothing to preview.
    const char* const cases = R"(
txbAddPrefix=p-|p-a.wav p-B.wav p-c.wav|chIncrNumberPrefix|0_a.wav 1_B.wav 2_c.wav|
chIncrLetterPrefix|A_a.wav B_B.wav C_c.wav|txbAddSuffix=_x|a_x.wav B_x.wav c_x.wav|
chIncrNumberSuffix|a_0.wav B_1.wav c_2.wav|chIncrLetterSuffix|a_A.wav B_B.wav c_C.wav|
txbSearchFor=A;txbReplaceWith=e|B.wev c.wev e.wev|txbSearchFor=A|nothing|
txbInsert=#|#a.wav #B.wav #c.wav|txbInsert=#;txbStartingAt=|nothing|
txbRemove=2 chars;txbStartingAt=2x|aav Bav cav|txbSourceExt=.wav;txbTargetExt=.mp3|a.mp3 B.mp3 c.mp3|
txbSourceExt=.WAV;txbTargetExt=.mp3|a.wav B.wav c.wav|txbSourceExt=.wav|nothing)";
    select({u"c.wav"_qs, u"a.wav"_qs, u"B.wav"_qs});
    for (const QStringList& row : test::rowsOf(cases, 2)) {
        form.cbClear->click();
        fill(row[0]);
        const QString result = preview();
        if (row[1] == u"nothing") {
            EXPECT_EQ(boxes() + state(), u"Nothing to preview.+--") << qPrintable(row[0]);
            continue;
        }
        EXPECT_EQ(result, row[1]) << qPrintable(row[0]);
        EXPECT_EQ(boxes() + state(), u"-++");
        form.cbCancel->click();
        EXPECT_EQ(selected() + state(), u"a.wav B.wav c.wav+--");
    }
    EXPECT_EQ(onDisk(), u"a.wav=a.wav B.wav=B.wav c.wav=c.wav");
}

TEST_F(Rules, AllTogetherRunInTheirOrder) {
    select({u"a.wav"_qs, u"b.flac"_qs});
    fill(
        u"txbAddPrefix=pre_;txbAddSuffix=_suf;txbSearchFor=_;txbReplaceWith=--;txbInsert=#!?;"
        u"txbStartingAt=3;txbRemove=2;txbSourceExt=.wav;txbTargetExt=.x"_qs);
    {  // what clicks would not leave together
        const QSignalBlocker others[] = {
            QSignalBlocker(form.chIncrNumberPrefix), QSignalBlocker(form.chIncrLetterPrefix),
            QSignalBlocker(form.chIncrNumberSuffix), QSignalBlocker(form.chIncrLetterSuffix)};
        for (QCheckBox* box : {form.chIncrNumberPrefix, form.chIncrLetterPrefix,
                               form.chIncrNumberSuffix, form.chIncrLetterSuffix})
            box->setChecked(true);
    }
    EXPECT_EQ(preview(), u"A-?-0--pre--a--suf--0--A.x B-?-1--pre--b--suf--1--B.flac");
    form.cbRename->click();
    EXPECT_EQ(onDisk(), u"A-?-0--pre--a--suf--0--A.x=a.wav B-?-1--pre--b--suf--1--B.flac=b.flac");
    EXPECT_EQ(selected() + state(), u"A-?-0--pre--a--suf--0--A.x B-?-1--pre--b--suf--1--B.flac+--");
    EXPECT_EQ(form.txbAddPrefix->text(), u"pre_");
}

TEST_F(Rules, AbnormalExtensionsAreToldAndTakeTheLengthBefore) {
    select({u"a.flac"_qs, u"nodot"_qs});
    form.txbAddSuffix->setText(u"-"_qs);
    EXPECT_EQ(preview(), u"-nodot a-.flac");
    EXPECT_EQ(boxes(), u"Abnormal Extension on file nodot");
    form.cbCancel->click();
    form.chIncrNumberSuffix->click();
    form.chIncrNumberSuffix->click();
    EXPECT_EQ(preview(), u"_1nodot a_0.flac");
}

TEST_F(Rules, FieldsOfAGroupAnswerOneAnother) {
    const struct {
        QLineEdit* text;
        QCheckBox* number;
        QCheckBox* letter;
    } groups[] = {{form.txbAddPrefix, form.chIncrNumberPrefix, form.chIncrLetterPrefix},
                  {form.txbAddSuffix, form.chIncrNumberSuffix, form.chIncrLetterSuffix}};
    for (const auto& [text, number, letter] : groups) {
        const auto shown = [text = text, number = number, letter = letter] {
            return text->text() + (number->isChecked() ? u"N"_qs : QString()) +
                   (letter->isChecked() ? u"L"_qs : QString());
        };
        text->setText(u"x"_qs);
        number->click();
        EXPECT_EQ(shown(), u"") << "the text's change takes the tick away again";
        number->click();
        EXPECT_EQ(shown(), u"N");
        letter->click();
        EXPECT_EQ(shown(), u"") << "each takes the other's tick away";
        letter->click();
        EXPECT_EQ(shown(), u"L");
        text->setText(u"y"_qs);
        EXPECT_EQ(shown(), u"") << "the tick that goes empties the text";
        text->setText(u"y"_qs);
        EXPECT_EQ(shown(), u"y");
    }
}

TEST_F(Rules, AClickIntoTheInsertedTextEmptiesTheCountAndTheReverse) {
    const std::pair<QLineEdit*, QLineEdit*> boxes[] = {{form.txbRemove, form.txbInsert},
                                                       {form.txbInsert, form.txbRemove}};
    for (const auto& [box, other] : boxes) {
        other->setText(u"2"_qs);
        send(box, QEvent::MouseButtonPress);
        send(box, QEvent::MouseButtonRelease, Qt::MiddleButton);
        EXPECT_EQ(other->text(), u"2") << "the click is over when the button comes up";
        send(box, QEvent::MouseButtonRelease);
        EXPECT_EQ(other->text(), u"");
    }
}

TEST_F(Rules, AnExtensionGetsItsDotWhenTheFocusLeavesItAndThePreviewHandsItOver) {
    form.show();
    QApplication::setActiveWindow(&form);
    const auto through = [&](QLineEdit* box, const QString& text) {
        box->setFocus();
        box->setText(text);
        form.cbPreview->setFocus();
        return box->text();
    };
    EXPECT_EQ(through(form.txbSourceExt, u"wav"_qs), u".wav");
    EXPECT_EQ(through(form.txbTargetExt, u".mp3"_qs), u".mp3");
    EXPECT_EQ(through(form.txbTargetExt, u""_qs), u".");
    EXPECT_EQ(through(form.txbInsert, u"x"_qs), u"x");
    form.txbSourceExt->setText(u"wav"_qs);
    for (const Qt::FocusReason reason : {Qt::ActiveWindowFocusReason, Qt::PopupFocusReason}) {
        QFocusEvent away(QEvent::FocusOut, reason);
        QApplication::sendEvent(form.txbSourceExt, &away);
        EXPECT_EQ(form.txbSourceExt->text(), u"wav") << "another window or a menu comes in front";
    }
    select({u"a.wav"_qs});
    form.txbAddPrefix->setText(u"p"_qs);
    form.cbPreview->setFocus();
    form.cbPreview->click();
    EXPECT_TRUE(form.cbCancel->hasFocus());
    form.cbRename->setFocus();
    form.cbRename->click();
    EXPECT_TRUE(form.cbPreview->hasFocus());
}

TEST_F(Rules, WhatFailsEndsTheRunAndLosesNothing) {
    select({u"a.wav"_qs, u"b.wav"_qs, u"c.wav"_qs});
    put({u"taken.wav"_qs});
    form.txbSearchFor->setText(u"a.wav"_qs);
    const std::pair<QString, QString> bad[] = {
        {u"a.wav"_qs, u"File already exists"_qs},  // the name that it has
        {u"taken.wav"_qs, u"File already exists"_qs},
        {u"../b.wav"_qs, u"Bad file name or number"_qs},
        {u".."_qs, u"Bad file name or number"_qs},
        {u"n"_qs.repeated(300), u"File name too long"_qs}};
    for (const auto& [name, reason] : bad) {
        form.txbReplaceWith->setText(name);
        preview();
        EXPECT_EQ(endOf(form.cbRename),
                  u"Tarnwick|\"a.wav\" could not be renamed to \"%1\": %2.\nFiles renamed before "
                  u"it: 0."_qs.arg(name, reason));
        form.cbCancel->click();
    }
    form.cbClear->click();
    form.txbRemove->setText(u"5"_qs);
    preview();
    EXPECT_TRUE(endOf(form.cbRename).contains(u"to \"\": Bad file name"))
        << "nothing is left of it";
    form.cbCancel->click();
    EXPECT_EQ(onDisk(), u"a.wav=a.wav b.wav=b.wav c.wav=c.wav taken.wav=taken.wav");
    form.cbClear->click();
    form.txbAddPrefix->setText(u"z"_qs);
    preview();
    QFile::remove(in(u"b.wav"_qs));
    EXPECT_EQ(endOf(form.cbRename),
              u"Tarnwick|\"b.wav\" could not be renamed to \"zb.wav\": File not found.\n"
              u"Files renamed before it: 1.");
    EXPECT_EQ(onDisk(), u"c.wav=c.wav taken.wav=taken.wav za.wav=a.wav");
}

TEST_F(Rules, NumbersThatMakeNoNameAndMoreThanTheTableHoldsEndThePreview) {
    const auto ends = [&](const QString& fields) {
        form.cbClear->click();
        fill(fields);
        return endOf(form.cbPreview).section(u": "_qs, 1);
    };
    select({u"a.wav"_qs});
    EXPECT_EQ(ends(u"txbInsert=x;txbStartingAt=two"_qs), u"Type mismatch");
    EXPECT_EQ(ends(u"txbInsert=x;txbStartingAt=0"_qs), u"Invalid procedure call or argument");
    EXPECT_EQ(ends(u"txbRemove=9;txbStartingAt=1"_qs), u"Invalid procedure call or argument");
    form.lbxSelectedFiles->clear();
    form.cbPreview->click();
    EXPECT_EQ(boxes() + state(), u"No file selected.+--");
    form.cbClear->click();
    QStringList names;
    for (int i = 0; i < 301; ++i)
        names << u"f%1.x"_qs.arg(i, 3, 10, QChar(u'0'));
    form.lbxSelectedFiles->setNames(names);
    form.chIncrNumberSuffix->click();
    EXPECT_TRUE(preview().endsWith(u" f300_300.x"));
    form.cbCancel->click();
    form.lbxSelectedFiles->add({u"one_more.x"_qs});
    EXPECT_TRUE(endOf(form.cbPreview).contains(u"no more than 301"));
}

TEST_F(Rules, OddNamesKeepTheirBytes) {
    const std::string bytes = "q'\"\xff\xc3\n.wav";
    const std::string place = folder.path().toStdString() + '/';
    std::ofstream(place + bytes) << "sound";
    wizard->setFolder(folder.path());
    form.cbAddAll->click();
    fill(u"txbAddPrefix=ä;txbAddSuffix=🎤;txbSearchFor=q;txbReplaceWith=Q"_qs);
    preview();
    form.cbRename->click();
    EXPECT_TRUE(std::filesystem::exists(place + "\xc3\xa4Q'\"\xff\xc3\n\xf0\x9f\x8e\xa4.wav"));
    EXPECT_FALSE(std::filesystem::exists(place + bytes));
    std::filesystem::remove_all(place);  // Qt would leave them behind
}

}  // namespace
