#include "engine/encoder_lists.h"

#include "sound/samples/wav_codecs.h"
#include "sound/writing/mp3_encoder.h"

namespace tarnwick::engine {

namespace {

const sound::WavCodecInfo& infoOf(qint16 codec) {
    return sound::wavCodecs()[static_cast<std::size_t>(codec)];
}

// "8.000 kHz, 8 Bit, Mono"; without bits if the codec has no whole number of bits per sample.
QString nameOf(const sound::AudioFormat& format) {
    const QString bits = format.bits > 0 ? QStringLiteral(" %1 Bit,").arg(format.bits) : QString();
    return QStringLiteral("%1 kHz,%2 %3")
        .arg(QString::number(format.rate / 1000.0, 'f', 3), bits,
             format.channels == 1 ? QStringLiteral("Mono") : QStringLiteral("Stereo"));
}

}  // namespace

const std::vector<int>& Mp3Rates::rates(qint32 frequencyHz) const {
    const auto known = known_.find(frequencyHz);
    if (known != known_.end()) return known->second;
    const std::vector<int> rising = sound::mp3BitRates(frequencyHz);
    return known_[frequencyHz] = std::vector<int>(rising.rbegin(), rising.rend());
}

qint32 Mp3Rates::CBR_GetCount(qint32 frequencyHz) const {
    return static_cast<qint32>(rates(frequencyHz).size());
}

double Mp3Rates::CBR_GetValue(qint32 frequencyHz, qint32 index) const {
    const std::vector<int>& all = rates(frequencyHz);
    if (index < 0 || index >= std::ssize(all)) return 0.0;
    return all[static_cast<std::size_t>(index)];
}

qint16 WavCodecs::CodecsGetCount() const {
    return listed_ ? static_cast<qint16>(sound::wavCodecs().size()) : qint16{0};
}

QString WavCodecs::CodecsGetName(qint16 codec) const {
    const qint16 listed = listedCodec(codec);
    return listed < 0 ? QString() : QString::fromLatin1(infoOf(listed).name);
}

qint16 WavCodecs::FormatsGetCount(qint16 codec) const {
    const qint16 listed = listedCodec(codec);
    return listed < 0 ? qint16{0} : static_cast<qint16>(infoOf(listed).formats.size());
}

QString WavCodecs::FormatsGetName(qint16 codec, qint16 format) const {
    if (format < 0 || format >= FormatsGetCount(codec)) return {};
    return nameOf(infoOf(listedCodec(codec)).formats[static_cast<std::size_t>(format)]);
}

}  // namespace tarnwick::engine
