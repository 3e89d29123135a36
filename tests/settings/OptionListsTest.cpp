#include "settings/OptionLists.h"

#include "controls/DropDownList.h"
#include "testkit/Printing.h"

#include <gtest/gtest.h>

namespace {

/// "text=number" of each entry.
QString entries(void (*fill)(DropDownList &))
{
    DropDownList list;
    list.addEntry(QStringLiteral("old"));
    fill(list);
    QStringList all;
    for (int row = 0; row < list.count(); ++row)
        all.append(QStringLiteral("%1=%2").arg(list.itemText(row)).arg(list.itemNumber(row)));
    return all.join(u' ');
}

TEST(OptionLists, eachPairsItsTextsWithNumbersInOrder)
{
    const QString mp3 = QStringLiteral(
        "32kb/s=32 40kb/s=40 48kb/s=48 56kb/s=56 64kb/s=64 80kb/s=80 96kb/s=96 112kb/s=112 128kb/s=128 "
        "160kb/s=160 192kb/s=192 224kb/s=224 256kb/s=256 320kb/s=320");
    EXPECT_EQ(entries(FillMP3BitRates), mp3);
    EXPECT_EQ(entries(FillOGGBitRates), QStringLiteral("Default=0 ") + mp3);
    EXPECT_EQ(entries(FillWMABitRates),
              QStringLiteral("5kb/s=5 6kb/s=6 8kb/s=8 10kb/s=10 12kb/s=12 16kb/s=16 20kb/s=20 22kb/s=22 "
                             "32kb/s=32 40kb/s=40 48kb/s=48 64kb/s=64 80kb/s=80 96kb/s=96 128kb/s=128 "
                             "160kb/s=160"));
    EXPECT_EQ(entries(FillChannelModes), QStringLiteral("Stereo=0 J-Stereo=1 Mono=2 Dual Channel=3"));
    QStringList rates;
    for (int index = -1; index <= LastWMASampleRate + 1; ++index)
        rates.append(WMASampleRateName(index));
    EXPECT_EQ(rates.join(u' '),
              QStringLiteral("N/A 8000Hz 11025Hz 16000Hz 22050Hz 32000Hz 44100Hz 48000Hz N/A"));
}

TEST(OptionLists, theFirstFaultBetweenTheVorbisRatesIsFound)
{
    EXPECT_EQ(findVorbisFault(128, 0, 128), VorbisFault::None);
    EXPECT_EQ(findVorbisFault(129, 200, 128), VorbisFault::NominalAboveMaximum);
    EXPECT_EQ(findVorbisFault(320, 0, 0), VorbisFault::None);
    EXPECT_EQ(findVorbisFault(0, 32, 0), VorbisFault::NominalBelowMinimum);
    EXPECT_EQ(findVorbisFault(128, 128, 128), VorbisFault::None);
}

} // namespace
