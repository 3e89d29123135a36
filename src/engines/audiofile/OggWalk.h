#pragma once

#include "engines/common/OggPage.h"

#include <QMap>

namespace audiofile {

/// Follows the pages of an Ogg file while the library reads them, and sees what the library keeps to itself.
class OggWalk
{
public:
    /// Others give their packet of comments a name.
    enum class Coding { Other, Speex, Flac };

    /// The file's first page begins at `start`.
    explicit OggWalk(qint64 start) : m_next(start) {}

    /// Looks at the pages that begin among these bytes, in the order of the file; the file's place moves.
    /// True: a header has so many comments, or so long a name of its maker, that the library would work on
    /// it for minutes.
    bool follow(QIODevice &file, qint64 begin, qint64 end);
    /// Whether all pages so far were undamaged, none was missing, and each stream came to its end.
    bool isWhole() const;

private:
    struct Stream
    {
        Coding coding = Coding::Other;
        quint32 sequence = 0; ///< of the last page, as what follows
        bool begins = false;
        bool ended = false;
    };

    bool take(const engines::OggPage &page);

    qint64 m_next;
    QMap<quint32, Stream> m_streams; ///< by serial number
    bool m_gap = false;              ///< in front of a page
    bool m_searching = false;        ///< for the next page
};

} // namespace audiofile
