#pragma once

#include "engine/failure.h"
#include "engine/sound_events.h"
#include "platform/notices.h"
#include "segmentation/edit_log.h"

// Notices about edits of the sound and about the search for pauses.

namespace tarnwick::segmentation {

// A sentence: how to load a session again from the same folder.
QString loadAgain();

// An edit has deleted the whole sound, and it was closed. `recording`: full path of its file.
platform::Notice soundDeleted(const QString& recording);

// Undo has taken back a pause that the load had added; `pause` is not Operator.
platform::Notice pauseUndone(EditKind pause);

platform::Notice editFailed(EditKind kind, qint16 command, const engine::Failure& failure);

// The topic of scanFailed().
QString scanTopic();

platform::Notice scanFailed(const engine::Failure& failure);

}  // namespace tarnwick::segmentation
