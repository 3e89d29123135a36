#pragma once

#include "components/MP3EncoderX.h"
#include "engines/codecs/Mp3Encoder.h"

namespace codecs {

/// The MP3 encoder of a rip; it is its own inner object.
class Mp3Component final : public MP3EncoderX, public EncoderSource
{
public:
    using MP3EncoderX::MP3EncoderX;

    void setCBRBitRate(qint32 rate) override;
    void setVBRQuality(qint32 quality) override;
    void setVBRMinBitRate(qint32 rate) override;
    qint32 VBRMinBitRate() const override { return m_settings.minBitRate; }
    void setVBRMaxBitRate(qint32 rate) override;
    qint32 VBRMaxBitRate() const override { return m_settings.maxBitRate; }
    void setEncodingMethod(qint32 method) override;
    qint32 EncodingMethod() const override { return m_settings.variable ? 1 : 0; }
    void setQualityMode(qint32 mode) override;
    void setChannelMode(qint32 mode) override;
    void setVBRMode(qint32 mode) override;
    QObject *innerObject() override { return this; }

    std::shared_ptr<const EncoderRecipe> recipe() const override;

private:
    Mp3Settings m_settings;
};

} // namespace codecs
