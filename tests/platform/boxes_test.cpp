#include <gtest/gtest.h>

#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <QTimer>

#include "platform/desktop_boxes.h"

using namespace tarnwick;

namespace {

// What the message box says that shows next; it is answered by that button, or closed.
struct Answer {
    explicit Answer(QMessageBox::StandardButton button) {
        QTimer::singleShot(0, [this, button] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            shown = box->windowTitle() + u'|' + box->text() + u'|' +
                    (box->icon() == QMessageBox::Critical ? u"stop "_qs : QString()) +
                    (box->textFormat() == Qt::PlainText ? u"as it is"_qs : QString());
            buttons = box->standardButtons();
            button == QMessageBox::NoButton ? box->reject() : box->button(button)->click();
        });
    }
    QString shown;
    QMessageBox::StandardButtons buttons;
};

TEST(DesktopBoxes, ShowTheirTextAsItIsWithLineFeeds) {
    platform::DesktopBoxes boxes;
    const Answer plain(QMessageBox::Ok);
    boxes.plain(u"a\r\nb\rc <b>"_qs);
    EXPECT_EQ(plain.shown, u"|a\nb\nc <b>|as it is");
    EXPECT_EQ(plain.buttons, QMessageBox::Ok);
    const Answer critical(QMessageBox::Ok);
    boxes.critical(u"Title"_qs, u"text"_qs);
    EXPECT_EQ(critical.shown, u"Title|text|stop as it is");
    const std::pair<QMessageBox::StandardButton, bool> answers[] = {
        {QMessageBox::Yes, true}, {QMessageBox::No, false}, {QMessageBox::NoButton, false}};
    for (const auto& [button, yes] : answers) {
        const Answer answer(button);
        EXPECT_EQ(boxes.askYesNo(u"Title"_qs, u"text"_qs), yes);
        EXPECT_EQ(answer.buttons, QMessageBox::Yes | QMessageBox::No);
    }
}

TEST(DesktopBoxes, AnInputThatIsCancelledIsNone) {
    platform::DesktopBoxes boxes;
    for (const bool accepted : {true, false}) {
        QTimer::singleShot(0, [accepted] {
            auto* box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            box->setTextValue(box->labelText() + u"!"_qs);
            accepted ? box->accept() : box->reject();
        });
        EXPECT_EQ(boxes.input(u"prompt"_qs),
                  accepted ? std::optional(u"prompt!"_qs) : std::nullopt);
    }
}

}  // namespace
