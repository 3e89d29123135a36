#pragma once

#include "engines/images/SectorSource.h"

#include <cdio/cdio.h>
#include <memory>

namespace cdrom {

using namespace images; // what a disc is

struct CdioClose
{
    void operator()(CdIo_t *disc) const { cdio_destroy(disc); }
};
using CdioHandle = std::unique_ptr<CdIo_t, CdioClose>;

/// Opens a device or an image with one of libcdio's drivers. Failure 57 where that can't be done. Any thread.
CdioHandle openCdio(const QString &path, driver_id_t driver);

/// The table of contents of an opened disc; reading it may take as long as a drive needs to spin up.
/// Failure 57 where there is none.
DiscToc tocOf(CdIo_t *disc);

enum class SampleOrder { LittleEndian, BigEndian };

/// A disc that libcdio reads plainly.
class CdioSource : public SectorSource
{
public:
    CdioSource(const QString &path, driver_id_t driver, SampleOrder order = SampleOrder::LittleEndian);

    const DiscToc &toc() const override { return m_toc; }
    bool read(qint32 first, qint32 count, qint16 *samples) override;

private:
    CdioHandle m_disc;
    DiscToc m_toc;
    SampleOrder m_order;
};

} // namespace cdrom
