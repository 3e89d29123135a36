#include "settings/EncoderSettings.h"

#include "settings/SettingsStore.h"
#include "testkit/FakeEncoders.h"
#include "testkit/Printing.h"
#include "testkit/TestDesktop.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace {

class EncoderSettingsTest : public ::testing::Test
{
protected:
    /// What a load with this settings.ini sends to the encoders, only that of one encoder where named.
    QStringList loaded(const QByteArray &ini, const QString &encoder = QString())
    {
        system.write(QStringLiteral("settings.ini"), ini);
        system.log.take();
        LoadEncoderSettings(store, system.version, windowsVersionName, encoders.mp3, encoders.wma,
                            encoders.vorbis);
        return system.log.take().filter(QRegularExpression(QStringLiteral("^") + encoder));
    }

    TestDesktop system;
    SettingsStore store{system.paths};
    FakeEncoders encoders{system.log};
    QString windowsVersionName;
};

QStringList lines(const char *text)
{
    return QString::fromUtf8(text).split(u'\n');
}

TEST_F(EncoderSettingsTest, withoutAFileTheDefaultsGoOutInOrder)
{
    EXPECT_EQ(loaded(""), lines("mp3.QualityMode = 1\nmp3.EncodingMethod = 0\nmp3.EncodingMethod -> 0\n"
                                "mp3.CBRBitRate = 128\nmp3.ChannelMode = 0\n"
                                "wma.WMABitRate = 128\nwma.WMASampleRateIndex = 5\nwma.WMAStereo = True\n"
                                "wma.WMAEnableDRM = False\n"
                                "vorbis.NominalBitRate = 128\nvorbis.MaxBitRate = 0\nvorbis.MinBitRate = 0"));
}

TEST_F(EncoderSettingsTest, aVariableRateSetsItsOwnPropertiesAndNoRelationIsChecked)
{
    EXPECT_EQ(loaded("[mp3 settings]\nMP3_EncodingMethod=1\nMP3_VBR_Quality=7\nMP3_VBR_MaxBitRate=32\n"
                     "MP3_VBR_MinBitRate=320\nMP3_ChannelMode=3\n",
                     QStringLiteral("mp3")),
              lines("mp3.QualityMode = 1\nmp3.EncodingMethod = 1\nmp3.EncodingMethod -> 1\n"
                    "mp3.VBRQuality = 7\nmp3.VBRMaxBitRate = 32\nmp3.VBRMinBitRate = 320\nmp3.VBRMode = 3\n"
                    "mp3.ChannelMode = 3"));
}

TEST_F(EncoderSettingsTest, whatTheEncoderReportsDecidesAndNotTheFile)
{
    encoders.mp3.refused = {QStringLiteral("mp3.EncodingMethod = 2")};
    encoders.mp3.held[QStringLiteral("EncodingMethod")] = 0;
    EXPECT_TRUE(
        loaded("[MP3 Settings]\nMP3_EncodingMethod=2\n").contains(QStringLiteral("mp3.CBRBitRate = 128")));
    EXPECT_TRUE(encoders.wma.held.contains(QStringLiteral("WMABitRate"))); // and the rest goes on
}

TEST_F(EncoderSettingsTest, textsThatAreNoNumbersLeaveTheEncoderAsItIs)
{
    loaded("[MP3 Settings]\nMP3_CBR_BitRate=192\n");
    EXPECT_EQ(loaded("[MP3 Settings]\nMP3_CBR_BitRate=abc\nMP3_ChannelMode=\n[WMA Settings]\nWMA_BitRate=x\n"
                     "WMA_EncodeStereo=maybe\nWMA_EnableDRM=1\n[OGG Settings]\nOGG_UseAdvanced=0\n"
                     "OGG_MaxBitRate=256\n"),
              lines("mp3.QualityMode = 1\nmp3.EncodingMethod = 0\nmp3.EncodingMethod -> 0\n"
                    "wma.WMASampleRateIndex = 5\nwma.WMAEnableDRM = True\n"
                    "vorbis.NominalBitRate = 128\nvorbis.MaxBitRate = 256\nvorbis.MinBitRate = 0"));
    EXPECT_EQ(encoders.mp3.held[QStringLiteral("CBRBitRate")], 192);
    loaded("[MP3 Settings]\nMP3_EncodingMethod=1\nMP3_VBR_Quality=5\n");
    loaded("[MP3 Settings]\nMP3_EncodingMethod=1\nMP3_VBR_Quality=good\n");
    EXPECT_EQ(encoders.mp3.held[QStringLiteral("VBRQuality")], 5);
}

TEST_F(EncoderSettingsTest, theVbrQualityIsClampedOnTwoSystems)
{
    struct Row
    {
        std::optional<WindowsVersionRecord> record;
        const char *name;
        int stored, sent;
    };
    const Row rows[] = {
        {WindowsVersionRecord{2, 5, 1, 0, {}}, "", 7, 1},
        {WindowsVersionRecord{2, 5, 2, 0, {}}, "", 2, 1},
        {WindowsVersionRecord{2, 5, 1, 0, {}}, "", 1, 1},
        {WindowsVersionRecord{2, 5, 0, 0, {}}, "", 7, 7},
        {WindowsVersionRecord{2, 6, 0, 0, {}}, "", 7, 7}, // the first load: the name isn't known yet
        {WindowsVersionRecord{2, 6, 0, 0, {}}, "Windows Vista", 7, 1},
        {std::nullopt, "Debian", 7, 7},
    };
    for (const Row &row : rows) {
        system.version.record = row.record;
        windowsVersionName = QString::fromLatin1(row.name);
        loaded(QByteArray("[MP3 Settings]\nMP3_EncodingMethod=1\nMP3_VBR_Quality=") +
               QByteArray::number(row.stored));
        EXPECT_EQ(encoders.mp3.held[QStringLiteral("VBRQuality")], row.sent) << row.name << row.stored;
    }
}

} // namespace
