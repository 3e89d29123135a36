#pragma once

#include "base/RunTimeFailure.h"

#include <QLoggingCategory>

/// Where failures leave a trace: with the path, address or drive, and the cause. Warnings are on at first;
/// the environment's QT_LOGGING_RULES turns each category on and off.
Q_DECLARE_LOGGING_CATEGORY(logConvert)  // tonelift.convert: files that are decoded and encoded
Q_DECLARE_LOGGING_CATEGORY(logDrive)    // tonelift.drive: drives, discs, playing
Q_DECLARE_LOGGING_CATEGORY(logNet)      // tonelift.net: exchanges with services
Q_DECLARE_LOGGING_CATEGORY(logProgram)  // tonelift.program: threads, memory, what ends the program
Q_DECLARE_LOGGING_CATEGORY(logRip)      // tonelift.rip: tracks
Q_DECLARE_LOGGING_CATEGORY(logSettings) // tonelift.settings
Q_DECLARE_LOGGING_CATEGORY(logTags)     // tonelift.tags: tags that are read and saved

using LogCategory = const QLoggingCategory &(*)();

/// Logs what is being caught as the failure of the file, or whatever the text names, and throws it on as a
/// RunTimeFailure.
[[noreturn]] void throwTraced(LogCategory category, const QString &path);

/// What a routine passes over by its rule is told for debugging only.
void logPassedOver(const RunTimeFailure &failure);

/// What an engine does with a file: whatever it throws, a lack of memory (7) as well, leaves as a
/// RunTimeFailure and leaves a trace.
template <typename Step>
auto traced(LogCategory category, const QString &path, Step step)
{
    try {
        return step();
    } catch (const std::exception &) {
        throwTraced(category, path);
    }
}
