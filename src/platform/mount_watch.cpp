#include "platform/mount_watch.h"

namespace tarnwick::platform {

// The kernel signals each change of its mount table as an exceptional condition (POLLPRI) of the
// file. The file need not be read.
MountWatch::MountWatch(std::function<void()> changed) : table_("/proc/self/mountinfo", O_RDONLY) {
    if (!table_.valid()) return;
    notifier_ = std::make_unique<QSocketNotifier>(table_.number(), QSocketNotifier::Exception);
    connect(notifier_.get(), &QSocketNotifier::activated, this, std::move(changed));
}

}  // namespace tarnwick::platform
