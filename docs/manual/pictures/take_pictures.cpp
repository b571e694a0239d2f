// Takes the manual's pictures: drives the real program through the demo session off-screen.
// Usage: take_pictures <folder of the PNGs>

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <cstdio>

#include "app/appearance.h"
#include "forms/fonts.h"
#include "forms/frm_batch_processor.h"
#include "forms/frm_rename_wiz.h"
#include "forms/frm_select_import_sheet.h"
#include "support/wait_until.h"
#include "support/whole_program.h"

namespace {

using namespace tarnwick;

constexpr int kPixelRatio = 2;  // sharp in print

constexpr QSize kMark(19, 19);

struct Callout {
    int number;
    const QWidget* at;  // the number is drawn to the left of it
};

// The program with its real engine and windows, in a temporary folder. Boxes and the open dialog
// are scripted.
class Studio {
  public:
    explicit Studio(QString target) : target_(std::move(target)) {
        program_.desk.takeDatabase();
        program_.execute(u"UPDATE Admin SET F13 = 100 WHERE F1 = 18"_qs);
        program_.application.Sub_Main();
        form_ = &program_.form();
    }

    bool loadDemo() {
        for (const QString& name : {u"harbour_tour.wav"_qs, u"harbour_tour.xlsx"_qs})
            QFile::copy(QStringLiteral(TARNWICK_DEMO "/") + name, session_.filePath(name));
        program_.cmdlg.path = session_.filePath(u"harbour_tour.wav"_qs);
        form_->mnuLoadFiles->trigger();
        return settled();
    }

    void mainWindow() {
        program_.EDT->waveform().SetDisplayRange(8000, 24000);
        pickRow(3);
        program_.EDT->waveform().SetSelection(1, 12300, 13650);
        settle();
        QWidget afterMenus(form_->menuBar);
        const QRect help = form_->menuBar->actionGeometry(form_->mnuHelp->menuAction());
        afterMenus.move(help.right() + 24, 12);
        // There is no space for a number to the left of the list.
        QWidget behindList(form_->frTarnwick);
        behindList.move(form_->lvAudioDetails->geometry().topRight() + QPoint(22, 12));
        QWidget& frame = program_.application.frame();
        const QWidget* list = form_->lvAudioDetails;
        const int end = list->mapTo(&frame, QPoint(0, list->height())).y() + 12;
        save(u"main"_qs, frame, QRect(0, 0, frame.width(), end),
             {{1, &afterMenus},
              {2, form_->slWAVFormScale},
              {3, form_->Picture1},
              {4, form_->frEdit},
              {5, form_->frAction},
              {6, form_->lbStatus},
              {7, form_->frTransport},
              {8, form_->frLocations},
              {9, form_->frFiles},
              {10, form_->frSpecs},
              {11, form_->cbContent},
              {12, &behindList}});
    }

    void waveform() {
        const QRect place = form_->Picture1->geometry();
        save(u"waveform"_qs, *form_->frTarnwick, place.adjusted(-2, -2, 2, 2));
    }

    void content() {
        form_->cbContent->click();
        settle();
        const QRect list = form_->lvAudioDetails->geometry();
        save(u"content"_qs, *form_->frTarnwick,
             list.united(form_->txbContent->geometry()).adjusted(-6, -6, 6, 6));
        form_->cbContent->click();
    }

    // Joins two prompts, so that every row after them is one off.
    bool mismatch() {
        const QTreeWidget& list = *form_->lvAudioDetails;
        const int begin = list.topLevelItem(3)->text(5).toInt();
        const int end = list.topLevelItem(4)->text(3).toInt();
        program_.EDT->waveform().SetSelection(1, begin + 150, end - 150);
        form_->cbDeleteSelection->click();
        if (!settled()) return false;
        pickRow(4);
        settle();
        const QRect counts = form_->frFiles->geometry();
        save(u"mismatch"_qs, *form_->frTarnwick,
             QRect(0, counts.top() - 4, form_->frTarnwick->width(),
                   form_->lvAudioDetails->geometry().top() + 212 - counts.top()));
        slips();
        return true;
    }

    // The mark of the joined prompts, with the cursor where the silence belongs.
    void slips() {
        Q_EMIT form_->lvAudioDetails->itemPressed(form_->lvAudioDetails->topLevelItem(3), 0);
        program_.EDT->SoundStop();
        program_.EDT->waveform().SetDisplayRange(0, 45000);
        auto* view = form_->frTarnwick->findChild<QWidget*>(u"Waveform"_qs);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_M, Qt::NoModifier);
        QApplication::sendEvent(view, &key);
        settle();
        save(u"slips"_qs, *view);
        program_.EDT->waveform().SetSelection(0, 0, 0);
    }

    void preferences() {
        form_->mnuPreferences->trigger();
        settle();
        save(u"preferences"_qs, *form_->frPreferences);
        form_->cbPreferencesIgnore->click();
    }

    void sheetChooser() {
        forms::frmSelectImportSheet chooser;
        chooser.cbxSheetNames->addItems({u"Prompts"_qs, u"Notes"_qs});
        chooser.show();
        settle();
        save(u"sheet"_qs, chooser);
    }

    // Undoes the join, exports, and takes the window that the export opens.
    bool batchProcessor() {
        if (!test::waitUntil([&] { return form_->cbUndo->isEnabled(); })) return false;
        form_->cbUndo->click();
        if (!settled()) return false;
        form_->mnuExport->trigger();
        forms::frmBatchProcessor* window = nullptr;
        const auto opened = [&] {
            window = program_.application.frame().findChild<forms::frmBatchProcessor*>();
            return window != nullptr && window->isVisible();
        };
        if (!test::waitUntil(opened)) return false;
        for (QCheckBox* step : {window->chCutEnd, window->chSilenceEnds, window->chNormalize})
            step->setChecked(true);
        window->txbNormdB->setText(u"-1.0"_qs);
        window->txbProjectFolder->setText(u"/home/studio/Harbour Tour"_qs);
        settle();
        save(u"batch"_qs, *window);
        return true;
    }

    // Selects the same prompts and previews a prefix. The session's folder lies in the home folder.
    bool renameWizard() {
        qputenv("HOME", platform::folderOf(session_.path()).toUtf8());
        form_->mnuRenameWizard->trigger();
        auto* window = program_.application.frame().findChild<forms::frmRenameWiz*>();
        if (window == nullptr) return false;
        QListWidget* folders = window->Directorylb;
        const QString name = session_.path().section(u'/', -1);
        for (QListWidgetItem* row : folders->findItems(name, Qt::MatchExactly)) {
            Q_EMIT folders->activated(folders->indexFromItem(row));
            break;
        }
        window->txbFileExtFilter->setText(u"*.wav"_qs);
        window->lbxAvailableFiles->setCurrentIndex(window->lbxAvailableFiles->model()->index(0, 0));
        for (int row = 1; row < 4; ++row)
            window->lbxAvailableFiles->selectionModel()->select(
                window->lbxAvailableFiles->model()->index(row, 0), QItemSelectionModel::Select);
        window->cbAdd->click();
        window->txbAddPrefix->setText(u"EN_"_qs);
        window->cbPreview->click();
        folders->item(0)->setText(u"/home/studio"_qs);
        folders->currentItem()->setText(u"Harbour Tour"_qs);
        settle();
        save(u"rename"_qs, *window);
        return true;
    }

  private:
    static void settle() {
        test::waitUntil([] { return false; }, 300);
    }

    bool settled() {
        bool calculating = false;
        return test::waitUntil([&] {
            calculating = calculating || form_->txbCalculating->isVisible();
            return calculating && form_->txbCalculating->isHidden() &&
                   form_->lvAudioDetails->topLevelItemCount() > 0 &&
                   program_.EDT->SoundExportsPending() == 0;
        });
    }

    void pickRow(int row) {
        QTreeWidgetItem* item = form_->lvAudioDetails->topLevelItem(row - 1);
        form_->lvAudioDetails->setCurrentItem(item);
        form_->txbContent->setPlainText(item->text(2));
    }

    void save(const QString& name, QWidget& window, const QRect& part = QRect(),
              const std::vector<Callout>& callouts = {}) const {
        QPixmap picture = window.grab(part.isNull() ? window.rect() : part);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        for (const Callout& callout : callouts) {
            const QPoint corner = callout.at->mapTo(&window, QPoint(-17, -12));
            const QRect mark(QPoint(std::max(corner.x(), 1), std::max(corner.y(), 0)), kMark);
            painter.setPen(QPen(Qt::white, 1.5));
            painter.setBrush(QColor(166, 38, 38));
            painter.drawEllipse(mark);
            QFont bold = painter.font();
            bold.setBold(true);
            bold.setPixelSize(11);
            painter.setFont(bold);
            painter.drawText(mark, Qt::AlignCenter, QString::number(callout.number));
        }
        painter.end();
        picture.save(target_ + u'/' + name + u".png"_qs);
    }

    QString target_;
    test::WholeProgram program_;
    forms::frmMain* form_ = nullptr;
    QTemporaryDir session_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: take_pictures <folder>\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", QByteArray::number(kPixelRatio));
    QApplication program(argc, argv);
    QApplication::setStyle(u"Fusion"_qs);
    QApplication::setFont(forms::uiFont());
    QApplication::setPalette(app::lightPalette());

    Studio studio(QString::fromLocal8Bit(argv[1]));
    if (!studio.loadDemo()) return 1;
    studio.mainWindow();
    studio.waveform();
    studio.content();
    studio.preferences();
    studio.sheetChooser();
    return studio.mismatch() && studio.batchProcessor() && studio.renameWizard() ? 0 : 1;
}
