#pragma once

#include "components/WMAEncoderX.h"
#include "engines/codecs/WmaEncoder.h"

namespace codecs {

/// The WMA encoder of a rip; it is its own inner object.
class WmaComponent final : public WMAEncoderX, public EncoderSource
{
public:
    using WMAEncoderX::WMAEncoderX;

    void setWMASampleRateIndex(qint32 index) override;
    void setWMABitRate(qint32 rate) override { m_settings.bitRate = rate; }
    void setWMAStereo(bool stereo) override { m_settings.channels = stereo ? 2 : 1; }
    bool IsFormatSupported(qint32 sampleRateIndex, qint32 bitRate, bool stereo) const override;
    bool IsStereoSupported(qint32 bitRate) const override { return wmaBitRateWritable(bitRate, 2); }
    bool IsMonoSupported(qint32 bitRate) const override { return wmaBitRateWritable(bitRate, 1); }
    void setWMAEnableDRM(bool enable) override { m_drm = enable; }
    QObject *innerObject() override { return this; }

    std::shared_ptr<const EncoderRecipe> recipe() const override;

private:
    WmaSettings m_settings;
    bool m_drm = false;
};

} // namespace codecs
