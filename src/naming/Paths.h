#pragma once

#include "base/Text.h"

/// Operations on paths and names, plain text work without a look at the disk. `separator` stands between
/// folders; the platform's is the default.

/// The part up to and including the last separator; empty where there is none.
QString ExtractPath(const QString &sFile, QChar separator = PathSeparator);
/// The part behind the last separator; all of it where there is none.
QString ExtractFile(const QString &sFile, QChar separator = PathSeparator);
/// From the last point on, the point included; empty where there is none.
QString ExtractExt(const QString &sFile);

/// `sFile` with the ending `sEx1` (in any letter case) replaced by `sEx2`; where it ends otherwise `sEx2`
/// comes behind the whole of it. The three texts come back trimmed.
QString FileExtChange(QString &sFile, QString &sEx1, QString &sEx2);

/// Folder and file name with one separator between them; `sFile` alone where the trimmed folder is empty.
QString JoinPathFile(const QString &sPath, const QString &sFile, QChar separator = PathSeparator);

/// A folder with the closing separator that its callers expect.
QString withClosingSeparator(const QString &path, QChar separator = PathSeparator);
