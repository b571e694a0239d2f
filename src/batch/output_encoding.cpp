#include "batch/output_encoding.h"

#include <QDir>
#include <QFileInfo>
#include <QSignalBlocker>
#include <algorithm>
#include <array>
#include <span>
#include <tuple>

#include "batch/choice_notices.h"
#include "batch/source_notices.h"
#include "batch/trace.h"
#include "batch/words.h"
#include "forms/frm_batch_processor.h"
#include "forms/units.h"
#include "runtime/arithmetic.h"
#include "runtime/events.h"
#include "runtime/file_names.h"
#include "runtime/guarded.h"
#include "runtime/numbers.h"

namespace tarnwick::batch {

namespace {

constexpr std::array kWavModes{engine::kWav8, engine::kWav16, engine::kWav24, engine::kWav32,
                               engine::kWavFloat};
constexpr std::array kAiffModes{engine::kAiff8, engine::kAiff16, engine::kAiff24, engine::kAiff32,
                                engine::kAiffFloat};
constexpr std::array<qint32, 2> kChannels{1, 2};

constexpr double kKbpsTop = 960;                        // twips
constexpr double kCodecsTop = 680, kCodecsLeft = 2200;  // twips

// Stores the value of the selected option; leaves `value` unchanged if none of them is selected.
template <class Options, class Values, class Value>
void take(const Options& options, const Values& values, Value& value) {
    for (std::size_t i = 0; i < values.size(); ++i)
        if (options[i]->isChecked()) value = values[i];
}

// `index` -1: none.
void selectItem(QComboBox* box, int index) {
    if (index >= box->count()) runtime::invalidPropertyValue();
    box->setCurrentIndex(index);
}

// Blocks the signals, because the box selects its first item by itself and that is not a click.
void fill(QComboBox* box, const QStringList& items) {
    const QSignalBlocker quiet(box);
    box->addItems(items);
}

}  // namespace

OutputEncoding::OutputEncoding(forms::frmBatchProcessor& form, Run& run, const Services& services,
                               Trace& trace)
    : form_(form), run_(run), services_(services), trace_(trace) {
    // Turning an option on counts as a click, whether by mouse, key or code.
    const auto option = [this](QRadioButton* button, auto click) {
        runtime::onEvent(services_.failure, button, &QRadioButton::toggled, this, [click](bool on) {
            if (on) click();
        });
    };
    for (int index = 0; index < std::ssize(form_.opFormat); ++index)
        option(form_.opFormat[index], [this, index] { opFormat_Click(index); });
    for (QRadioButton* frequency : form_.opFrequency)
        option(frequency, [this] { MP3_CBR_Enumerate(); });
    // The first signal covers a change by key or code, the second a choice with the mouse, even of
    // the same codec.
    runtime::onEvent(services_.failure, form_.cbxCodecs, &QComboBox::currentIndexChanged, this,
                     [this] { cbxCodecs_Click(); });
    runtime::onEvent(services_.failure, form_.cbxCodecs, &QComboBox::activated, this,
                     [this] { cbxCodecs_Click(); });
}

bool OutputEncoding::encoderIsThere() const {
    if (!form_.opFormat[kMp3]->isChecked()) return true;
    const QString& appPath = services_.failure.appPath();
    if (services_.files.FileExists(platform::pathIn(appPath, u"Lame.exe"_qs))) return true;
    services_.boxes.critical(
        u"Lame.exe Not Installed!"_qs,
        u"Lame.exe not detected in %1 folder. This program is required to convert to .mp3. See "
        u"Manual."_qs.arg(runtime::readableFileName(appPath)));
    return false;
}

void OutputEncoding::opFormat_Click(int index) {
    runtime::guarded(
        services_.failure, u"frmBatchProcessor.opFormat_Click: ", [&](runtime::Line& line) {
            const bool codecs = index == kAcm;
            const bool mp3 = index == kMp3;
            line(10);
            if (!codecs)
                for (std::size_t high = kMp3Frequencies; high < form_.opFrequency.size(); ++high)
                    form_.opFrequency[high]->setVisible(!mp3);
            line(20);
            form_.frResampleSettings->setVisible(!codecs);
            line(30);
            if (codecs) return showCodecs();
            form_.frRate->setVisible(!mp3);
            line(40);
            if (mp3) MP3_CBR_Enumerate();
            line(50);
            form_.frKbps->setVisible(mp3);
            if (mp3) form_.frKbps->move(form_.frKbps->x(), forms::px(kKbpsTop));
            line(60);
            form_.frACMCodecs->hide();
        });
}

void OutputEncoding::showCodecs() {
    form_.frACMCodecs->show();
    form_.frACMCodecs->move(forms::px(kCodecsLeft), forms::px(kCodecsTop));
    ACM_Codecs();
}

// Lists the rates in the reverse of the engine's order, and selects the last item, the engine's
// first.
void OutputEncoding::MP3_CBR_Enumerate() {
    runtime::guarded(
        services_.failure, u"frmBatchProcessor.MP3_CBR_Enumerate: ", [&](runtime::Line& line) {
            const engine::Mp3Options& MP3 = services_.EDTX.encodeFormats().MP3;
            line(10);
            take(form_.opFrequency, std::span(kFrequencies).first(kMp3Frequencies), vlFrequency);
            line(20);
            const qint32 count = MP3.CBR_GetCount(vlFrequency);
            line(30);
            form_.cbxOutputCBR->clear();
            line(40);
            QStringList rates;
            for (qint32 index = count - 1; index >= 0; --index)
                rates << runtime::plainText(MP3.CBR_GetValue(vlFrequency, index) / 1000.0) +
                             u" kbps"_qs;
            fill(form_.cbxOutputCBR, rates);
            line(50);
            selectItem(form_.cbxOutputCBR, form_.cbxOutputCBR->count() - 1);
        });
}

// Each call adds all codecs again after those that are already listed.
void OutputEncoding::ACM_Codecs() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.ACM_Codecs: ",
                     [&](runtime::Line& line) {
                         engine::AcmOptions& ACM = services_.EDTX.encodeFormats().ACM;
                         line(10);
                         ACM.CodecsEnum();
                         line(20);
                         QStringList codecs;
                         for (qint16 codec = 0; codec < ACM.CodecsGetCount(); ++codec)
                             codecs << ACM.CodecsGetName(codec);
                         fill(form_.cbxCodecs, codecs);
                         line(30);
                         selectItem(form_.cbxCodecs, 0);
                         line(40);
                         UpdateCodecFormatsCombo(form_.cbxCodecs->currentIndex());
                     });
}

void OutputEncoding::cbxCodecs_Click() {
    runtime::guarded(services_.failure, u"frmBatchProcessor.cbxCodecs_Click: ",
                     [&](runtime::Line& line) {
                         line(10);
                         UpdateCodecFormatsCombo(form_.cbxCodecs->currentIndex());
                     });
}

void OutputEncoding::UpdateCodecFormatsCombo(int index) {
    runtime::guarded(services_.failure, u"frmBatchProcessor.UpdateCodecFormatsCombo: ",
                     [&](runtime::Line& line) {
                         const engine::AcmOptions& ACM = services_.EDTX.encodeFormats().ACM;
                         line(10);
                         form_.cbxCodecFormats->clear();
                         line(20);
                         const qint16 codec = runtime::roundToInteger(index);
                         QStringList formats;
                         for (qint16 format = 0; format < ACM.FormatsGetCount(codec); ++format)
                             formats << ACM.FormatsGetName(codec, format);
                         fill(form_.cbxCodecFormats, formats);
                         line(30);
                         selectItem(form_.cbxCodecFormats, 0);
                     });
}

OutputEncoding::Plan OutputEncoding::plan(qint64 soundMs) {
    const std::pair kept(vlFrequency, vlChannels);
    Plan plan;
    try {
        takeRate();
        plan.extension = setFormat();
        plan.bytes = services_.EDTX.exportBytes(vlFrequency, vlChannels, soundMs);
    } catch (const runtime::Fault&) {
        // The bit rate is not a number. noticesOf() tells the operator.
    }
    std::tie(vlFrequency, vlChannels) = kept;
    return plan;
}

// Takes over the selected frequency and channels.
void OutputEncoding::takeRate() {
    take(form_.opFrequency, kFrequencies, vlFrequency);
    take(form_.opChannel, kChannels, vlChannels);
}

void OutputEncoding::EDTX_Export_File() {
    runtime::guarded(
        services_.failure, u"frmBatchProcessor.EDTX_Export_File: ", [&](runtime::Line& line) {
            line(10);
            trace_.add(u"Enter Export"_qs);
            line(20);
            takeRate();
            line(30);
            vsOutputFile =
                platform::pathIn(services_.state.vsProjectFolder, stemOf(run_.fileInWork()));
            line(40);
            vsOutputFile += setFormat();
            line(50);
            keepForeignFile();
            line(60);
            run_.nResult =
                services_.EDTX.SoundExport(vlFrequency, vlChannels, 0, 0, -1, vsOutputFile);
            line(70);
            trace_.add(u"Exit Export"_qs);
        });
}

// Sets the engine's format and returns the file extension. If no format is selected, does nothing
// and returns an empty text.
QString OutputEncoding::setFormat() {
    engine::EncodeFormats& formats = services_.EDTX.encodeFormats();
    if (form_.opFormat[kWav]->isChecked()) {
        formats.FormatToUse = engine::kWavContainer;
        take(form_.opRate, kWavModes, formats.WAV.EncodeMode);
        return u".wav"_qs;
    }
    if (form_.opFormat[kMp3]->isChecked()) {
        formats.FormatToUse = engine::kMp3Container;
        formats.MP3.EncodeMode = engine::kMp3ConstantBitRate;
        const QString rate = form_.cbxOutputCBR->currentText();
        formats.MP3.CBR =
            runtime::withDetail(typedFor(u"the bit rate", rate), [&] { return bitRateOf(rate); });
        return u".mp3"_qs;
    }
    if (form_.opFormat[kAcm]->isChecked()) {
        vlFrequency = 0;  // the codec determines both
        vlChannels = 0;
        formats.FormatToUse = engine::kAcmContainer;
        formats.ACM.Reserved3 = 0;
        formats.ACM.CodecIndex = runtime::roundToInteger(form_.cbxCodecs->currentIndex());
        formats.ACM.FormatIndex = runtime::roundToInteger(form_.cbxCodecFormats->currentIndex());
        return u".wav"_qs;
    }
    if (form_.opFormat[kAiff]->isChecked()) {
        formats.FormatToUse = engine::kAiffContainer;
        take(form_.opRate, kAiffModes, formats.AIFF.EncodeMode);
        return u".aiff"_qs;
    }
    return {};
}

// The run's outputs may replace one another, because their sources are kept. Any other file of that
// name is a recording outside the run: it is moved to the sources, under a free name.
void OutputEncoding::keepForeignFile() {
    run_.report.output = QFileInfo(vsOutputFile).fileName();
    if (!written_.contains(vsOutputFile) && services_.files.FileExists(vsOutputFile)) {
        const QFileInfo file(vsOutputFile);
        // The current source has a temporary name at the moment and will get its own back.
        const auto taken = [this](const QString& name) {
            return name == run_.fileInWork() ||
                   services_.files.isTaken(platform::pathIn(run_.vsRawFolder, name));
        };
        QString kept = file.fileName();
        for (int number = 2; taken(kept); ++number)
            kept = u"%1 (%2).%3"_qs.arg(file.completeBaseName(), QString::number(number),
                                        file.suffix());
        services_.files.MoveFile(vsOutputFile, platform::pathIn(run_.vsRawFolder, kept));
    }
    written_.insert(vsOutputFile);
}

}  // namespace tarnwick::batch
