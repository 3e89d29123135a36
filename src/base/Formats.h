#pragma once

#include <QList>
#include <QString>
#include <span>

/// The number of a ripping job's format.
enum EncType : qint32 { EncMP3 = 0, EncWAV = 1, EncOGG = 2, EncWMA = 3, EncVQF = 4 };

/// The code by which the converter's steps pass a format on.
enum ConvertCode : qint16 { ConvertNone = 0, ConvertMP3 = 1, ConvertWAV = 2, ConvertWMA = 3, ConvertOGG = 4 };

/// What a window may want to know of a format of files. A new format is a row in Formats.cpp and an encoder.
struct Format
{
    QString name;            ///< "OGG": in the converter and in the names of its settings
    QString caption;         ///< "OGG Vorbis": of its option button
    QString jobName;         ///< in the title of a ripping job
    QString extension;       ///< of its files: small letters, with the point
    QString rippedExtension; ///< of what a rip writes first, and of the names in the track list
    EncType encType;
    ConvertCode convertCode; ///< ConvertNone: the converter doesn't know it
    bool usesEncoder;        ///< in the first pass of a rip
    bool savesTags;          ///< the tag component can write into its files

    /// Of its default output folder.
    QString folderName() const { return name.toLower(); }
};

namespace Formats {

/// In the order of the option buttons `rdFormat`, which is another one than that of the numbers.
std::span<const Format> all();

/// Those whose files can hold a tag.
QList<Format> withTags();

/// The format of a number. Failure 9 for one that is no format.
const Format &ofJob(qint32 encType);
const Format &ofConverter(qint16 code);

/// The one that a file's name tells by its ending, in any letter case; nothing for other files.
const Format *ofFile(const QString &name);

} // namespace Formats
