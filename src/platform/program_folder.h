#pragma once

#include <QString>
#include <filesystem>

namespace tarnwick::platform {

// The folder of the executable, as a name that leads back to it whatever bytes it has
// (runtime/file_names.h), without a separator at its end unless it is the root. `executable` is a
// link to the running program; where the system has none, Qt's answer has to do. Needs the
// application object.
QString programFolder(const std::filesystem::path& executable = "/proc/self/exe");

}  // namespace tarnwick::platform
