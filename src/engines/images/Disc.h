#pragma once

#include <QString>
#include <vector>

/// What the CD engine knows of a disc. Positions and lengths are sectors, 75 to the second, counted from the
/// end of the disc's lead-in; a sector of audio is 588 frames of two 16-bit samples.
namespace images {

inline constexpr qint32 SectorsPerSecond = 75;
inline constexpr qint32 LeadInSectors = 150;
inline constexpr int FramesPerSector = 588;
inline constexpr int SamplesPerSector = 2 * FramesPerSector;
inline constexpr int BytesPerSector = 2 * SamplesPerSector;
inline constexpr int MaxTracks = 99;

struct DiscTrack
{
    qint32 start = 0;
    qint32 length = 0;
    int session = 1;
    bool audio = true;
    bool mayBeCopied = false;

    bool operator==(const DiscTrack &) const = default;
};

/// The table of contents: the tracks in order, whatever number the first one bears.
struct DiscToc
{
    std::vector<DiscTrack> tracks;
    qint32 leadOut = 0; ///< of the last session

    bool operator==(const DiscToc &) const = default;
    /// The track of that number, from 1; null where there is none.
    const DiscTrack *track(int number) const;
};

/// Lead-out and lead-in between the end of session `session` and the first track of the next, in sectors.
qint32 sectorsBehindSession(int session);

/// Sets the tracks' lengths from their starts. A track runs to the start of the next, or to the end of its
/// session.
void setLengths(DiscToc &toc);

/// The disc id of the FreeDB service: eight hexadecimal digits.
QString freeDbId(const DiscToc &toc);

/// "hh:mm:ss", parts of a second cut off. A negative count has a minus sign.
QString timeOf(qint32 sectors);

} // namespace images
