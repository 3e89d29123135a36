#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

namespace images {

struct CueFile
{
    enum class Kind { LittleEndian, BigEndian, Wave };

    QString name; ///< as it stands in the sheet
    Kind kind = Kind::LittleEndian;
};

/// A place of a disc: `sector` sectors into a file.
struct CueIndex
{
    int number = 0;
    std::size_t file = 0;
    qint32 sector = 0;
};

struct CueTrack
{
    bool audio = true;
    int sectorSize = 0; ///< bytes of the file for each sector
    int session = 1;
    bool mayBeCopied = false;
    qint32 pregap = 0;             ///< sectors of silence before INDEX 01 that lie in no file
    qint32 postgap = 0;            ///< the same, behind the track
    std::vector<CueIndex> indices; ///< in order; INDEX 01 is among them
};

/// The words of a CUE sheet.
struct CueSheet
{
    QString title;
    std::vector<CueFile> files;
    std::vector<CueTrack> tracks;

    /// Reads UTF-8, or Latin-1 where it isn't that. Unknown commands are passed over. Failure 57, with a
    /// description that names the line, for a sheet that makes no disc.
    static CueSheet parse(const QByteArray &text);
};

} // namespace images
