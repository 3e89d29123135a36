#include "engines/codecs/Mp3Component.h"

#include "engines/codecs/Recipe.h"

#include <algorithm>
#include <array>

namespace codecs {

namespace {

// LAME's effort in this line of versions: 0 to 3 cost up to five times as much and put the noise no better
// than 4 does at a constant bit rate, and variable bit rate treats 0 to 4 alike. So Studio is 4, which
// searches the best division of each frame among its code tables, with both methods. Normal is 5, which
// leaves just that search out; from 7 on LAME no longer shapes the noise, which one hears.
constexpr int NormalQuality = 5;
constexpr int StudioQuality = 4;

/// Under the one method of variable bit rate coding that there is.
constexpr qint32 NewMethod = 3;

qint32 knownBitRate(qint32 rate)
{
    const auto rates = mp3BitRates(44100);
    if (std::find(rates.begin(), rates.end(), rate) == rates.end())
        refuse(QStringLiteral("There is no MP3 bit rate of %1 kb/s").arg(rate));
    return rate;
}

void requireWithin(qint32 value, qint32 highest, const char *what)
{
    if (value < 0 || value > highest)
        refuse(QStringLiteral("%1 of the MP3 encoder can't be %2").arg(QLatin1String(what)).arg(value));
}

} // namespace

void Mp3Component::setCBRBitRate(qint32 rate)
{
    m_settings.bitRate = knownBitRate(rate);
}

void Mp3Component::setVBRQuality(qint32 quality)
{
    requireWithin(quality, 9, "VBRQuality");
    m_settings.variableQuality = quality;
}

void Mp3Component::setVBRMinBitRate(qint32 rate)
{
    m_settings.minBitRate = knownBitRate(rate);
}

void Mp3Component::setVBRMaxBitRate(qint32 rate)
{
    m_settings.maxBitRate = knownBitRate(rate);
}

void Mp3Component::setEncodingMethod(qint32 method)
{
    requireWithin(method, 1, "EncodingMethod");
    m_settings.variable = method == 1;
}

void Mp3Component::setQualityMode(qint32 mode)
{
    requireWithin(mode, 1, "QualityMode");
    m_settings.quality = mode == 1 ? NormalQuality : StudioQuality;
}

void Mp3Component::setChannelMode(qint32 mode)
{
    constexpr std::array Modes = {Mp3Settings::Stereo, Mp3Settings::JointStereo, Mp3Settings::Mono,
                                  Mp3Settings::DualChannel};
    requireWithin(mode, 3, "ChannelMode");
    m_settings.channelMode = Modes[static_cast<std::size_t>(mode)];
}

void Mp3Component::setVBRMode(qint32 mode)
{
    if (mode != NewMethod)
        refuse(QStringLiteral("The MP3 encoder has no method %1 of variable bit rate").arg(mode));
}

std::shared_ptr<const EncoderRecipe> Mp3Component::recipe() const
{
    Mp3Settings settings = m_settings;
    settings.rate = suitableMp3Rate(settings);
    return mp3Recipe(settings);
}

} // namespace codecs
