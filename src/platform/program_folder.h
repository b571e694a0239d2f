#pragma once

#include <QString>
#include <filesystem>

// Where the program is, and where it keeps its own files.

namespace tarnwick::platform {

// The folder of the executable, as a name that leads back to it whatever bytes it has
// (runtime/file_names.h), without a separator at its end unless it is the root. `executable` is a
// link to the running program; where the system has none, Qt's answer has to do. Needs the
// application object.
QString executableFolder(const std::filesystem::path& executable = "/proc/self/exe");

// The program folder, App.Path: `installed`, the folder of the executable, if this user can write
// there, otherwise `own`, a folder of the user. `own` is made if it is missing, and gets what it
// lacks: a copy of the delivered database, which is never replaced later, and links to the
// installed manual and Lame.exe, so that an update reaches every user. Each file is complete as
// soon as it has its name, so several programs can do this at the same time. Throws runtime::Fault
// with a sentence for the user if `own` cannot be completed or written; a folder that was made for
// nothing is removed again.
QString programFolder(const QString& installed, const QString& own);

}  // namespace tarnwick::platform
