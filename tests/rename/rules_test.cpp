#include <QMouseEvent>

#include "desk.h"

using namespace tarnwick;

namespace {

struct Rules : test::RenameDesk {
    void fill(const QList<std::pair<QLineEdit*, QString>>& fields) {
        for (const auto& [box, text] : fields)
            box->setText(text);
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
    struct Case {
        QList<std::pair<QLineEdit*, QString>> fields;
        QCheckBox* tick;
        QString names;
    };
    const Case cases[] = {
        {{{form.txbAddPrefix, u"p-"_qs}}, nullptr, u"p-a.wav p-B.wav p-c.wav"_qs},
        {{}, form.chIncrNumberPrefix, u"0_a.wav 1_B.wav 2_c.wav"_qs},
        {{}, form.chIncrLetterPrefix, u"A_a.wav B_B.wav C_c.wav"_qs},
        {{{form.txbAddSuffix, u"_x"_qs}}, nullptr, u"a_x.wav B_x.wav c_x.wav"_qs},
        {{}, form.chIncrNumberSuffix, u"a_0.wav B_1.wav c_2.wav"_qs},
        {{}, form.chIncrLetterSuffix, u"a_A.wav B_B.wav c_C.wav"_qs},
        {{{form.txbSearchFor, u"A"_qs}, {form.txbReplaceWith, u"e"_qs}},
         nullptr,
         u"B.wev c.wev e.wev"_qs},
        {{{form.txbSearchFor, u"A"_qs}}, nullptr, u"nothing"_qs},
        {{{form.txbInsert, u"#"_qs}}, nullptr, u"#a.wav #B.wav #c.wav"_qs},
        {{{form.txbInsert, u"#"_qs}, {form.txbStartingAt, u""_qs}}, nullptr, u"nothing"_qs},
        {{{form.txbRemove, u"2 chars"_qs}, {form.txbStartingAt, u"2x"_qs}},
         nullptr,
         u"aav Bav cav"_qs},
        {{{form.txbSourceExt, u".wav"_qs}, {form.txbTargetExt, u".mp3"_qs}},
         nullptr,
         u"a.mp3 B.mp3 c.mp3"_qs},
        {{{form.txbSourceExt, u".WAV"_qs}, {form.txbTargetExt, u".mp3"_qs}},
         nullptr,
         u"a.wav B.wav c.wav"_qs},
        {{{form.txbSourceExt, u".wav"_qs}}, nullptr, u"nothing"_qs}};
    select({u"c.wav"_qs, u"a.wav"_qs, u"B.wav"_qs});
    for (const auto& [fields, tick, names] : cases) {
        form.cbClear->click();
        fill(fields);
        if (tick != nullptr) tick->click();
        const QString result = preview();
        if (names == u"nothing") {
            EXPECT_EQ(boxes() + state(), u"Nothing to preview.+--");
            continue;
        }
        EXPECT_EQ(result, names);
        EXPECT_EQ(boxes() + state(), u"-++");
        form.cbCancel->click();
        EXPECT_EQ(selected() + state(), u"a.wav B.wav c.wav+--");
    }
    EXPECT_EQ(onDisk(), u"a.wav=a.wav B.wav=B.wav c.wav=c.wav");
}

TEST_F(Rules, AllTogetherRunInTheirOrder) {
    select({u"a.wav"_qs, u"b.flac"_qs});
    fill({{form.txbAddPrefix, u"pre_"_qs},
          {form.txbAddSuffix, u"_suf"_qs},
          {form.txbSearchFor, u"_"_qs},
          {form.txbReplaceWith, u"--"_qs},
          {form.txbInsert, u"#!?"_qs},
          {form.txbStartingAt, u"3"_qs},
          {form.txbRemove, u"2"_qs},
          {form.txbSourceExt, u".wav"_qs},
          {form.txbTargetExt, u".x"_qs}});
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

TEST_F(Rules, AnExtensionGetsItsDotWhenTheFocusLeavesIt) {
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
}

TEST_F(Rules, TheFocusGoesFromThePreviewToCancelAndBack) {
    form.show();
    QApplication::setActiveWindow(&form);
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

TEST_F(Rules, NumbersThatMakeNoNameEndThePreview) {
    const auto ends = [&](QLineEdit* box, const QString& text, const QString& start) {
        form.cbClear->click();
        box->setText(text);
        form.txbStartingAt->setText(start);
        return endOf(form.cbPreview).section(u": "_qs, 1);
    };
    select({u"a.wav"_qs});
    EXPECT_EQ(ends(form.txbInsert, u"x"_qs, u"two"_qs), u"Type mismatch");
    EXPECT_EQ(ends(form.txbInsert, u"x"_qs, u"0"_qs), u"Invalid procedure call or argument");
    EXPECT_EQ(ends(form.txbRemove, u"9"_qs, u"1"_qs), u"Invalid procedure call or argument");
    form.lbxSelectedFiles->clear();
    form.cbPreview->click();
    EXPECT_EQ(boxes() + state(), u"No file selected.+--");
}

TEST_F(Rules, NoMoreThanTheTableHolds) {
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
    form.txbAddPrefix->setText(u"ä"_qs);
    form.txbAddSuffix->setText(u"🎤"_qs);
    form.txbSearchFor->setText(u"q"_qs);
    form.txbReplaceWith->setText(u"Q"_qs);
    preview();
    form.cbRename->click();
    EXPECT_TRUE(std::filesystem::exists(place + "\xc3\xa4Q'\"\xff\xc3\n\xf0\x9f\x8e\xa4.wav"));
    EXPECT_FALSE(std::filesystem::exists(place + bytes));
    std::filesystem::remove_all(place);  // Qt would leave them behind
}

}  // namespace
