#include "engines/codecs/WmaComponent.h"

#include "engines/codecs/Recipe.h"

namespace codecs {

namespace {

/// 0 for an index that there isn't.
int rateOf(qint32 index)
{
    return index >= 0 && index < qint32(WmaRates.size()) ? WmaRates[static_cast<std::size_t>(index)] : 0;
}

} // namespace

void WmaComponent::setWMASampleRateIndex(qint32 index)
{
    if (rateOf(index) == 0)
        refuse(QStringLiteral("There is no WMA sample rate with the index %1").arg(index));
    m_settings.rate = rateOf(index);
}

bool WmaComponent::IsFormatSupported(qint32 sampleRateIndex, qint32 bitRate, bool stereo) const
{
    return wmaFormatWritable({rateOf(sampleRateIndex), stereo ? 2 : 1, bitRate});
}

std::shared_ptr<const EncoderRecipe> WmaComponent::recipe() const
{
    if (m_drm)
        refuse(QStringLiteral("WMA files can't be protected by DRM: switch it off in the options"));
    if (wmaIsAvailable() && !wmaFormatWritable(m_settings))
        refuse(QStringLiteral("The WMA encoder can't write %1 kb/s at %2 Hz in %3")
                   .arg(m_settings.bitRate)
                   .arg(m_settings.rate)
                   .arg(m_settings.channels == 2 ? QStringLiteral("stereo") : QStringLiteral("mono")));
    return wmaRecipe(m_settings);
}

} // namespace codecs
