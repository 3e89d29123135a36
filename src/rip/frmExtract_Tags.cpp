// Saving the disc record into a finished file.
#include "base/DiscInfo.h"
#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "base/Text.h"
#include "components/NCTAudioInformation.h"
#include "components/VEnc.h"
#include "naming/Paths.h"
#include "rip/frmExtract.h"

/// A failing statement is skipped, and the tag component isn't reset between files: a year that is no number,
/// or a title that is missing, leaves the value of the file before.
void frmExtract::SaveTrackInfo(const QString &strFile, qint16 track)
{
    const DiscInfo &disc = m_parts.discInfo;
    if (disc.TrackTitles.isEmpty() && disc.Album.isEmpty() && disc.Artist.isEmpty())
        return;
    NCTAudioInformation &tags = m_parts.AInfo;
    const QStringList titles = splitText(disc.TrackTitles, ListSeparator);
    const SkipFailures skip;
    skip([&] { addToStatus(QStringLiteral("Save Tracks Info to File: ") + ExtractFile(strFile)); });
    skip([&] { tags.setTagAlbum(disc.Album); });
    skip([&] { tags.setTagArtist(disc.Artist); });
    skip([&] { tags.setTagYear(toInt32(disc.Year)); });
    skip([&] { tags.setTagTrack(track); });
    skip([&] {
        if (track < 1 || track > titles.size())
            throw RunTimeFailure(RunTimeFailure::SubscriptOutOfRange);
        tags.setTagTitle(titles[track - 1]);
    });
    skip([&] { tags.setTagComment(disc.Comment); });
    skip([&] { tags.setTagGenre(disc.GenreIndex); });
    skip([&] { tags.WriteTags(strFile); });
}
