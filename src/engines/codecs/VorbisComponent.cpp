#include "engines/codecs/VorbisComponent.h"

#include "engines/codecs/Recipe.h"

namespace codecs {

namespace {

qint32 possibleBitRate(qint32 rate)
{
    // More than this no rate of the format takes, and bits a second must fit a number.
    if (rate < 0 || rate > 1000)
        refuse(QStringLiteral("There is no OGG bit rate of %1 kb/s").arg(rate));
    return rate;
}

} // namespace

void VorbisComponent::setNominalBitRate(qint32 rate)
{
    m_settings.nominalBitRate = possibleBitRate(rate);
}

void VorbisComponent::setMinBitRate(qint32 rate)
{
    m_settings.minBitRate = possibleBitRate(rate);
}

void VorbisComponent::setMaxBitRate(qint32 rate)
{
    m_settings.maxBitRate = possibleBitRate(rate);
}

} // namespace codecs
