#pragma once

#include <QtGlobal>

namespace tarnwick::engine {

// Level changes on a stretch of sound, in milliseconds, end -1 = end of the sound. UI thread.
class Effects {
  public:
    virtual ~Effects() = default;

    // Multiplies the stretch by `level` (0.0 silences it). The first and third extra arguments are
    // always 0. Ends with SoundEditDone.
    virtual void ApplyVolume(qint32 beginMs, qint32 endMs, qint32 mode, float level,
                             qint32 reserved) = 0;

    // Brings the peak of all channels to `percent` of full scale, 0 or more; past 100 the sound
    // clips when it is written. Silence stays silence, and what is fainter than
    // -200 dB comes 200 dB nearer. The last two arguments are always 100. Ends
    // with SoundEditDone, nCommand kNormalize. Returns an ErrorCode.
    virtual qint32 Normalize(qint32 beginMs, qint32 endMs, float percent, float attackPercent,
                             float releasePercent) = 0;
};

}  // namespace tarnwick::engine
