#include "runtime/system_reason.h"

#include <cerrno>
#include <system_error>

#include "runtime/fault.h"

namespace tarnwick::runtime {

namespace {

QString withSmallFirst(QString text) {
    if (!text.isEmpty()) text[0] = text[0].toLower();
    return text;
}

}  // namespace

QString systemReason(int error) {
    switch (error) {
        case 0:
            return {};
        case ENOSPC:
            return u"no space left on the device"_qs;
        case EDQUOT:
            return u"your disk quota is used up"_qs;
        case EFBIG:
            return u"the file would be larger than is allowed"_qs;
        case EACCES:
        case EPERM:
            return u"permission denied"_qs;
        case EROFS:
            return u"the disk is read-only"_qs;
        case EIO:
            return u"the disk reports an error"_qs;
        case ENOENT:
        case ENOTDIR:
            return u"the file or its folder is not there"_qs;
        case EEXIST:
            return u"another file has that name"_qs;
        case EISDIR:
            return u"a folder has that name"_qs;
        case ENAMETOOLONG:
            return u"the name is too long"_qs;
        default:
            return withSmallFirst(QString::fromStdString(std::generic_category().message(error)));
    }
}

QString reasonOf(const std::exception& error) {
    return withSmallFirst(detailedDescriptionOf(error));
}

}  // namespace tarnwick::runtime
