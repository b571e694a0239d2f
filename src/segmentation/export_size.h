#pragma once

#include <QList>
#include <QString>

namespace tarnwick::segmentation {

inline constexpr qint32 kExportFrequency = 44100;  // Hz, of every exported prompt

// A prompt that is going to be written.
struct PromptFile {
    QString path;              // full path
    qint64 ms = 0;             // its length; negative counts as 0
    qint64 replacedBytes = 0;  // size of the file that it replaces
};

// Bytes by which the files of the folder will grow; negative if they shrink. If
// several prompts have the same path, only the last one counts.
qint64 addedBytes(const QList<PromptFile>& prompts, qint32 channels);

}  // namespace tarnwick::segmentation
