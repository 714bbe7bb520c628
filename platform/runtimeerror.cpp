#include "platform/runtimeerror.h"

#include <cerrno>
#include <cstring>

namespace quillon {

using namespace Qt::StringLiterals;

QString errorText(ErrorName name)
{
    switch (name) {
    case ErrorName::TypeMismatch:
        return u"Type mismatch"_s;
    case ErrorName::SubscriptOutOfRange:
        return u"Subscript out of range"_s;
    case ErrorName::Overflow:
        return u"Overflow"_s;
    case ErrorName::DivisionByZero:
        return u"Division by zero"_s;
    case ErrorName::FileNotFound:
        return u"File not found"_s;
    case ErrorName::PathNotFound:
        return u"Path not found"_s;
    case ErrorName::PermissionDenied:
        return u"Permission denied"_s;
    case ErrorName::DiskFull:
        return u"Disk full"_s;
    case ErrorName::InputPastEndOfFile:
        return u"Input past end of file"_s;
    case ErrorName::DeviceError:
        return u"Device I/O error"_s;
    case ErrorName::StillExecuting:
        return u"Still executing last request"_s;
    case ErrorName::CannotReachService:
        return u"Cannot reach the service"_s;
    case ErrorName::ServiceError:
        return u"The service answered with an error"_s;
    case ErrorName::InvalidProcedureCall:
        return u"Invalid procedure call"_s;
    case ErrorName::InternalError:
        return u"Internal error"_s;
    }
    return {};
}

RuntimeError::RuntimeError(ErrorName name, const QString &doing)
    : m_name(name)
    , m_doing(doing)
    , m_what(text().toUtf8())
{
}

QString RuntimeError::text() const
{
    return u"Run-time error: "_s + errorText(m_name) + u'\n' + m_doing;
}

std::size_t checkedIndex(qint32 index, qint32 count, QStringView thing)
{
    if (index < 0 || index >= count) {
        throw RuntimeError(ErrorName::SubscriptOutOfRange,
            u"There is no %1 number %2; there are %3 of them"_s.arg(thing).arg(index).arg(count));
    }
    return static_cast<std::size_t>(index);
}

RuntimeError systemError(int code, const QString &doing)
{
    switch (code) {
    case ENOENT:
        return {ErrorName::FileNotFound, doing};
    case ENOTDIR:
        return {ErrorName::PathNotFound, doing};
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
    case EISDIR:
        return {ErrorName::PermissionDenied, doing};
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return {ErrorName::DiskFull, doing};
    default:
        return {
            ErrorName::DeviceError, doing + u" ("_s + QString::fromLocal8Bit(std::strerror(code)) + u")"_s};
    }
}

} // namespace quillon
