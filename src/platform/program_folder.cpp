#include "platform/program_folder.h"

#include <QCoreApplication>

#include "runtime/file_names.h"

namespace tarnwick::platform {

QString programFolder(const std::filesystem::path& executable) {
    std::error_code error;
    const std::filesystem::path file = std::filesystem::read_symlink(executable, error);
    if (error) return QCoreApplication::applicationDirPath();
    return runtime::textOfFileName(file.parent_path().native());
}

}  // namespace tarnwick::platform
