#include "platform/disk_fault.h"

#include <cerrno>
#include <cstdlib>

#include "runtime/fault.h"
#include "runtime/file_names.h"
#include "runtime/system_reason.h"

namespace tarnwick::platform {

namespace {

[[noreturn]] void throwClassicFault(const std::error_code& error) {
    switch (error.value()) {
        case ENOENT:
            runtime::fileNotFound();
        case ENOTDIR:
            runtime::pathNotFound();
        case EEXIST:
            runtime::fileAlreadyExists();
        case EACCES:
        case EPERM:
        case EROFS:
            runtime::permissionDenied();
        case ENOSPC:
        case EDQUOT:
            runtime::diskFull();
        default:
            throw runtime::Fault(QString::fromStdString(error.message()));
    }
}

}  // namespace

void throwDiskFault(const std::error_code& error, const QString& path) {
    QString detail = runtime::readableFileName(path);
    if (error.value() == EROFS || error.value() == EDQUOT)
        detail += u": "_qs + runtime::systemReason(error.value());
    runtime::withDetail(detail, [&] { throwClassicFault(error); });
    std::abort();  // never reached: the call above always throws
}

}  // namespace tarnwick::platform
