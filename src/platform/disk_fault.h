#pragma once

#include <QString>
#include <system_error>

namespace tarnwick::platform {

// Throws the Fault with the classic words for a file system error. Its detail is the path, followed
// by the true cause if the classic words stand for several: "/a/b.wav: the disk is read-only".
[[noreturn]] void throwDiskFault(const std::error_code& error, const QString& path);

}  // namespace tarnwick::platform
