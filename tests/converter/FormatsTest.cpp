#include "ConverterFixture.h"

#include <QSlider>

namespace {

class FormatsTest : public ConverterFixture
{
protected:
    /// Opens the page of the output format that `option` stands for.
    void openPage(const QString &option)
    {
        open();
        press(u"cmdNext"_s);
        add({u"/a.mp3"_s});
        press(u"cmdNext"_s);
        choose(option);
        press(u"cmdNext"_s);
        system.log.take();
    }
    /// What leaving the page tells the writer; the page is shown again.
    QStringList applied()
    {
        press(u"cmdNext"_s);
        press(u"cmdLast"_s);
        return system.log.take();
    }
    QStringList textsOf(const QString &list)
    {
        QStringList texts;
        const auto *found = get<DropDownList>(list);
        for (int row = 0; row < found->count(); ++row)
            texts.append(found->itemText(row));
        return texts;
    }
    QStringList enabledOf(const QStringList &names)
    {
        QStringList enabled;
        for (const QString &name : names) {
            if (isEnabled(name))
                enabled.append(name);
        }
        return enabled;
    }
};

TEST_F(FormatsTest, theListsHoldTheirRowsAndDefaults)
{
    open();
    const QStringList bitRates = {u"8 KBits"_s,   u"16 KBits"_s,  u"24 KBits"_s,  u"32 KBits"_s,
                                  u"48 KBits"_s,  u"56 KBits"_s,  u"64 KBits"_s,  u"96 KBits"_s,
                                  u"112 KBits"_s, u"128 KBits"_s, u"160 KBits"_s, u"192 KBits"_s,
                                  u"224 KBits"_s, u"256 KBits"_s, u"320 KBits"_s};
    const QStringList rates = {u"8,000 Hz"_s,  u"11,025 Hz"_s, u"12,000 Hz"_s, u"16,000 Hz"_s, u"22,050 Hz"_s,
                               u"24,000 Hz"_s, u"32,000 Hz"_s, u"44,100 Hz"_s, u"48,000 Hz"_s};
    struct Case
    {
        QString list;
        QStringList rows;
        int chosen;
    };
    const Case cases[] = {
        {u"cboMP3Bitrate"_s, bitRates, 9},
        {u"cboMP3VBRMaxBitRate"_s, bitRates, 9},
        {u"cboOGGBitrates"_s, bitRates, 9},
        {u"cboOGGVBRMinBitrate"_s, bitRates, 9},
        {u"cboOGGVBRMaxBitrate"_s, bitRates, 9},
        {u"cboMP3Frequency"_s, rates, 7},
        {u"cboOGGFrequency"_s, rates, 7},
        {u"cboWAVFrequency"_s,
         QStringList{u"6,000 Hz"_s} + rates + QStringList{u"88,200 Hz"_s, u"96,000 Hz"_s}, 8},
        {u"cboMP3Channels"_s,
         {u"Mono"_s, u"Stereo"_s, u"Joint Stereo"_s, u"Forced Joint Stereo"_s, u"Dual Channel"_s},
         1},
        {u"cboWAVChannels"_s, {u"Mono"_s, u"Stereo"_s}, 1},
        {u"cboOGGChannels"_s, {u"Mono"_s, u"Stereo"_s}, 1},
        {u"cboWAVBits"_s, {u"2 Bits"_s, u"3 Bits"_s, u"4 Bits"_s, u"5 Bits"_s, u"8 Bits"_s, u"16 Bits"_s}, 5},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(textsOf(c.list), c.rows) << c.list.toStdString();
        EXPECT_EQ(get<DropDownList>(c.list)->listIndex(), c.chosen) << c.list.toStdString();
        const auto *list = get<DropDownList>(c.list); // a number in a text is its value
        for (int row = 0; row < list->count(); ++row) {
            const int number = QString(c.rows[row]).remove(u',').section(u' ', 0, 0).toInt();
            if (number != 0) {
                EXPECT_EQ(list->itemNumber(row), number) << c.list.toStdString();
            }
        }
    }
}

TEST_F(FormatsTest, theMp3PageGivesAllItsValuesTickedOrNot)
{
    openPage(u"rdDesMP3"_s);
    EXPECT_EQ(applied(),
              (QStringList{u"FileW.MP3Options"_s, u"FileW.MP3.SampleRate = 44100"_s,
                           u"FileW.MP3.ConstantBitRate = True"_s, u"FileW.MP3.CBRQuality = 5"_s,
                           u"FileW.MP3.CBRBitRate = 128"_s, u"FileW.MP3.VBRMaxBitRate = 128"_s,
                           u"FileW.MP3.ChannelCount = 2"_s, u"FileW.MP3.ChannelMode = 1"_s,
                           u"FileW.MP3.WriteVBRHeader = False"_s, u"FileW.MP3.StrictMinBitRate = False"_s,
                           u"FileW.MP3.VBRQuality = 7"_s}));
    pick(u"cboMP3Frequency"_s, 3);
    pick(u"cboMP3Channels"_s, 0);
    pick(u"cboMP3Bitrate"_s, 14);
    pick(u"cboMP3VBRMaxBitRate"_s, 0);
    for (const QString &box : {u"chMP3VBR"_s, u"chWriteVBRHeader"_s, u"chStrictlyEnforceMinBitrate"_s})
        tick(box);
    get<QSlider>(u"hsMP3CBRQuality"_s)->setValue(0);
    get<QSlider>(u"hsMP3VBRQuality"_s)->setValue(9);
    EXPECT_EQ(applied(),
              (QStringList{u"FileW.MP3.SampleRate = 16000"_s, u"FileW.MP3.ConstantBitRate = False"_s,
                           u"FileW.MP3.CBRQuality = 0"_s, u"FileW.MP3.CBRBitRate = 320"_s,
                           u"FileW.MP3.VBRMaxBitRate = 8"_s, u"FileW.MP3.ChannelCount = 1"_s,
                           u"FileW.MP3.WriteVBRHeader = True"_s, u"FileW.MP3.StrictMinBitRate = True"_s,
                           u"FileW.MP3.VBRQuality = 9"_s}));
    // Rows that don't exist give the values that stand for them.
    for (const QString &list :
         {u"cboMP3Frequency"_s, u"cboMP3Channels"_s, u"cboMP3Bitrate"_s, u"cboMP3VBRMaxBitRate"_s})
        pick(list, -1);
    const QStringList calls = applied();
    for (const QString &call : {u"FileW.MP3.SampleRate = 44100"_s, u"FileW.MP3.CBRBitRate = 128"_s,
                                u"FileW.MP3.VBRMaxBitRate = 192"_s, u"FileW.MP3.ChannelCount = 2"_s,
                                u"FileW.MP3.ChannelMode = 1"_s})
        EXPECT_TRUE(calls.contains(call)) << call.toStdString();
}

TEST_F(FormatsTest, theWavPageGivesRateChannelsAndBits)
{
    openPage(u"rdDesWAV"_s);
    pick(u"cboWAVFrequency"_s, 11);
    pick(u"cboWAVChannels"_s, 0);
    pick(u"cboWAVBits"_s, 1);
    EXPECT_EQ(applied(), (QStringList{u"FileW.SetWAVFormat(96000, 1, 3)"_s,
                                      u"FileW.FormatString -> SetWAVFormat(96000, 1, 3)"_s}));
    for (const QString &list : {u"cboWAVFrequency"_s, u"cboWAVChannels"_s, u"cboWAVBits"_s})
        pick(list, -1);
    EXPECT_EQ(applied(), (QStringList{u"FileW.SetWAVFormat(44100, 2, 16)"_s,
                                      u"FileW.FormatString -> SetWAVFormat(44100, 2, 16)"_s}));
}

TEST_F(FormatsTest, theOggPageHasThreeModes)
{
    openPage(u"rdDesOGG"_s);
    pick(u"cboOGGFrequency"_s, 8);
    pick(u"cboOGGChannels"_s, 0);
    pick(u"cboOGGBitrates"_s, 6);
    pick(u"cboOGGVBRMinBitrate"_s, 3);
    pick(u"cboOGGVBRMaxBitrate"_s, 11);
    EXPECT_EQ(applied(), (QStringList{u"FileW.CheckOGGFormat(48000, 1, 64, 0, 0) -> True"_s,
                                      u"FileW.CheckOGGFormat(48000, 1, 64, 0, 0) -> True"_s,
                                      u"FileW.SetOGGFormat(48000, 1, 64)"_s}));
    tick(u"chkOGGVBREnabled"_s);
    EXPECT_EQ(applied(), (QStringList{u"FileW.CheckOGGFormat(48000, 1, 64, 32, 192) -> True"_s,
                                      u"FileW.CheckOGGFormat(48000, 1, 64, 32, 192) -> True"_s,
                                      u"FileW.SetOGGFormat(48000, 1, 64, 32, 192)"_s}));
    tick(u"chkOGGEncoder"_s); // all that the other modes need is ignored
    get<QSlider>(u"hsOGGVBRQuality"_s)->setValue(10);
    EXPECT_EQ(applied(), QStringList{u"FileW.SetOGGFormat(48000, 1, 128, 0, 0, 1000)"_s});
}

TEST_F(FormatsTest, theWmaPageExplainsAndGivesTheChosenProfile)
{
    openPage(u"rdDesWMA"_s);
    auto *explanation = get<QWidget>(u"frmWMASet"_s)->findChild<QLabel *>(u"skinDesc"_s);
    EXPECT_EQ(explanation->text(), u"Choosed:\n39 - Profile 39\n\nDescription:\n"
                                   "Windows Media Video 8 for Broadband (NTSC, 1400 Kbps)"_s);
    EXPECT_EQ(applied(), QStringList{u"FileW.SelectWMAProfile(39)"_s});
    pick(u"cboWMASettings"_s, 1);
    EXPECT_EQ(explanation->text(), u"Choosed:\n2 - Profile 2\n\nDescription:\n"
                                   " Video for LAN, cable modem, or xDSL (100 to 768 Kbps)"_s);
    EXPECT_EQ(applied(), QStringList{u"FileW.SelectWMAProfile(2)"_s});
}

TEST_F(FormatsTest, ticksEnableWhatTheyGovern)
{
    const QStringList mp3 = {u"cboMP3VBRMaxBitRate"_s, u"chWriteVBRHeader"_s,
                             u"chStrictlyEnforceMinBitrate"_s, u"hsMP3VBRQuality"_s};
    const QStringList limits = {u"cboOGGVBRMinBitrate"_s, u"cboOGGVBRMaxBitrate"_s};
    const QStringList rest = {u"chkOGGVBREnabled"_s, u"cboOGGBitrates"_s};
    const QStringList quality = {u"hsOGGVBRQuality"_s};
    const QStringList ogg = limits + rest + quality;
    open();
    EXPECT_EQ(enabledOf(mp3 + ogg), rest);
    tick(u"chMP3VBR"_s);
    EXPECT_EQ(enabledOf(mp3), mp3);
    EXPECT_TRUE(isEnabled(u"hsMP3CBRQuality"_s) && isEnabled(u"cboMP3Bitrate"_s));
    tick(u"chMP3VBR"_s, false);
    EXPECT_EQ(enabledOf(mp3), QStringList());
    tick(u"chkOGGVBREnabled"_s);
    EXPECT_EQ(enabledOf(ogg), limits + rest);
    tick(u"chkOGGEncoder"_s);
    EXPECT_EQ(enabledOf(ogg), quality);
    tick(u"chkOGGEncoder"_s, false);
    EXPECT_EQ(enabledOf(ogg), limits + rest);
    tick(u"chkOGGVBREnabled"_s, false);
    EXPECT_EQ(enabledOf(ogg), rest);
}

TEST_F(FormatsTest, aSlidersLabelFollowsIt)
{
    const std::tuple<QString, QString, int, QString> cases[] = {
        {u"hsMP3CBRQuality"_s, u"lblMP3CBRQuality"_s, 9, u"5"_s},
        {u"hsMP3VBRQuality"_s, u"lblMP3VBRVal"_s, 9, u"7"_s},
        {u"hsOGGVBRQuality"_s, u"lblOGGVBRQuality"_s, 10, u"7"_s}};
    open();
    for (const auto &[slider, label, maximum, start] : cases) {
        auto *found = get<QSlider>(slider);
        EXPECT_EQ(text(label), start);
        EXPECT_EQ(found->maximum(), maximum);
        found->setSliderDown(true);
        found->setSliderPosition(3); // while it is dragged
        EXPECT_EQ(text(label), u"3"_s);
        found->setSliderDown(false);
    }
}

} // namespace
