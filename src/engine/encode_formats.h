#pragma once

#include <QString>

namespace tarnwick::engine {

enum OutputContainer : qint32 {
    kWavContainer = 1,
    kMp3Container = 2,
    kAcmContainer = 7,
    kAiffContainer = 8
};

enum WavEncodeMode : qint32 { kWav8, kWav16, kWav24, kWav32, kWavFloat };
enum AiffEncodeMode : qint32 { kAiff8 = 0, kAiff16 = 2, kAiff24 = 3, kAiff32 = 4, kAiffFloat = 5 };
enum Mp3EncodeMode : qint32 { kMp3ConstantBitRate = 1 };

struct WavOptions {
    qint32 EncodeMode = kWav16;
};

struct AiffOptions {
    qint32 EncodeMode = kAiff16;
};

// Output as MP3. The lists hold the constant bit rates that the encoder supports at a frequency,
// the highest first; none for a frequency that MP3 does not support. SoundExport refuses a rate
// that is not in the list.
class Mp3Options {
  public:
    virtual ~Mp3Options() = default;
    virtual qint32 CBR_GetCount(qint32 frequencyHz) const = 0;
    // In bits per second; 0 for an index out of range.
    virtual double CBR_GetValue(qint32 frequencyHz, qint32 index) const = 0;

    qint32 EncodeMode = kMp3ConstantBitRate;
    double CBR = 128000.0;  // bits per second
};

// Output through one of the codecs inside WAV. CodecsEnum must run before the lists are read.
// Indices count from 0; a name out of range is empty. A codec's index wraps around, so a caller
// that lists the codecs several times can use the index of any copy. The format determines the rate
// and channels of the file; those given to SoundExport are ignored.
class AcmOptions {
  public:
    virtual ~AcmOptions() = default;
    virtual void CodecsEnum() = 0;
    virtual qint16 CodecsGetCount() const = 0;
    // `codec` wrapped into the range of the list; -1 if it is negative or CodecsEnum has not run.
    qint16 listedCodec(qint16 codec) const {
        const qint16 count = CodecsGetCount();
        return codec < 0 || count == 0 ? qint16{-1} : static_cast<qint16>(codec % count);
    }
    virtual QString CodecsGetName(qint16 codec) const = 0;
    virtual qint16 FormatsGetCount(qint16 codec) const = 0;
    virtual QString FormatsGetName(qint16 codec, qint16 format) const = 0;

    qint16 CodecIndex = 0;
    qint16 FormatIndex = 0;
    qint32 Reserved3 = 0;
};

// The output format of the next SoundExport, which copies it. UI thread.
struct EncodeFormats {
    EncodeFormats(Mp3Options& mp3, AcmOptions& acm) : MP3(mp3), ACM(acm) {}

    qint32 FormatToUse = kWavContainer;
    WavOptions WAV;
    AiffOptions AIFF;
    Mp3Options& MP3;
    AcmOptions& ACM;
};

}  // namespace tarnwick::engine
