#include "segmentation/export_size.h"

#include <QMap>
#include <algorithm>

namespace tarnwick::segmentation {

qint64 addedBytes(const QList<PromptFile>& prompts, qint32 channels) {
    constexpr qint64 kHeaderBytes = 44;
    constexpr qint64 kBytesPerSample = 3;
    QMap<QString, qint64> added;
    for (const PromptFile& prompt : prompts) {
        const qint64 frames = std::max<qint64>(prompt.ms, 0) * kExportFrequency / 1000;
        added[prompt.path] =
            kHeaderBytes + frames * channels * kBytesPerSample - prompt.replacedBytes;
    }
    qint64 bytes = 0;
    for (const qint64 ofOne : std::as_const(added))
        bytes += ofOne;
    return bytes;
}

}  // namespace tarnwick::segmentation
