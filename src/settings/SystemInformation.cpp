#include "settings/SystemInformation.h"

#include "base/Text.h"
#include "platform/ProgramPaths.h"
#include "platform/Registry.h"
#include "platform/Shell.h"

#include <QFileInfo>

namespace {

constexpr qsizetype LongestSystemValue = 1024;

struct Tool
{
    QString program;
    QStringList arguments;
};

/// Of the desktops, each with its own first; then those that stand by themselves.
const std::initializer_list<Tool> &desktopTools()
{
    static const std::initializer_list<Tool> tools = {
        {QStringLiteral("kinfocenter"), {}},
        {QStringLiteral("gnome-control-center"), {QStringLiteral("info-overview")}},
        {QStringLiteral("cinnamon-settings"), {QStringLiteral("info")}},
        {QStringLiteral("mate-system-monitor"), {QStringLiteral("--show-system-tab")}},
        {QStringLiteral("hardinfo2"), {}},
        {QStringLiteral("hardinfo"), {}},
        {QStringLiteral("lshw-gtk"), {}},
    };
    return tools;
}

bool startDesktopTool(Shell &shell)
{
    for (const Tool &tool : desktopTools()) {
        const QString program = shell.findProgram(tool.program);
        if (!program.isEmpty() && shell.start(program, tool.arguments))
            return true;
    }
    return false;
}

} // namespace

bool GetKeyValue(const Registry &registry, quint32 KeyRoot, const QString &KeyName, const QString &SubKeyRef,
                 QString &KeyVal)
{
    std::optional<RegistryValue> value = registry.value(KeyRoot, KeyName, SubKeyRef);
    if (!value || value->bytes.size() > LongestSystemValue) {
        KeyVal.clear();
        return false;
    }
    QByteArray &bytes = value->bytes;
    if (value->type == RegistryValue::String) {
        if (bytes.endsWith('\0'))
            bytes.chop(1);
        KeyVal = QString::fromLocal8Bit(bytes);
    } else if (value->type == RegistryValue::DoubleWord) {
        // The bytes stand lowest first; a highest one of 0 that is cut off changes nothing.
        quint32 number = 0;
        for (auto byte = bytes.crbegin(); byte != bytes.crend(); ++byte)
            number = number << 8 | static_cast<quint8>(*byte);
        KeyVal = QString::number(static_cast<qint32>(number));
    }
    return true;
}

bool startSystemInformation(const Registry &registry, Shell &shell)
{
    QString path;
    if (GetKeyValue(registry, Registry::LocalMachine,
                    QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools\\MSINFO"), QStringLiteral("PATH"),
                    path) &&
        !path.isEmpty())
        return shell.start(path, {});
    QString folder;
    if (GetKeyValue(registry, Registry::LocalMachine,
                    QStringLiteral("SOFTWARE\\Microsoft\\Shared Tools Location"), QStringLiteral("MSINFO"),
                    folder)) {
        const QString tool = folder + PathSeparator + QStringLiteral("MSINFO32.EXE");
        if (QFileInfo::exists(tool))
            return shell.start(tool, {});
    }
    return startDesktopTool(shell);
}
