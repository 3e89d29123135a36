#include "base/RunTimeFailure.h"

#include <new>

namespace {

QString customaryDescription(RunTimeFailure::Number number)
{
    switch (number) {
    case RunTimeFailure::InvalidCall:
        return QStringLiteral("Invalid procedure call or argument");
    case RunTimeFailure::Overflow:
        return QStringLiteral("Overflow");
    case RunTimeFailure::OutOfMemory:
        return QStringLiteral("Out of memory");
    case RunTimeFailure::SubscriptOutOfRange:
        return QStringLiteral("Subscript out of range");
    case RunTimeFailure::DivisionByZero:
        return QStringLiteral("Division by zero");
    case RunTimeFailure::TypeMismatch:
        return QStringLiteral("Type mismatch");
    case RunTimeFailure::InternalError:
        return QStringLiteral("Internal error");
    case RunTimeFailure::FileNotFound:
        return QStringLiteral("File not found");
    case RunTimeFailure::DeviceIoError:
        return QStringLiteral("Device I/O error");
    case RunTimeFailure::DiskFull:
        return QStringLiteral("Disk full");
    case RunTimeFailure::PermissionDenied:
        return QStringLiteral("Permission denied");
    case RunTimeFailure::PathFileAccessError:
        return QStringLiteral("Path/File access error");
    case RunTimeFailure::PathNotFound:
        return QStringLiteral("Path not found");
    case RunTimeFailure::ObjectNotSet:
        return QStringLiteral("Object variable not set");
    case RunTimeFailure::CantCreateComponent:
        return QStringLiteral("Component can't create object");
    }
    return QStringLiteral("Application-defined or object-defined error");
}

} // namespace

RunTimeFailure::RunTimeFailure(Number number) : RunTimeFailure(number, customaryDescription(number)) {}

RunTimeFailure::RunTimeFailure(int number, QString description)
    : m_number(number),
      m_description(std::move(description)),
      m_what(QStringLiteral("Run-time error '%1': %2").arg(number).arg(m_description).toUtf8())
{}

QString RunTimeFailure::reason() const
{
    switch (m_number) {
    case DiskFull:
        return QStringLiteral("the disk is full");
    case PermissionDenied:
        return QStringLiteral("permission denied");
    case DeviceIoError:
        return QStringLiteral("the disk reports an error");
    case FileNotFound:
        return QStringLiteral("the file is missing");
    case PathNotFound:
        return QStringLiteral("the folder is missing");
    default:
        return m_description.left(1).toLower() + m_description.mid(1);
    }
}

RunTimeFailure RunTimeFailure::ofCaught()
{
    try {
        throw;
    } catch (const RunTimeFailure &failure) {
        return failure;
    } catch (const std::bad_alloc &) {
        return RunTimeFailure(OutOfMemory);
    } catch (const std::exception &failure) {
        return {InternalError, customaryDescription(InternalError) + QStringLiteral(": ") +
                                   QString::fromUtf8(failure.what())};
    } catch (...) {
        return RunTimeFailure(InternalError);
    }
}
