#pragma once

#include <gtest/gtest.h>

#include "forms/frm_main.h"
#include "forms/scaling.h"
#include "model/session.h"
#include "runtime/process_state.h"
#include "support/scripted_editor.h"
#include "support/scripted_ports.h"
#include "support/wait_until.h"

namespace tarnwick::test {

// A main window with a scripted engine and scripted boxes.
struct MainDesk : ::testing::Test {
    FailureDesk desk;
    ScriptedEditor EDT;
    model::Session session;
    runtime::ProcessState state;
    forms::frmFrame frame;
    forms::frmMain form;

    void SetUp() override {
        state.vvScale = 1.5;
        forms::Scaling(frame, form, state.vvScale);
    }
    void addRows(int count) {
        for (int i = 1; i <= count; ++i)
            new QTreeWidgetItem(form.lvAudioDetails, {QString::number(i),
                                                      u"P%1"_qs.arg(i),
                                                      u"Text %1"_qs.arg(i),
                                                      QString::number(i * 1000),
                                                      {},
                                                      QString::number(i * 1000 + 600)});
    }
    void select(qint16 available, qint32 begin, qint32 end) {
        EDT.display.selected = available;
        EDT.display.selectionBegin = begin;
        EDT.display.selectionEnd = end;
        Q_EMIT EDT.WaveSelectionChanged(available, begin, end);
    }
    void click(std::initializer_list<QAbstractButton*> buttons) {
        for (QAbstractButton* button : buttons)
            button->click();
    }
    // Lets the one-shot timer `timer` fire, without the wait.
    static void fire(QTimer* timer) {
        ASSERT_TRUE(timer->isActive());
        ASSERT_EQ(timer->interval(), 100);
        QMetaObject::invokeMethod(timer, "timeout");
        ASSERT_FALSE(timer->isActive());
    }
};

}  // namespace tarnwick::test
