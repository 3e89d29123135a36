#pragma once

#include "components/VorbisEncoderX.h"
#include "engines/codecs/VorbisEncoder.h"

namespace codecs {

/// The Ogg Vorbis encoder of a rip; it is its own inner object.
class VorbisComponent final : public VorbisEncoderX, public EncoderSource
{
public:
    using VorbisEncoderX::VorbisEncoderX;

    void setNominalBitRate(qint32 rate) override;
    void setMinBitRate(qint32 rate) override;
    void setMaxBitRate(qint32 rate) override;
    QObject *innerObject() override { return this; }

    std::shared_ptr<const EncoderRecipe> recipe() const override { return vorbisRecipe(m_settings); }

private:
    VorbisSettings m_settings;
};

} // namespace codecs
