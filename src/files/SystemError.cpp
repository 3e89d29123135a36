#include "files/SystemError.h"

#include <cerrno>
#include <cstring>

RunTimeFailure files::failureOf(int systemError)
{
    const QString text = QString::fromLocal8Bit(std::strerror(systemError));
    switch (systemError) {
    case ENOSPC:
    case EDQUOT:
        return {RunTimeFailure::DiskFull, text};
    case EACCES:
    case EPERM:
    case EROFS:
        return {RunTimeFailure::PermissionDenied, text};
    case ENOENT:
    case ENOTDIR:
        return {RunTimeFailure::PathNotFound, text};
    case EIO:
        return {RunTimeFailure::DeviceIoError, text};
    default:
        return {RunTimeFailure::PathFileAccessError, text};
    }
}
