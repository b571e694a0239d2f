#pragma once

#include "engine/encode_formats.h"

namespace tarnwick::engine {

// The option objects of an editor that writes neither MP3 nor codecs inside WAV: there is nothing
// to choose from.
class NoMp3Options final : public Mp3Options {
  public:
    qint32 CBR_GetCount(qint32) const override { return 0; }
    double CBR_GetValue(qint32, qint32) const override { return 0.0; }
};

class NoAcmOptions final : public AcmOptions {
  public:
    void CodecsEnum() override {}
    qint16 CodecsGetCount() const override { return 0; }
    QString CodecsGetName(qint16) const override { return {}; }
    qint16 FormatsGetCount(qint16) const override { return 0; }
    QString FormatsGetName(qint16, qint16) const override { return {}; }
};

}  // namespace tarnwick::engine
