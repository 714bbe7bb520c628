#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace quillon {

/// The names under which a run-time error is told.
enum class ErrorName {
    TypeMismatch,
    SubscriptOutOfRange,
    Overflow,
    DivisionByZero,
    FileNotFound,
    PathNotFound,
    PermissionDenied,
    DiskFull,
    InputPastEndOfFile,
    DeviceError,
    StillExecuting,
    CannotReachService,
    ServiceError,
    InvalidProcedureCall,
    InternalError,
};

/// The words of an error name, for instance "Type mismatch".
[[nodiscard]] QString errorText(ErrorName name);

/// An operation could not go on. Thrown where it happens, shown once at the event boundary.
class RuntimeError : public std::exception
{
public:
    /// `doing` says what was being done and on what: file, line number, offending text.
    RuntimeError(ErrorName name, const QString &doing);

    [[nodiscard]] ErrorName name() const { return m_name; }
    [[nodiscard]] const QString &doing() const { return m_doing; }
    /// "Run-time error: " and the name, then on a new line what was being done.
    [[nodiscard]] QString text() const;
    [[nodiscard]] const char *what() const noexcept override { return m_what.constData(); }

private:
    ErrorName m_name;
    QString m_doing;
    QByteArray m_what;
};

/// The index for a container that holds `count` of what `thing` names in one word. Throws "Subscript out of
/// range".
[[nodiscard]] std::size_t checkedIndex(qint32 index, qint32 count, QStringView thing);

/// The error that a failed system call stands for (ENOSPC is "Disk full", ENOENT "File not found" ...).
[[nodiscard]] RuntimeError systemError(int code, const QString &doing);

} // namespace quillon
