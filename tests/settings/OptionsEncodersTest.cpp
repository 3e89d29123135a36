#include "OptionsFixture.h"

namespace {

/// What a click on the WMA bit rate list asks of an encoder that takes every format.
QStringList questions(int rate)
{
    QStringList asked = {QStringLiteral("wma.IsStereoSupported(%1) -> True").arg(rate),
                         QStringLiteral("wma.IsMonoSupported(%1) -> True").arg(rate)};
    for (int index = 0; index <= 6; ++index)
        asked += QStringLiteral("wma.IsFormatSupported(%1, %2, True) -> True").arg(index).arg(rate);
    return asked;
}

TEST_F(OptionsTest, openingAsksTheWmaEncoderTwiceAndSetsNothing)
{
    writeIni("[WMA Settings]\nWMA_BitRate=64\n");
    open([&] {
        EXPECT_EQ(opening, questions(128) + questions(64));
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("44100Hz"));
        choose("cboBitRate", "5kb/s");
        EXPECT_EQ(system.log.take(), questions(5));
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("8000Hz")); // a refill ends on the lowest rate
    });
}

TEST_F(OptionsTest, okSetsTheEncodersInOrderThenSavesThenCloses)
{
    open([&] {
        system.dialogs.expectBox(QStringLiteral("Settings are saved sucessfully!"), BoxAnswer::Ok,
                                 ProgramTitle, [&] {
                                     EXPECT_TRUE(isOpen());
                                     EXPECT_FALSE(ini().isEmpty());
                                 });
        press("cmdOK");
        EXPECT_FALSE(isOpen());
        EXPECT_EQ(
            system.log.take(),
            lines("mp3.QualityMode = 1\nmp3.CBRBitRate = 128\nmp3.ChannelMode = 0\nmp3.EncodingMethod = 0\n"
                  "wma.WMABitRate = 128\nwma.WMASampleRateIndex = 5\nwma.WMAStereo = True\n"
                  "wma.WMAEnableDRM = False\n"
                  "vorbis.NominalBitRate = 128\nvorbis.MaxBitRate = 0\nvorbis.MinBitRate = 0"));
    });
}

TEST_F(OptionsTest, aVariableRateIsClampedForOneSystemAndStoredAsItIs)
{
    writeIni("[MP3 Settings]\nMP3_EncodingMethod=1\nMP3_VBR_Quality=7\nMP3_VBR_MinBitRate=64\n"
             "MP3_VBR_MaxBitRate=256\nMP3_ChannelMode=1\nMP3_QualityMode=0\n"
             "[OGG Settings]\nOGG_BitRate=160\nOGG_MaxBitRate=256\nOGG_MinBitRate=96\n");
    struct Row
    {
        WindowsVersionRecord record;
        const char *sent;
    };
    for (const Row &row : {Row{{2, 5, 1, 0, {}}, "1"}, Row{{2, 6, 0, 0, {}}, "7"}}) {
        system.version.record = row.record;
        open([&] {
            expectSaved();
            press("cmdOK");
            EXPECT_EQ(system.log.take().filter(QStringLiteral("mp3")),
                      lines("mp3.QualityMode = 0") +
                          QStringList{QStringLiteral("mp3.VBRQuality = ") + QLatin1String(row.sent)} +
                          lines("mp3.VBRMaxBitRate = 256\nmp3.VBRMinBitRate = 64\nmp3.ChannelMode = 1\n"
                                "mp3.EncodingMethod = 1\nmp3.VBRMode = 3\n"
                                "mp3.VBRMaxBitRate -> 256\nmp3.VBRMinBitRate -> 64"));
        });
        EXPECT_TRUE(ini().contains(QStringLiteral("MP3_VBR_Quality=7\n")));
    }
    // The limits go out whether the box for them is ticked or not.
    EXPECT_EQ(encoders.vorbis.held[QStringLiteral("MaxBitRate")], 256);
    EXPECT_EQ(encoders.vorbis.held[QStringLiteral("MinBitRate")], 96);
    EXPECT_TRUE(ini().contains(QStringLiteral("OGG_UseAdvanced=0\n")));
}

TEST_F(OptionsTest, controlsOfTheOtherModeAreDisabled)
{
    open([&] {
        const auto expectEnabled = [&](const QStringList &names, bool enabled) {
            for (const QString &name : names)
                EXPECT_EQ(shown(name)->isEnabled(), enabled) << name.toStdString();
        };
        const QStringList constant = {QStringLiteral("cboCBRRate")};
        const QStringList variable = {QStringLiteral("cboVBRMin"), QStringLiteral("cboVBRMax"),
                                      QStringLiteral("sldVBRLevel")};
        const QStringList limits = {QStringLiteral("cboMinBitRate"), QStringLiteral("cboMaxBitRate")};
        const QStringList always = {QStringLiteral("cboChannelMode"), QStringLiteral("optStudio"),
                                    QStringLiteral("cboNominalBitRate")};
        expectEnabled(constant + always, true);
        expectEnabled(variable + limits, false);
        press("optVBR");
        press("chkUseAdvanced");
        expectEnabled(variable + limits + always, true);
        expectEnabled(constant, false);
        press("optCBR");
        press("chkUseAdvanced");
        expectEnabled(constant, true);
        expectEnabled(variable + limits, false);
    });
}

/// Both OK and Save refuse with these rates (as the lists show them), or neither does.
struct Rates
{
    const char *mp3Min, *mp3Max, *nominal, *oggMin, *oggMax;
    const char *refusal; ///< nothing: they pass
};

class OptionsRatesTest : public OptionsTest, public ::testing::WithParamInterface<Rates>
{};

TEST_P(OptionsRatesTest, areCheckedBeforeAnythingIsWritten)
{
    const Rates &rates = GetParam();
    open([&] {
        choose("cboVBRMin", rates.mp3Min);
        choose("cboVBRMax", rates.mp3Max);
        choose("cboNominalBitRate", rates.nominal);
        choose("cboMinBitRate", rates.oggMin);
        choose("cboMaxBitRate", rates.oggMax);
        for (const char *button : {"cmdSave", "cmdOK"}) {
            system.dialogs.expectWholeBox({.text = rates.refusal
                                                       ? QString::fromLatin1(rates.refusal)
                                                       : QStringLiteral("Settings are saved sucessfully!")});
            press(button);
            EXPECT_TRUE(system.dialogs.isDone());
        }
        EXPECT_EQ(isOpen(), rates.refusal != nullptr);
        EXPECT_EQ(ini().isEmpty(), rates.refusal != nullptr);
        EXPECT_EQ(system.log.calls().isEmpty(), rates.refusal != nullptr); // the encoders are left alone
    });
}

INSTANTIATE_TEST_SUITE_P(
    , OptionsRatesTest,
    ::testing::Values(
        Rates{"96kb/s", "96kb/s", "128kb/s", "Default", "Default",
              "Minimum MP3 Bit Rate must be less than the Maximum MP3 Bit Rate."},
        Rates{"128kb/s", "112kb/s", "Default", "320kb/s", "32kb/s",
              "Minimum MP3 Bit Rate must be less than the Maximum MP3 Bit Rate."},
        Rates{"96kb/s", "112kb/s", "128kb/s", "Default", "Default", nullptr},
        Rates{"32kb/s", "320kb/s", "160kb/s", "192kb/s", "128kb/s",
              "Nominal OGG Vorbis Bit Rate must be lower than the Maximum OGG Vorbis Bit Rate"},
        Rates{"32kb/s", "320kb/s", "Default", "32kb/s", "Default",
              "Nominal OGG Vorbis Bit Rate must be higher than the Minimum OGG Vorbis Bit Rate"},
        Rates{"32kb/s", "320kb/s", "Default", "Default", "64kb/s", nullptr},
        Rates{"32kb/s", "320kb/s", "128kb/s", "160kb/s", "128kb/s",
              "Nominal OGG Vorbis Bit Rate must be higher than the Minimum OGG Vorbis Bit Rate"},
        Rates{"32kb/s", "320kb/s", "96kb/s", "96kb/s", "96kb/s", nullptr}));

/// Encoders that meddle while they are being set: what the first check let pass fails the second one.
TEST_F(OptionsTest, whatTheEncodersReportIsCheckedUnderOtherWords)
{
    struct Meddling : FakeMP3Encoder
    {
        using FakeMP3Encoder::FakeMP3Encoder;
        qint32 VBRMaxBitRate() const override { return 32; }
        void setVBRMode(qint32 mode) override
        {
            FakeMP3Encoder::setVBRMode(mode);
            if (whenSet)
                whenSet();
        }
        Action whenSet;
    } meddling(system.log);
    writeIni("[MP3 Settings]\nMP3_EncodingMethod=1\n");
    const auto window = makeForm<frmOptions>(system.desktop());
    form = window.get();
    QTimer::singleShot(0, form, [&] {
        system.dialogs.expectWholeBox(
            {.text = QStringLiteral("Minimum Bit Rate must be less than the Maximum Bit Rate.")});
        press("cmdOK");
        EXPECT_EQ(encoders.wma.held.size(), 0);
        press("optCBR");
        EXPECT_TRUE(isOpen());
        form->close();
    });
    window->ShowForm(meddling, encoders.wma, encoders.vorbis, nullptr);
    EXPECT_TRUE(ini().size() < 50); // nothing was written
}

TEST_F(OptionsTest, theSecondCheckOfTheVorbisRatesHasItsOwnWords)
{
    struct Words
    {
        const char *nominal, *minimum, *maximum, *text;
    };
    struct Meddling : FakeWMAEncoder
    {
        using FakeWMAEncoder::FakeWMAEncoder;
        void setWMAEnableDRM(bool) override { whenSet(); }
        Action whenSet;
    } meddling(system.log);
    const auto window = makeForm<frmOptions>(system.desktop());
    form = window.get();
    QTimer::singleShot(0, form, [&] {
        for (const Words &words : {Words{"160kb/s", "Default", "128kb/s",
                                         "Nominal Bit Rate must be lower than the Maximum Bit Rate"},
                                   Words{"64kb/s", "96kb/s", "Default",
                                         "Nominal Bit Rate must be higher than the Minimum Bit Rate"}}) {
            meddling.whenSet = [&] {
                choose("cboNominalBitRate", words.nominal);
                choose("cboMinBitRate", words.minimum);
                choose("cboMaxBitRate", words.maximum);
            };
            choose("cboNominalBitRate", "Default");
            choose("cboMinBitRate", "Default");
            choose("cboMaxBitRate", "Default");
            system.dialogs.expectWholeBox({.text = QString::fromLatin1(words.text)});
            press("cmdOK");
        }
        EXPECT_EQ(encoders.vorbis.held.size(), 0);
        form->close();
    });
    window->ShowForm(encoders.mp3, meddling, encoders.vorbis, nullptr);
    EXPECT_EQ(ini(), QString());
}

/// Mono up to 32 kb/s at 8000 and 22050 Hz, both at 48 kb/s at 44100 Hz, stereo above at 44100 and 48000 Hz,
/// nothing under 10 kb/s.
bool someFormats(qint32 index, qint32 rate, bool stereo)
{
    if (rate < 10)
        return false;
    if (rate <= 32)
        return !stereo && (index == 0 || index == 3);
    return rate == 48 ? index == 5 : stereo && index >= 5;
}

TEST_F(OptionsTest, theWmaPageFollowsTheEncodersAnswers)
{
    encoders.wma.supports = someFormats;
    writeIni("[WMA Settings]\nWMA_SampleRate=6\n");
    open([&] {
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("48000Hz"));
        EXPECT_FALSE(shown(QStringLiteral("optMono"))->isEnabled());
        choose("cboBitRate", "32kb/s");
        EXPECT_TRUE(option("optMono")->isSelected());
        EXPECT_FALSE(shown(QStringLiteral("optStereo"))->isEnabled());
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("8000Hz"));
        choose("cboSampleRates", "22050Hz");
        choose("cboBitRate", "32kb/s"); // the same entry once more is a click like any other
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("8000Hz"));
        choose("cboBitRate", "48kb/s"); // both are there: the selection stays
        EXPECT_TRUE(option("optMono")->isSelected());
        press("optStereo");
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("44100Hz"));
        choose("cboBitRate", "8kb/s");
        EXPECT_EQ(list("cboSampleRates")->count(), 0);
        press("cmdDefault");
        EXPECT_EQ(chosen("cboBitRate"), QStringLiteral("128kb/s"));
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("44100Hz"));
    });
}

TEST_F(OptionsTest, aStoredMonoSettingComesUpWithTheListsFirstRate)
{
    encoders.wma.supports = [](qint32 index, qint32, bool) { return index >= 2; };
    writeIni("[WMA Settings]\nWMA_SampleRate=5\nWMA_EncodeStereo=0\nWMA_EnableDRM=-1\n");
    open([&] {
        EXPECT_TRUE(option("optMono")->isSelected());
        EXPECT_TRUE(box("chkEnableDRM")->isTicked());
        EXPECT_EQ(chosen("cboSampleRates"), QStringLiteral("16000Hz"));
    });
}

TEST_F(OptionsTest, withoutAWmaSampleRateOkAndSaveRefuse)
{
    encoders.wma.supports = someFormats;
    open([&] {
        choose("cboBitRate", "5kb/s");
        system.log.take();
        for (const char *button : {"cmdOK", "cmdSave"}) {
            system.dialogs.expectWholeBox(
                {.text = QStringLiteral(
                     "The WMA encoder has no sampling rate for the chosen WMA bit rate. Please "
                     "choose another bit rate on the page \"WMA\".")});
            press(button);
        }
        EXPECT_TRUE(isOpen());
        EXPECT_EQ(ini(), QString());
        EXPECT_EQ(system.log.calls(), QStringList());
    });
    encoders.wma.supports = [](qint32, qint32, bool) { return false; };
    open([&] { press("cmdDefault"); }); // even where nothing at all is supported
}

TEST_F(OptionsTest, anEncoderThatDoesNotAnswerLeavesTheListAsFarAsItCame)
{
    encoders.wma.refused = {QStringLiteral("wma.IsFormatSupported(3, 64, True)")};
    const auto whileOpen = [&] {
        choose("cboBitRate", "64kb/s");
        EXPECT_EQ(list("cboSampleRates")->count(), 3);
        EXPECT_EQ(chosen("cboSampleRates"), QString());
        // The question for the channels has no guard.
        encoders.wma.refused = {QStringLiteral("wma.IsMonoSupported")};
        system.dialogs.expectBox(QStringLiteral("Run-time error '5':\n\nInvalid procedure call or argument"));
        choose("cboBitRate", "96kb/s");
    };
    EXPECT_THROW(open(whileOpen), ProgramEnding);
    EXPECT_TRUE(system.end.isEnding());
}

} // namespace
