#pragma once

#include <QStringList>

// Words that several notices of the room share.

namespace tarnwick::segmentation {

// The name of a file without its folder, for display.
QString bareName(const QString& path);

// "a.wav, b.wav and c.wav"; of more than ten names, the first ten "and 4 others". `names` is not
// empty.
QString enumerated(const QStringList& names);

// A sentence: how to load a session again from the same folder.
QString loadAgain();

}  // namespace tarnwick::segmentation
