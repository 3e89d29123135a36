#include "settings/WindowsVersion.h"

#include "platform/SystemVersion.h"

namespace {

constexpr int Windows95Line = 1;
constexpr int WindowsNtLine = 2;

QString nameOfNt(const WindowsVersionRecord &version)
{
    switch (version.major) {
    case 3:
        return QStringLiteral("Windows NT 3.51");
    case 4:
        return QStringLiteral("Windows NT 4.0");
    case 5:
        return version.minor == 0 ? QStringLiteral("Windows 2000") : QStringLiteral("Windows XP");
    default:
        return {};
    }
}

QString nameOf95(int minor)
{
    switch (minor) {
    case 0:
        return QStringLiteral("Windows 95");
    case 10:
        return QStringLiteral("Windows 98");
    case 90:
        return QStringLiteral("Windows Mellinnium");
    default:
        return {};
    }
}

} // namespace

QString GetOSName(const SystemVersion &system)
{
    const std::optional<WindowsVersionRecord> version = system.windowsVersion();
    if (!version)
        return {};
    switch (version->platformId) {
    case Windows95Line:
        return nameOf95(version->minor);
    case WindowsNtLine:
        return nameOfNt(*version);
    default:
        return QStringLiteral("Failed");
    }
}

QString GetWindowsVersionName(const SystemVersion &system)
{
    const std::optional<WindowsVersionRecord> version = system.windowsVersion();
    if (!version)
        return system.systemName();
    const auto is = [&](int platform, int major) {
        return version->platformId == platform && version->major == major;
    };
    QString name = QStringLiteral("Unknown");
    if (is(Windows95Line, 4) && version->minor < 10)
        name = QStringLiteral("Windows 95");
    if (is(Windows95Line, 4) && version->minor == 10)
        name = QStringLiteral("Windows 98");
    if (is(Windows95Line, 4) && version->minor == 90)
        name = QStringLiteral("Windows Me");
    if (is(WindowsNtLine, 3))
        name = QStringLiteral("Windows NT 3.51");
    if (is(WindowsNtLine, 4))
        name = QStringLiteral("Windows NT 4");
    if (is(WindowsNtLine, 5) && version->minor == 0)
        name = QStringLiteral("Windows 2000");
    if (is(WindowsNtLine, 5) && version->minor == 1)
        name = QStringLiteral("Windows XP");
    if (version->major == 6)
        name = QStringLiteral("Windows Vista");
    return name;
}
