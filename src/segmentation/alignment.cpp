#include "segmentation/alignment.h"

#include "forms/colours.h"
#include "forms/frm_main.h"
#include "model/list_columns.h"
#include "runtime/arithmetic.h"

namespace tarnwick::segmentation {

namespace {

constexpr QRgb kRed = qRgb(255, 0, 0);
constexpr QRgb kGreen = qRgb(0, 255, 0);

}  // namespace

void Alignment::Align() {
    form_.lvAudioDetails->clear();
    rows_.clear();
    for (qint32 i = 1; i <= inputs_.script.viPromptCount; ++i)
        addRow(i);
    form_.txbNberFileNames->setText(QString::number(inputs_.script.viPromptCount));
    compareCounters();
    selectCurrentRow();
    for (QWidget* control :
         std::initializer_list<QWidget*>{form_.txbSilence, form_.txbThreshold, form_.txbSpeed,
                                         form_.txbVariance, form_.cbContent})
        control->setEnabled(true);
}

void Alignment::addRow(qint32 i) {
    const model::PromptRow& prompt = runtime::element(inputs_.script.Prompts, i);
    auto* item = new QTreeWidgetItem(form_.lvAudioDetails);
    for (int column = 0; column < model::kListColumns; ++column)
        if (model::kListDesign[static_cast<std::size_t>(column)].centred())
            item->setTextAlignment(column, Qt::AlignCenter);
    item->setText(model::kRow, QString::number(i));
    item->setText(model::kFileName, prompt.FileName);
    item->setText(model::kContent, prompt.Content);

    const QString detail = u"row %1 has %2 words"_qs.arg(QString::number(i), prompt.Words);
    const AlignmentRow row = runtime::withDetail(detail, [&] {
        return alignRow(prompt, runtime::element(inputs_.silences, i - 1),
                        runtime::element(inputs_.silences, i), form_.txbSpeed->text(),
                        form_.txbVariance->text());
    });
    const auto time = [this](qint32 ms) { return inputs_.EDT.FormatMs(ms, 0, 1); };
    item->setText(model::kStartMsec, QString::number(row.Start));
    item->setText(model::kStartAudio, time(row.Start));
    item->setText(model::kEndMsec, QString::number(row.End));
    item->setText(model::kEndAudio, time(row.End));
    item->setText(model::kActual, time(row.Actual));
    item->setText(model::kWords, prompt.Words);
    item->setText(model::kProjected, time(row.Projected));
    item->setText(model::kVariance, row.Variance);
    rows_.push_back(row);
    if (row.flagged)
        for (const int column : {model::kActual, model::kProjected, model::kVariance})
            item->setForeground(column, QColor(kRed));
}

void Alignment::compareCounters() {
    const bool equal = form_.txbNberAudioFiles->text() == form_.txbNberFileNames->text();
    for (QLineEdit* counter : {form_.txbNberAudioFiles, form_.txbNberFileNames})
        forms::setBackground(counter, QColor(equal ? kGreen : kRed));
}

void Alignment::selectCurrentRow() {
    QTreeWidgetItem* item = form_.lvAudioDetails->topLevelItem(inputs_.session.viCurrentRow - 1);
    if (item == nullptr)
        throw runtime::Fault(u"Index out of bounds"_qs,
                             inputs_.script.viPromptCount == 0
                                 ? u"the script has no rows"_qs
                                 : u"row %1 was clicked last, and the list has %2 rows"_qs
                                       .arg(inputs_.session.viCurrentRow)
                                       .arg(inputs_.script.viPromptCount));
    form_.lvAudioDetails->scrollToItem(item);
    form_.lvAudioDetails->setCurrentItem(item);
}

}  // namespace tarnwick::segmentation
