#pragma once

#include "engines/images/CueSheet.h"
#include "engines/images/SectorSource.h"

#include <QFile>
#include <QStringList>
#include <memory>

namespace images {

/// A stretch of the disc that lies in one file. What no extent covers is silent.
struct CueExtent
{
    qint32 first = 0; ///< sector of the disc
    qint32 count = 0;
    std::size_t file = 0;
    qint64 offset = 0; ///< byte of the file
    int sectorSize = 0;
};

/// A file of an image, opened, with the stretch of it that holds sectors.
struct CueImageFile
{
    std::unique_ptr<QFile> file;
    CueFile::Kind kind = CueFile::Kind::LittleEndian;
    qint64 start = 0;
    qint64 size = 0;
};

/// A disc out of a CUE sheet and its files.
class CueImage : public SectorSource
{
public:
    /// Failure 57, with a description, where sheet or files make no disc.
    explicit CueImage(const QString &cue);

    const DiscToc &toc() const override { return m_toc; }
    bool read(qint32 first, qint32 count, qint16 *samples) override;

    /// The sheet in that file. Failure 57 where it can't be read.
    static CueSheet sheetIn(const QString &cue);
    /// Where the files of the sheet lie, beside `cue`. A missing one keeps the path that was expected.
    static QStringList filesOf(const CueSheet &sheet, const QString &cue);

private:
    void lay(const CueSheet &sheet);
    bool readExtent(const CueExtent &extent, qint32 first, qint32 count, qint16 *samples);

    std::vector<CueImageFile> m_files;
    std::vector<CueExtent> m_extents; ///< in the order of the disc
    DiscToc m_toc;
};

} // namespace images
