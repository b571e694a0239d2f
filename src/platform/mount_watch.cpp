#include "platform/mount_watch.h"

namespace tarnwick::platform {

// The kernel reports a change of its table of mounts as an exceptional condition of that file, once
// for each change; nothing has to be read.
MountWatch::MountWatch(std::function<void()> changed) : table_("/proc/self/mountinfo", O_RDONLY) {
    if (!table_.valid()) return;
    notifier_ = std::make_unique<QSocketNotifier>(table_.number(), QSocketNotifier::Exception);
    connect(notifier_.get(), &QSocketNotifier::activated, this, std::move(changed));
}

}  // namespace tarnwick::platform
