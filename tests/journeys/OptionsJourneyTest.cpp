#include "journeys/Journey.h"
#include "testkit/TestDecoder.h"

#include <QAction>
#include <QComboBox>
#include <QFileInfo>
#include <QTabBar>

namespace {

/// What a user chooses on one page of the options, and what the next rip's file must be like.
struct Choice
{
    const char *name;
    int format; ///< index of rdFormat
    int page;
    /// In order: a list with the text to choose in it, or a button to press.
    QList<std::pair<QString, QString>> steps;
    const char *codec;
    int rate;
    int channels;
    int least, most; ///< kb/s of the whole file
};

void PrintTo(const Choice &choice, std::ostream *out)
{
    *out << choice.name;
}

class OptionsJourney : public Journey, public ::testing::WithParamInterface<Choice>
{};

void choose(QWidget &window, const QString &list, const QString &text)
{
    auto *box = control<QComboBox>(window, list);
    ASSERT_GE(box->findText(text), 0) << list.toStdString() << " has no " << text.toStdString();
    box->setCurrentIndex(box->findText(text));
    Q_EMIT box->activated(box->currentIndex());
}

TEST_P(OptionsJourney, whatTheDialogSavesReachesTheNextRip)
{
    const Choice &choice = GetParam();
    insert(demodisc::shortDisc(1));
    start(1);
    QTimer::singleShot(0, &main(), [&] {
        QWidget &options = *QApplication::activeModalWidget();
        control<QTabBar>(options, QStringLiteral("tbsOptions"))->setCurrentIndex(choice.page);
        for (const auto &[name, text] : choice.steps) {
            if (text.isEmpty())
                control<QAbstractButton>(options, name)->click();
            else
                choose(options, name, text);
        }
        system.dialogs.expectBox(QStringLiteral("Settings are saved sucessfully!"));
        control<QAbstractButton>(options, QStringLiteral("cmdOK"))->click();
    });
    control<QAction>(main(), QStringLiteral("mnuToolsSub_7"))->trigger();
    click(qPrintable(QStringLiteral("rdFormat_%1").arg(choice.format)));
    list().setChecked(1, true);
    expectCompleted();
    rip();
    ASSERT_EQ(files().size(), 1);
    const QString path = folder() + files().first();
    const testkit::Decoded file = testkit::decodeFile(path);
    EXPECT_TRUE(file.codec.startsWith(QLatin1String(choice.codec))) << file.codec.toStdString();
    EXPECT_EQ(file.rate, choice.rate);
    EXPECT_EQ(file.channels, choice.channels);
    const double seconds = double(file.frames()) / file.rate;
    const double kilobits = double(QFileInfo(path).size()) * 8 / 1000 / seconds;
    EXPECT_GE(kilobits, choice.least);
    EXPECT_LE(kilobits, choice.most);
}

std::pair<QString, QString> pick(const char *list, const char *text)
{
    return {QLatin1String(list), QLatin1String(text)};
}

std::pair<QString, QString> press(const char *button)
{
    return {QLatin1String(button), QString()};
}

INSTANTIATE_TEST_SUITE_P(
    Choices, OptionsJourney,
    ::testing::Values(Choice{"Mp3Constant", 0, 0, {pick("cboCBRRate", "192kb/s")}, "mp3", 44100, 2, 190, 198},
                      Choice{"Mp3Mono",
                             0,
                             0,
                             {pick("cboCBRRate", "64kb/s"), pick("cboChannelMode", "Mono")},
                             "mp3",
                             44100,
                             1,
                             63,
                             67},
                      Choice{"Mp3Variable",
                             0,
                             0,
                             {press("optVBR"), pick("cboVBRMin", "64kb/s"), pick("cboVBRMax", "112kb/s")},
                             "mp3",
                             44100,
                             2,
                             64,
                             115},
                      Choice{"OggLimits",
                             4,
                             2,
                             {pick("cboNominalBitRate", "224kb/s"), press("chkUseAdvanced"),
                              pick("cboMinBitRate", "192kb/s"), pick("cboMaxBitRate", "256kb/s")},
                             "vorbis",
                             44100,
                             2,
                             185,
                             262},
                      Choice{
                          "WmaMono",
                          2,
                          1,
                          {pick("cboBitRate", "32kb/s"), press("optMono"), pick("cboSampleRates", "32000Hz")},
                          "wmav2",
                          32000,
                          1,
                          30,
                          40},
                      Choice{"WmaStereo",
                             2,
                             1,
                             {pick("cboBitRate", "128kb/s"), pick("cboSampleRates", "44100Hz")},
                             "wmav2",
                             44100,
                             2,
                             122,
                             142}),
    ::testing::PrintToStringParamName());

} // namespace
