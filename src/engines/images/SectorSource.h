#pragma once

#include "engines/images/Disc.h"

namespace images {

/// An opened disc whose audio sectors are read plainly. One thread at a time.
class SectorSource
{
public:
    virtual ~SectorSource() = default;

    virtual const DiscToc &toc() const = 0;
    /// `count` sectors from `first`, 1176 samples each. False: they couldn't all be read.
    virtual bool read(qint32 first, qint32 count, qint16 *samples) = 0;
};

} // namespace images
