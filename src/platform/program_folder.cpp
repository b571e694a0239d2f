#include "platform/program_folder.h"

#include <fcntl.h>
#include <unistd.h>

#include <QCoreApplication>
#include <cerrno>

#include "platform/durable_copy.h"
#include "runtime/fault.h"
#include "runtime/file_names.h"
#include "runtime/system_reason.h"

namespace tarnwick::platform {

namespace {

namespace fs = std::filesystem;

constexpr auto kDatabase = "Tarnwick.mdb";
constexpr auto kFromTheInstallation = {"Tarnwick_Manual.pdf", "Lame.exe"};

// 0 if this user can make files in the folder, otherwise the errno value that tells why not.
int whyNotWritable(const fs::path& folder) {
    return ::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) == 0 ? 0 : errno;
}

bool isReadOnly(const fs::path& folder) {
    const int error = whyNotWritable(folder);
    return error == EACCES || error == EPERM || error == EROFS;
}

void check(const std::error_code& error) {
    if (error) throw fs::filesystem_error({}, error);
}

// True if the folder was not there before.
bool makeFolder(const fs::path& folder) {
    std::error_code error;
    const bool made = fs::create_directories(folder, error);
    if (error == std::errc::not_a_directory && fs::exists(folder))
        error = std::make_error_code(std::errc::file_exists);
    check(error);
    if (made) fs::permissions(folder, fs::perms::owner_all);
    return made;
}

// The operator's own database. The delivered one may be write-protected, the copy must not be.
void copyDatabase(const fs::path& installed, const fs::path& own) {
    if (fs::exists(own) || !fs::exists(installed)) return;
    const std::error_code error = copyDurably(installed, own, IfTaken::Fail);
    if (error == std::errc::file_exists) return;  // another program was faster
    check(error);
    fs::permissions(own, fs::perms::owner_write, fs::perm_options::add);
}

// Makes `own` a link to `installed`, or a copy where the file system has no links. A file that is
// no link stays: the operator has put it there.
void linkTo(const fs::path& installed, const fs::path& own) {
    if (!fs::exists(installed)) return;
    if (fs::is_symlink(own)) {
        if (fs::read_symlink(own) == installed) return;
        fs::remove(own);
    } else if (fs::exists(own)) {
        return;
    }
    std::error_code error;
    fs::create_symlink(installed, own, error);
    if (error == std::errc::operation_not_permitted || error == std::errc::operation_not_supported)
        error = copyDurably(installed, own, IfTaken::Fail);
    if (error != std::errc::file_exists) check(error);
}

void complete(const fs::path& own, const fs::path& installed) {
    const bool made = makeFolder(own);
    try {
        if (const int error = whyNotWritable(own); error != 0)
            check({error, std::generic_category()});
        copyDatabase(installed / kDatabase, own / kDatabase);
        for (const char* name : kFromTheInstallation)
            linkTo(installed / name, own / name);
    } catch (const fs::filesystem_error&) {
        std::error_code notEmpty;  // by another program, or whole files: the next start uses them
        if (made) fs::remove(own, notEmpty);
        throw;
    }
}

}  // namespace

QString executableFolder(const fs::path& executable) {
    std::error_code error;
    const fs::path file = fs::read_symlink(executable, error);
    if (error) return QCoreApplication::applicationDirPath();
    return runtime::textOfFileName(file.parent_path().native());
}

QString programFolder(const QString& installed, const QString& own) {
    if (!isReadOnly(runtime::pathOf(installed))) return installed;
    try {
        complete(runtime::pathOf(own), runtime::pathOf(installed));
    } catch (const fs::filesystem_error& error) {
        throw runtime::Fault(
            u"Tarnwick cannot keep its settings in the folder\r\n%1:\r\n%2.\r\n\r\n"
            u"Remove the cause and start Tarnwick again."_qs.arg(
                runtime::readableFileName(own), runtime::systemReason(error.code().value())));
    }
    return own;
}

}  // namespace tarnwick::platform
