#include "base/Log.h"

Q_LOGGING_CATEGORY(logConvert, "tonelift.convert", QtWarningMsg)
Q_LOGGING_CATEGORY(logDrive, "tonelift.drive", QtWarningMsg)
Q_LOGGING_CATEGORY(logNet, "tonelift.net", QtWarningMsg)
Q_LOGGING_CATEGORY(logProgram, "tonelift.program", QtWarningMsg)
Q_LOGGING_CATEGORY(logRip, "tonelift.rip", QtWarningMsg)
Q_LOGGING_CATEGORY(logSettings, "tonelift.settings", QtWarningMsg)
Q_LOGGING_CATEGORY(logTags, "tonelift.tags", QtWarningMsg)

void throwTraced(LogCategory category, const QString &path)
{
    const RunTimeFailure failure = RunTimeFailure::ofCaught();
    qCWarning(category).noquote() << path << "given up:" << failure.what();
    throw failure;
}

void logPassedOver(const RunTimeFailure &failure)
{
    qCDebug(logProgram) << "Passed over:" << failure.what();
}
