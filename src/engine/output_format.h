#pragma once

#include "engine/encode_formats.h"
#include "engine/sound_events.h"
#include "sound/writing/sound_writer.h"

namespace tarnwick::engine {

// What an export is to be written as, from the settings as they are now. Frequency and channels
// are those of the codec's format where one was chosen. kBadFormat for settings that no file can
// have.
ErrorCode outputFormat(const EncodeFormats& formats, qint32 frequencyHz, qint32 channels,
                       sound::OutputFormat& output);

}  // namespace tarnwick::engine
