#include "engines/vqf/VqfComponent.h"

#include "base/RunTimeFailure.h"
#include "base/Thread.h"
#include "testkit/Logged.h"
#include "testkit/Printing.h"
#include "testkit/Ui.h"
#include "testkit/WaveFile.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

/// A WAV file of a rough tone.
struct WavPlan
{
    int tag = 1;
    int rate = 44100;
    int channels = 2;
    int bits = 16;
    int frames = 10000;
    int missingBytes = 0; ///< that the header promises in vain
};

QByteArray wavFile(const WavPlan &plan)
{
    QByteArray data;
    const int bytes = plan.bits / 8;
    for (int n = 0; n < plan.frames * plan.channels; ++n) {
        const double value = (n / plan.channels * 441 / plan.rate * 7 % 100) / 50.0 - 1;
        char sample[4] = {};
        if (plan.tag == 3)
            qToLittleEndian(static_cast<float>(value), sample);
        else if (plan.bits == 8)
            sample[0] = static_cast<char>(static_cast<int>(128 + value * 100));
        else
            qToLittleEndian(static_cast<qint32>(value * 2000000000) >> (32 - plan.bits), sample);
        data.append(sample, bytes);
    }
    return chunk("RIFF", "WAVE" + chunk("LIST", "x") + '\0' + // an odd chunk is filled up
                             wavFormat(plan.tag, plan.rate, plan.channels, plan.bits) +
                             chunk("data", data, quint32(data.size() + plan.missingBytes)));
}

class VqfComponentTest : public ::testing::Test
{
protected:
    VqfComponentTest()
    {
        QObject::connect(&component, &VEnc::VqfProgress, &component, [this](qint32 percent) {
            EXPECT_EQ(QThread::currentThread(), component.thread());
            progress.append(percent);
        });
        component.setVqfBitRate(96);
    }

    void writeInput(const QByteArray &content)
    {
        QFile file(input);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void start(const QByteArray &content)
    {
        writeInput(content);
        component.setVqfInputFile(input);
        component.setVqfOutputFile(output);
        component.VqfEncode();
    }

    bool reaches100()
    {
        return waitFor([this] { return progress.contains(100); });
    }

    QStringList entries() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    QTemporaryDir folder;
    QString input = folder.filePath(QStringLiteral("a 'ü' 日本.wav"));
    QString output = folder.filePath(QStringLiteral("a 'ü' 日本.vqf"));
    QList<qint32> progress;
    vqf::VqfComponent component;
};

constexpr qint64 fileSize(qint64 frames)
{
    return 56 + (((frames + 2047) / 2048 + 2) * 4458 + 7) / 8;
}

TEST_F(VqfComponentTest, progressRisesTo100OnceTheFileIsWhole)
{
    QObject::connect(&component, &VEnc::VqfProgress, &component,
                     [this](qint32 percent) { EXPECT_EQ(QFile::exists(output), percent == 100); });
    start(wavFile({.frames = 300000}));
    EXPECT_FALSE(QFile::exists(output)) << "the call returns at once";
    ASSERT_TRUE(reaches100());
    EXPECT_TRUE(std::is_sorted(progress.begin(), progress.end()));
    EXPECT_EQ(progress.count(100), 1);
    EXPECT_EQ(QFileInfo(output).size(), fileSize(300000));
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(VqfComponentTest, aHandlerMayStartTheNextFile)
{
    const QString second = folder.filePath(QStringLiteral("second.vqf"));
    QObject::connect(&component, &VEnc::VqfProgress, &component, [&](qint32 percent) {
        if (percent < 100 || progress.count(100) > 1)
            return;
        component.setVqfOutputFile(second);
        component.VqfEncode();
    });
    start(wavFile({}));
    ASSERT_TRUE(waitFor([this] { return progress.count(100) == 2; }));
    EXPECT_EQ(QFileInfo(output).size(), QFileInfo(second).size());
}

TEST_F(VqfComponentTest, takesWhateverPcmAWavFileHolds)
{
    const std::vector<std::pair<WavPlan, qint64>> rows{
        {{.bits = 8}, 10000},
        {{.channels = 1}, 10000},
        {{.channels = 1, .bits = 24}, 10000},
        {{.bits = 32}, 10000},
        {{.tag = 3, .bits = 32}, 10000},
        {{.rate = 22050, .channels = 1, .bits = 8}, 20000},
        {{.rate = 48000}, 9188},
        {{.frames = 0}, 0},
        {{.frames = 1}, 1},
        {{.missingBytes = 4000}, 10000},
    };
    for (const auto &[plan, frames] : rows) {
        progress.clear();
        start(wavFile(plan));
        ASSERT_TRUE(reaches100()) << plan.rate << ' ' << plan.channels << ' ' << plan.bits;
        EXPECT_EQ(QFileInfo(output).size(), fileSize(frames))
            << plan.rate << ' ' << plan.channels << ' ' << plan.bits;
    }
}

TEST_F(VqfComponentTest, whatCantBeConvertedSaysWhyAndLeavesNothing)
{
    QStringList reasons;
    QObject::connect(&component, &VEnc::VqfFailed, &component,
                     [&](const QString &reason) { reasons.append(reason); });
    const auto reasonOf = [&](const QByteArray &content) {
        start(content);
        EXPECT_TRUE(waitFor([&] { return !reasons.isEmpty() || progress.contains(100); }));
        return std::exchange(reasons, {}).join(u' ');
    };
    const QByteArray good = wavFile({});
    for (const QByteArray &content :
         {QByteArray("ID3 this is something else altogether, but long enough to hold a header"), QByteArray(),
          good.left(20), wavFile({.tag = 0x11, .bits = 8}), wavFile({.channels = 0}),
          wavFile({.channels = 6}), wavFile({.bits = 12}), QByteArray(good).replace("data", "junk")})
        EXPECT_EQ(reasonOf(content), QStringLiteral("it is no WAV file that can be read"))
            << content.left(60).toStdString();
    const QString right = std::exchange(output, folder.filePath(QStringLiteral("missing/a.vqf")));
    EXPECT_EQ(reasonOf(good), QStringLiteral("the folder is missing"));
    output = right;
    {
        const ThreadShortage shortage(0);
        EXPECT_EQ(reasonOf(good), QStringLiteral("not enough resources for a thread"));
    }
    EXPECT_EQ(takeLogged("tonelift.convert").last(),
              input + QStringLiteral(" given up: not enough resources for a thread"));
    const auto shrinking = QObject::connect(&component, &VEnc::VqfProgress, &component,
                                            [this] { QFile::resize(input, 100'000); });
    EXPECT_EQ(reasonOf(wavFile({.frames = 1'000'000})), QStringLiteral("its sound ends too early"));
    QObject::disconnect(shrinking);
    EXPECT_EQ(entries(), QStringList{QFileInfo(input).fileName()});
    start(good);
    EXPECT_TRUE(reaches100()) << "the next one can";
}

TEST_F(VqfComponentTest, endsAtOnceWithItsOwner)
{
    auto owned = std::make_unique<vqf::VqfComponent>();
    start(wavFile({.frames = 10}));
    ASSERT_TRUE(reaches100());
    QFile old(output);
    const qint64 oldSize = old.size();
    writeInput(wavFile({.frames = 2000000}));
    owned->setVqfInputFile(input);
    owned->setVqfOutputFile(output);
    bool reported = false;
    QObject::connect(owned.get(), &VEnc::VqfProgress, owned.get(), [&] { reported = true; });
    owned->VqfEncode();
    ASSERT_TRUE(waitFor([&] { return reported; }));
    QElapsedTimer clock;
    clock.start();
    owned.reset();
    EXPECT_LT(clock.elapsed(), 1000);
    EXPECT_EQ(entries().size(), 2);
    EXPECT_EQ(QFileInfo(output).size(), oldSize) << "the old file stays";
}

TEST_F(VqfComponentTest, takesNoOtherBitRate)
{
    EXPECT_THROW(component.setVqfBitRate(80), RunTimeFailure);
}

/// What the command line decoder says of a file besides its two usual lines, and how long the sound is.
TEST_F(VqfComponentTest, theSystemsPlayerTakesTheFile)
{
    start(wavFile({.frames = 50000}));
    ASSERT_TRUE(reaches100());
    QProcess player;
    player.start(QStringLiteral("ffmpeg"),
                 {QStringLiteral("-nostdin"), QStringLiteral("-v"), QStringLiteral("warning"),
                  QStringLiteral("-i"), output, QStringLiteral("-f"), QStringLiteral("s16le"),
                  QStringLiteral("-")});
    ASSERT_TRUE(player.waitForFinished());
    EXPECT_EQ(player.exitCode(), 0);
    EXPECT_EQ(player.readAllStandardOutput().size(), 25 * 2048 * 4);
    for (const QByteArray &line : player.readAllStandardError().split('\n'))
        EXPECT_TRUE(line.isEmpty() || line.contains("Estimating duration from bitrate") ||
                    line.contains("Input/output error"))
            << line.toStdString();
}

} // namespace
