#pragma once

#include "engine/encode_formats.h"
#include "engine/sound_events.h"
#include "sound/writing/sound_writer.h"

namespace tarnwick::engine {

// Sets `output` to the format that the present settings choose. If they choose a codec, the
// frequency and channels come from its format. Returns kBadFormat for settings that no file can
// have.
ErrorCode outputFormat(const EncodeFormats& formats, qint32 frequencyHz, qint32 channels,
                       sound::OutputFormat& output);

// The estimated size in bytes of a file of that length.
qint64 bytesOf(const sound::OutputFormat& output, qint64 lengthMs);

}  // namespace tarnwick::engine
