#include "batch/run_checks.h"

#include <QElapsedTimer>
#include <QSet>
#include <algorithm>

#include "batch/choice_notices.h"
#include "batch/output_encoding.h"
#include "batch/source_notices.h"
#include "batch/words.h"
#include "engine/failure.h"
#include "forms/frm_batch_processor.h"
#include "runtime/events.h"

namespace tarnwick::batch {

namespace {

// After this time the check stops, so that a slow disk does not keep the operator waiting. The
// files read until then are the sample from which the total length is estimated.
constexpr qint64 kMostMs = 300;

void tellAny(const Services& services, const std::optional<platform::Notice>& notice) {
    if (notice) services.notices.tell(*notice);
}

}  // namespace

void checkSources(Run& run, const Services& services) {
    const QString& folder = services.state.vsProjectFolder;
    const QStringList& names = *run.vsFiles;
    QList<platform::NameAndReason> noSounds;
    qint64 lengthMs = 0;
    qsizetype seen = 0;
    QElapsedTimer timer;
    timer.start();
    for (; seen < names.size() && timer.elapsed() < kMostMs; ++seen) {
        const QString path = platform::pathIn(folder, names[seen]);
        const engine::FileFacts facts = services.EDTX.factsOf(path);
        lengthMs += facts.lengthMs;
        if (facts.code != engine::kOk)
            noSounds << platform::NameAndReason{
                names[seen],
                engine::reasonOf({engine::Operation::Load, path, facts.code, facts.systemError})};
    }
    run.soundMs = seen == 0 ? 0 : lengthMs / seen * names.size();
    tellAny(services, noticeOfNoSounds(noSounds, names.size(), folder));
    tellAny(services, noticeOfSharedNames(names, folder));
}

RunChecks::RunChecks(forms::frmBatchProcessor& form, Run& run, const Services& services,
                     OutputEncoding& output)
    : form_(form), run_(run), services_(services), output_(output) {
    const auto left = [this](const QLineEdit* box, void (RunChecks::*check)() const) {
        runtime::onEvent(services_.failure, box, &QLineEdit::editingFinished, this,
                         [this, check] { (this->*check)(); });
    };
    for (const QLineEdit* box :
         {form_.txbCutStart, form_.txbCutEnd, form_.txbSetSilenceStart, form_.txbSetSilenceEnd})
        left(box, &RunChecks::entries);
    for (const QLineEdit* box : {form_.txbSilencedB, form_.txbSilencePerc, form_.txbNormdB,
                                 form_.txbNormPerc, form_.cbxOutputCBR->lineEdit()})
        left(box, &RunChecks::choices);
    for (const QRadioButton* format : form_.opFormat)
        runtime::onEvent(services_.failure, format, &QRadioButton::clicked, this,
                         [this] { choices(); });
}

void RunChecks::choices() const {
    const engine::Mp3Options& MP3 = services_.EDTX.encodeFormats().MP3;
    qint32 frequency = 0;
    for (std::size_t i = 0; i < kMp3Frequencies; ++i)
        if (form_.opFrequency[i]->isChecked()) frequency = kFrequencies[i];
    QList<double> rates;
    for (qint32 index = 0; index < MP3.CBR_GetCount(frequency); ++index)
        rates << MP3.CBR_GetValue(frequency, index);
    const auto notices = noticesOf({.mp3 = form_.opFormat[kMp3]->isChecked(),
                                    .frequencyOn = frequency != 0,
                                    .bitRate = form_.cbxOutputCBR->currentText(),
                                    .bitRates = rates,
                                    .thresholdPercent = form_.txbSilencePerc->text(),
                                    .normalizes = form_.chNormalize->isChecked(),
                                    .maximumDecibels = form_.txbNormdB->text(),
                                    .maximumPercent = form_.txbNormPerc->text(),
                                    .setsEnds = form_.chSilenceEnds->isChecked(),
                                    .thresholdDecibels = form_.txbSilencedB->text()});
    for (const platform::Notice& notice : notices)
        services_.notices.tell(notice);
}

void RunChecks::entries() const {
    tellAny(services_, noticeOfEntries({{kCutStart.toString(), form_.txbCutStart->text()},
                                        {kCutEnd.toString(), form_.txbCutEnd->text()},
                                        {kHead.toString(), form_.txbSetSilenceStart->text()},
                                        {kTail.toString(), form_.txbSetSilenceEnd->text()}}));
}

void RunChecks::processing() const {
    choices();
    if (!run_.vsFiles) return;
    const OutputEncoding::Plan plan = output_.plan(run_.soundMs);
    const QString& folder = services_.state.vsProjectFolder;
    tellAny(services_, noticeOfSpace(plan.bytes, services_.files.freeBytes(folder), folder));
    if (!plan.extension.isEmpty()) files(plan.extension);
}

void RunChecks::files(const QString& extension) const {
    const QString& folder = services_.state.vsProjectFolder;
    const QSet<QString> sources(run_.vsFiles->begin(), run_.vsFiles->end());
    QStringList foreign;
    for (const QString& source : *run_.vsFiles) {
        const QString output = outputOf(source, extension);
        if (!output.isEmpty() && !sources.contains(output) &&
            services_.files.FileExists(platform::pathIn(folder, output)))
            foreign << output;
    }
    foreign.removeDuplicates();
    tellAny(services_, noticeOfForeignFiles(foreign, folder));
}

}  // namespace tarnwick::batch
