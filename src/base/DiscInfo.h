#pragma once

#include <QString>

/// The one disc record of the application. `frmCddb` and `frmTrack` write its texts, the disc reading its
/// length and offsets; the ripping job reads it. A title may not hold "|": the joined fields have no
/// escaping.
struct DiscInfo
{
    QString Album;
    QString Artist;
    qint16 GenreIndex = 0; ///< into the tag component's genre list, 0 to 147
    QString Year;          ///< as typed or received; may be empty
    QString Comment;
    QString TrackTitles; ///< all titles in track order, joined by "|"
    bool SaveToFiles = true;
    qint32 DiscSeconds = 0; ///< length of the disc in whole seconds
    QString TrackOffsets;   ///< start sector + 150 of each track, joined by "|"
};
