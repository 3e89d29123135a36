#pragma once

#include <QString>

/// What the last step of the converter tells of its job.
struct ConvertStatus
{
    qint16 TotalFiles = 0;
    qint16 ConvertedFiles = 0; ///< dealt with so far, skipped and failed ones included
    QString InputFormat;       ///< the source format's name, then the reader's words on the opened file
    QString OutputFormat;
    QString OutputFormatString; ///< the writer's words on its format
    QString ConvertingFile;     ///< path of the current source
    QString DestinationFile;
    QString OutputFolder;
    qint32 ElapsedSeconds = 0; ///< since the job's start
    qint16 FileNumber = 0;     ///< of the current file, from 1
};
