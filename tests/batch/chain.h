#pragma once

#include <algorithm>
#include <memory>

#include "batch/batch_processor.h"
#include "desk.h"

namespace tarnwick::test {

// A window on a folder of files without sound; the test emits EDTX's events itself.
struct Chain : BatchDesk {
    std::unique_ptr<batch::BatchProcessor> processor;

    void open(const QStringList& names) { open(names, services); }
    void open(const QStringList& names, const batch::Services& given) {
        for (const QString& name : names)
            writeFile(in(name), name.toUtf8());
        processor = std::make_unique<batch::BatchProcessor>(form, given);
        processor->Form_Load();
        for (QTimer* timer : form.findChildren<QTimer*>()) {
            EXPECT_EQ(timer->interval(), 100);
            timer->setInterval(0);
        }
        EDTX.duration = 10000;
        EXPECT_EQ(EDTX.taken(), u"SetEditorOption 100");
    }
    bool armed() const {
        const auto timers = form.findChildren<QTimer*>();
        return std::any_of(timers.begin(), timers.end(),
                           [](const QTimer* timer) { return timer->isActive(); });
    }
    // The calls of EDTX after an event, up to where the chain waits again.
    QString asked() {
        EXPECT_TRUE(waitUntil([&] { return !armed(); }, 5000));
        return EDTX.taken();
    }
    QString process() {
        form.cbProcess->click();
        return asked();
    }
    QString loaded() {
        Q_EMIT EDTX.SoundLoadingDone(0);  // the chain continues after a failed load, too
        return asked();
    }
    QString edited(qint16 command) {
        Q_EMIT EDTX.SoundEditDone(command, 0);
        return asked();
    }
    QString audible(qint32 begin, qint32 end) {
        Q_EMIT EDTX.AudibleRangeDetected(begin, end);
        return EDTX.taken();
    }
    QString exported() {
        EDTX.endExport();
        return asked();
    }
    QString raw() const { return files.list(in(u"Raw_Files"_qs), u"*"_qs).join(u'|'); }
    QString trace() const { return form.txbDebug->toPlainText(); }
};

}  // namespace tarnwick::test
