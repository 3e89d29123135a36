#include "engines/audiofile/Mp3Options.h"

#include "engines/codecs/Recipe.h"

#include <array>

namespace audiofile {

namespace {

using codecs::Mp3Settings;

void requireQuality(qint32 quality)
{
    if (quality < 0 || quality > 9)
        codecs::refuse(QStringLiteral("There is no MP3 quality %1").arg(quality));
}

void requireBitRate(qint32 rate)
{
    if (rate < 1)
        codecs::refuse(QStringLiteral("There is no MP3 bit rate of %1 kb/s").arg(rate));
}

} // namespace

void Mp3Options::setVBRMaxBitRate(qint32 rate)
{
    requireBitRate(rate);
    m_maxBitRate = rate;
    tell();
}

void Mp3Options::setVBRQuality(qint32 quality)
{
    requireQuality(quality);
    m_settings.variableQuality = quality;
    tell();
}

void Mp3Options::setConstantBitRate(bool constant)
{
    m_settings.variable = !constant;
    tell();
}

void Mp3Options::setChannelMode(qint32 mode)
{
    constexpr std::array Modes = {Mp3Settings::Stereo, Mp3Settings::JointStereo,
                                  Mp3Settings::ForcedJointStereo, Mp3Settings::DualChannel};
    if (mode < 1 || mode > qint32(Modes.size()))
        codecs::refuse(QStringLiteral("There is no MP3 channel mode %1").arg(mode));
    m_twoChannels = Modes[static_cast<std::size_t>(mode - 1)];
    tell();
}

void Mp3Options::setCBRQuality(qint32 quality)
{
    requireQuality(quality);
    m_constantQuality = quality;
    tell();
}

void Mp3Options::setWriteVBRHeader(bool write)
{
    m_settings.variableHeader = write;
    tell();
}

void Mp3Options::setStrictMinBitRate(bool strict)
{
    m_settings.strictMinBitRate = strict;
    tell();
}

void Mp3Options::setSampleRate(qint32 rate)
{
    if (codecs::mp3BitRates(rate).empty())
        codecs::refuse(QStringLiteral("There is no MP3 format with %1 Hz").arg(rate));
    m_settings.rate = rate;
    tell();
}

void Mp3Options::setChannelCount(qint32 channels)
{
    m_mono = channels == 1;
    tell();
}

void Mp3Options::setCBRBitRate(qint32 rate)
{
    requireBitRate(rate);
    m_settings.bitRate = rate;
    tell();
}

void Mp3Options::tell() const
{
    Mp3Settings settings = m_settings;
    settings.channelMode = m_mono ? Mp3Settings::Mono : m_twoChannels;
    // With a variable bit rate the encoder knows but two efforts, and the better one costs little.
    settings.quality = settings.variable ? 4 : m_constantQuality;
    // There's no option for the lowest bit rate: it is the lowest that the format has.
    settings.minBitRate = codecs::mp3BitRates(settings.rate).front();
    settings.maxBitRate = codecs::nearestMp3BitRate(settings.rate, m_maxBitRate);
    m_changed(settings);
}

} // namespace audiofile
