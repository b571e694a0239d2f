#include "segmentation/slip_guide.h"

#include <algorithm>

#include "forms/frm_main.h"
#include "model/list_columns.h"
#include "runtime/numbers.h"
#include "segmentation/mending.h"
#include "segmentation/row_tip.h"
#include "segmentation/slip_words.h"

namespace tarnwick::segmentation {

namespace {

constexpr double kLongestPauseMs = 3'600'000.0;

double lettersOf(const QString& content) {
    const QList<uint> signs = content.toUcs4();
    return static_cast<double>(
        std::ranges::count_if(signs, [](uint sign) { return QChar::isLetterOrNumber(sign); }));
}

// The list row that plays the stretch of a slip.
int rowOf(const LikelySlip& slip, int rows) { return std::min(slip.stretch, rows); }

}  // namespace

// No more than the list and the array of silences have room for.
int SlipGuide::stretches() const {
    return std::clamp(services_.EDT.SilencePositionsGetCount() - 1, 0, model::kSilenceSlots - 1);
}

QString SlipGuide::timeText(qint32 ms) const { return services_.EDT.FormatMs(ms, 0, 1); }

void SlipGuide::listRebuilt() {
    wordsPerMinute_ = runtime::val(form_.txbSpeed->text());
    // The boxes hold any text, also after a scan.
    shortestPauseMs_ = static_cast<qint32>(
        std::clamp(runtime::val(form_.txbSilence->text()), 0.0, kLongestPauseMs));
    slips_ = findSlips();
    showOnWaveform();
    showInList();
    showAtCounters();
    tellOfSlips();
}

void SlipGuide::forget() {
    slips_.clear();
    pressed_ = 0;
    services_.showRows({}, {});
    showAtCounters();
    services_.notices.settle(slipTopic());
}

void SlipGuide::rowPressed(int row) {
    pressed_ = row;
    services_.showPressedRow(row);
}

std::vector<LikelySlip> SlipGuide::findSlips() const {
    SlipQuestion question{{}, {}, {}, double(shortestPauseMs_)};
    for (int row = 1; row <= services_.script.viPromptCount; ++row) {
        const model::PromptRow& prompt = services_.script.Prompts[static_cast<std::size_t>(row)];
        question.words.push_back(std::max(runtime::val(prompt.Words), 1.0));
        question.letters.push_back(std::max(lettersOf(prompt.Content), 1.0));
    }
    for (std::size_t at = 1; at <= static_cast<std::size_t>(stretches()); ++at)
        question.lengths.push_back(std::max(
            double(services_.silences[at].StartAt) - services_.silences[at - 1].FinishAt, 1.0));
    return likelySlips(question);
}

void SlipGuide::showOnWaveform() {
    std::vector<bool> flagged;
    for (const AlignmentRow& row : services_.alignment.rows())
        flagged.push_back(row.flagged);
    std::vector<qint32> places;
    for (const LikelySlip& slip : slips_)
        places.push_back(placeOf(slip, services_.silences));
    services_.showRows(flagged, places);
    services_.showPressedRow(services_.session.viCurrentRow);
}

// For screen readers; with the pointer, the tip is made when it is due.
void SlipGuide::showInList() {
    for (int row = 1; row <= form_.lvAudioDetails->topLevelItemCount(); ++row)
        form_.lvAudioDetails->topLevelItem(row - 1)->setData(
            model::kRow, Qt::AccessibleDescriptionRole, linesOf(row).join(u' '));
}

void SlipGuide::showAtCounters() {
    for (QLineEdit* counter : {form_.txbNberAudioFiles, form_.txbNberFileNames})
        counter->setToolTip(listOf(slips_));
}

void SlipGuide::tellOfSlips() {
    const QString stretches = form_.txbNberAudioFiles->text();
    const QString prompts = form_.txbNberFileNames->text();
    if (stretches == prompts || slips_.empty())
        services_.notices.settle(slipTopic());
    else
        services_.notices.tell(slipsAreLikely(stretches, prompts, slips_));
}

std::vector<int> SlipGuide::doubtfulRows() const {
    const int rows = form_.lvAudioDetails->topLevelItemCount();
    std::vector<int> doubtful;
    if (rows == 0) return doubtful;  // while a scan is under way
    for (const LikelySlip& slip : slips_)
        doubtful.push_back(rowOf(slip, rows));
    if (!doubtful.empty()) return doubtful;
    for (int row = 1; row <= rows; ++row)
        if (services_.alignment.rows()[static_cast<std::size_t>(row) - 1].flagged)
            doubtful.push_back(row);
    return doubtful;
}

void SlipGuide::pressDoubtful(bool forward) {
    const std::vector<int> rows = doubtfulRows();
    if (forward) {
        const auto next = std::ranges::upper_bound(rows, pressed_);
        if (next != rows.end()) services_.pressRow(*next);
    } else {
        const auto next = std::ranges::lower_bound(rows, pressed_);
        if (next != rows.begin()) services_.pressRow(*std::prev(next));
    }
}

void SlipGuide::selectMending(int slip) {
    if (slip < 0 || slip >= static_cast<int>(slips_.size())) return;
    engine::Waveform& waveform = services_.EDT.waveform();
    const ViewRange range = mendingOf(slips_[static_cast<std::size_t>(slip)], services_.silences,
                                      shortestPauseMs_, waveform);
    ViewRange now;
    waveform.GetDisplayRange(now.begin, now.end);
    const ViewRange view = viewShowing(range, now);
    if (view != now) waveform.SetDisplayRange(view.begin, view.end);
    waveform.SetSelection(1, range.begin, range.end);
}

QStringList SlipGuide::linesOf(int row) const {
    const auto index = static_cast<std::size_t>(row);
    if (row < 1 || row > services_.script.viPromptCount ||
        index > services_.alignment.rows().size())
        return {};
    const AlignmentRow& timing = services_.alignment.rows()[index - 1];
    const auto time = [this](qint32 ms) { return services_.EDT.FormatMs(ms, 0, 1); };
    QStringList lines = rowTip({row, services_.script.Prompts[index], timing, time(timing.Start),
                                time(timing.End), wordsPerMinute_, row <= stretches()});
    for (const LikelySlip& slip : slips_)
        if (rowOf(slip, services_.script.viPromptCount) == row) lines << sentenceOf(slip);
    return lines;
}

QString SlipGuide::tipOfRow(int row) const {
    QStringList lines = linesOf(row);
    if (lines.isEmpty()) return {};
    lines << (form_.opPlayfromlistview[0]->isChecked()
                  ? u"A press plays on to the end of the recording (Ctrl+M)."_qs
                  : u"A press plays while the button is held (Ctrl+M)."_qs);
    return wrappedTip(lines);
}

QString SlipGuide::tipOfStretch(int stretch) const {
    QStringList lines = linesOf(stretch);
    if (lines.isEmpty() && stretch >= 1 && stretch <= stretches()) {
        const auto index = static_cast<std::size_t>(stretch);
        const qint32 begin = services_.silences[index - 1].FinishAt;
        const qint32 end = services_.silences[index].StartAt;
        lines << u"Stretch %1: the script has no row for it."_qs.arg(stretch)
              << timesText(timeText(begin), timeText(end), end - begin);
    }
    return lines.isEmpty() ? QString() : wrappedTip(lines);
}

QString SlipGuide::tipOfSlip(int slip) const {
    if (slip < 0 || slip >= static_cast<int>(slips_.size())) return {};
    const LikelySlip& likely = slips_[static_cast<std::size_t>(slip)];
    return wrappedTip(
        {sentenceOf(likely), likely.kind == LikelySlip::Missing
                                 ? u"A double click, or M, sets the cursor where it would stand."_qs
                                 : u"A double click, or M, selects the place to edit. Listen to it "
                                   u"first."_qs});
}

}  // namespace tarnwick::segmentation
