#pragma once

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
