#include "settings/OptionLists.h"

#include "controls/DropDownList.h"

namespace {

constexpr qint32 MP3BitRates[] = {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr qint32 WMABitRates[] = {5, 6, 8, 10, 12, 16, 20, 22, 32, 40, 48, 64, 80, 96, 128, 160};

template <typename Rates>
void addBitRates(DropDownList &list, const Rates &rates)
{
    for (const qint32 rate : rates)
        list.addEntry(QStringLiteral("%1kb/s").arg(rate), rate);
}

} // namespace

void FillMP3BitRates(DropDownList &list)
{
    list.clearEntries();
    addBitRates(list, MP3BitRates);
}

void FillWMABitRates(DropDownList &list)
{
    list.clearEntries();
    addBitRates(list, WMABitRates);
}

void FillOGGBitRates(DropDownList &list)
{
    list.clearEntries();
    list.addEntry(QStringLiteral("Default"), 0);
    addBitRates(list, MP3BitRates);
}

void FillChannelModes(DropDownList &list)
{
    list.clearEntries();
    list.addEntry(QStringLiteral("Stereo"), 0);
    list.addEntry(QStringLiteral("J-Stereo"), 1);
    list.addEntry(QStringLiteral("Mono"), 2);
    list.addEntry(QStringLiteral("Dual Channel"), 3);
    list.setListIndex(0);
}

QString WMASampleRateName(qint32 index)
{
    static constexpr qint32 rates[LastWMASampleRate + 1] = {8000, 11025, 16000, 22050, 32000, 44100, 48000};
    if (index < 0 || index > LastWMASampleRate)
        return QStringLiteral("N/A");
    return QStringLiteral("%1Hz").arg(rates[index]);
}

VorbisFault findVorbisFault(qint32 nominal, qint32 minimum, qint32 maximum)
{
    if (maximum != 0 && nominal > maximum)
        return VorbisFault::NominalAboveMaximum;
    if (minimum == 0)
        return VorbisFault::None;
    if (nominal < minimum)
        return VorbisFault::NominalBelowMinimum;
    if (maximum != 0 && minimum > maximum)
        return VorbisFault::MinimumAboveMaximum;
    return VorbisFault::None;
}
