#pragma once

#include "components/NCTAudioFile.h"
#include "engines/codecs/Mp3Encoder.h"

#include <functional>

namespace audiofile {

/// The MP3 settings of a writer. Each one that is set is told at once, since it makes MP3 the writer's
/// format.
class Mp3Options final : public NCTMP3Options
{
public:
    explicit Mp3Options(std::function<void(const codecs::Mp3Settings &)> changed)
        : m_changed(std::move(changed))
    {}

    void setVBRMaxBitRate(qint32 rate) override;
    void setVBRQuality(qint32 quality) override;
    void setConstantBitRate(bool constant) override;
    void setChannelMode(qint32 mode) override;
    void setCBRQuality(qint32 quality) override;
    void setWriteVBRHeader(bool write) override;
    void setStrictMinBitRate(bool strict) override;
    void setSampleRate(qint32 rate) override;
    void setChannelCount(qint32 channels) override;
    void setCBRBitRate(qint32 rate) override;

private:
    void tell() const;

    const std::function<void(const codecs::Mp3Settings &)> m_changed;
    codecs::Mp3Settings m_settings;
    codecs::Mp3Settings::ChannelMode m_twoChannels = codecs::Mp3Settings::Stereo;
    bool m_mono = false;
    int m_constantQuality = 5;
    int m_maxBitRate = 192;
};

} // namespace audiofile
