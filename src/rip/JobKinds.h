#pragma once

#include <QString>

/// The numbers of a job's formats.
enum EncType { EncMP3 = 0, EncWAV = 1, EncOGG = 2, EncWMA = 3, EncVQF = 4 };

/// Between the paths of a VQF job's temporary files.
inline const QString VqfListSeparator = QStringLiteral("{;}#$");

/// How the window presents a job of one format.
struct JobKind
{
    QString title;
    QString sampleName;
};

/// Failure 9 for a number that is no format.
const JobKind &jobKind(qint32 encType);
