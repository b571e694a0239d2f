#include "forms/name_list.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

namespace tarnwick::forms {
namespace {

struct Names : ::testing::Test {
    NameList list{nullptr};

    void highlight(const QList<int>& rows) {
        for (const int row : rows)
            list.selectionModel()->select(list.model()->index(row, 0), QItemSelectionModel::Select);
    }
};

TEST_F(Names, StaySortedAndKeepTheHighlight) {
    list.setNames({u"b.wav"_qs, u"C.wav"_qs, u"A.wav"_qs, u"c.wav"_qs, u"b.wav"_qs});
    EXPECT_EQ(list.names().join(u' '), u"A.wav b.wav b.wav C.wav c.wav");
    highlight({0, 2, 4});
    list.add({u"aa.wav"_qs, u"B.wav"_qs, u"d.wav"_qs});
    EXPECT_EQ(list.names().join(u' '), u"A.wav aa.wav B.wav b.wav b.wav C.wav c.wav d.wav");
    EXPECT_EQ(list.takeHighlighted().join(u' '), u"A.wav b.wav c.wav");
    EXPECT_EQ(list.names().join(u' '), u"aa.wav B.wav b.wav C.wav d.wav");
    EXPECT_TRUE(list.takeHighlighted().isEmpty());
    EXPECT_EQ(list.takeAll().size(), 5);
    EXPECT_EQ(list.count(), 0);
}

TEST_F(Names, EachOfTwoQuickPressesCounts) {
    list.setNames({u"A.wav"_qs, u"b.wav"_qs});
    const QPoint at = list.visualRect(list.model()->index(1, 0)).center();
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease,
                                    QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, list.viewport()->mapToGlobal(at), Qt::LeftButton,
                          Qt::LeftButton, Qt::ControlModifier);
        QApplication::sendEvent(list.viewport(), &event);
    }
    EXPECT_TRUE(list.takeHighlighted().isEmpty()) << "selected, then deselected";
}

TEST_F(Names, DoNotScrollWhenOthersAreAddedOrTaken) {
    QStringList names;
    for (int i = 0; i < 500; ++i)
        names << u"take%1.wav"_qs.arg(i, 3, 10, QChar(u'0'));
    list.resize(200, 300);
    list.show();
    list.setNames(names);
    const auto scrolled = [&] {
        QApplication::processEvents();
        return list.verticalScrollBar()->value();
    };
    EXPECT_EQ(scrolled(), 0);
    list.verticalScrollBar()->setValue(200);
    list.add({u"b.wav"_qs});
    EXPECT_EQ(scrolled(), 200);
    highlight({200});
    list.takeHighlighted();
    EXPECT_EQ(scrolled(), 200);
    list.setNames(names);
    EXPECT_EQ(scrolled(), 0);
}

}  // namespace
}  // namespace tarnwick::forms
