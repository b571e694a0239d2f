#pragma once

#include <QtGlobal>

namespace tarnwick::engine {

// Level changes on a stretch of sound. Positions in ms; an end of -1 is the end of the sound. UI
// thread.
class Effects {
  public:
    virtual ~Effects() = default;

    // Multiplies the stretch by `level` (0.0 silences it). `mode` and `reserved` are always 0. Ends
    // with SoundEditDone.
    virtual void ApplyVolume(qint32 beginMs, qint32 endMs, qint32 mode, float level,
                             qint32 reserved) = 0;

    // Brings the peak of all channels to `percent` of full scale, 0 or more; above 100 the sound
    // clips when it is written. Silence stays silence, and the gain is at most 200 dB. The last two
    // arguments are always 100. Ends with SoundEditDone, nCommand kNormalize. Returns an ErrorCode.
    virtual qint32 Normalize(qint32 beginMs, qint32 endMs, float percent, float attackPercent,
                             float releasePercent) = 0;
};

}  // namespace tarnwick::engine
