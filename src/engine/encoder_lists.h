#pragma once

#include <map>
#include <vector>

#include "engine/encode_formats.h"

namespace tarnwick::engine {

// The bit rates that the MP3 encoder supports, the highest first. UI thread.
class Mp3Rates final : public Mp3Options {
  public:
    qint32 CBR_GetCount(qint32 frequencyHz) const override;
    double CBR_GetValue(qint32 frequencyHz, qint32 index) const override;

  private:
    const std::vector<int>& rates(qint32 frequencyHz) const;

    mutable std::map<qint32, std::vector<int>> known_;  // by frequency, as asking is slow
};

// The codecs that WAV files can be written with. UI thread.
class WavCodecs final : public AcmOptions {
  public:
    void CodecsEnum() override { listed_ = true; }
    qint16 CodecsGetCount() const override;
    QString CodecsGetName(qint16 codec) const override;
    qint16 FormatsGetCount(qint16 codec) const override;
    QString FormatsGetName(qint16 codec, qint16 format) const override;

  private:
    bool listed_ = false;
};

}  // namespace tarnwick::engine
