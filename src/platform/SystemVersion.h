#pragma once

#include <QString>
#include <optional>

/// What a Windows system says of its version (its OSVERSIONINFO record).
struct WindowsVersionRecord
{
    int platformId = 0; ///< 1 for the 95 line, 2 for the NT line
    int major = 0;
    int minor = 0;
    int build = 0;
    QString servicePack;
};

/// The system's version.
class SystemVersion
{
public:
    virtual ~SystemVersion() = default;

    /// Nothing on a system other than Windows.
    virtual std::optional<WindowsVersionRecord> windowsVersion() const = 0;
    /// The name that the system, or its distribution, gives itself.
    virtual QString systemName() const = 0;
};
