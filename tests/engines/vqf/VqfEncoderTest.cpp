#include "VqfFile.h"
#include "demodisc/DemoDisc.h"
#include "quality/Meter.h"

#include <cmath>
#include <numbers>
#include <random>

namespace {

/// Something to hear: three tones over a little noise, faster and slower than each other, and beats.
Pcm music(std::size_t frames)
{
    std::mt19937 random(3);
    Pcm samples;
    for (std::size_t n = 0; n < frames; ++n) {
        const double t = static_cast<double>(n) / 44100;
        const double beat = std::exp(-6 * std::fmod(t, 0.4));
        const double noise = (static_cast<double>(random()) / 4294967296.0 - 0.5) * (400 + 6000 * beat);
        const double tones = 5000 * std::sin(2765 * t) + 3000 * std::sin(4391 * t + 1);
        samples.push_back(static_cast<qint16>(std::lround(tones + noise)));
        samples.push_back(static_cast<qint16>(std::lround(0.7 * tones - noise + 2000 * std::sin(7001 * t))));
    }
    return samples;
}

double decibels(double ratio)
{
    return 10 * std::log10(ratio);
}

/// Signal to noise of the decoded sound against the original moved by `late` frames.
double snr(const Pcm &original, const ModelDecoder::Samples &decoded, int late = 0)
{
    double power = 0, error = 0;
    const int frames = static_cast<int>(original.size() / 2);
    for (int n = 10; n < frames - 10; ++n) {
        for (int c = 0; c < 2; ++c) {
            const double sample = original[static_cast<std::size_t>(2 * (n - late) + c)];
            const double off = sample - decoded[static_cast<std::size_t>(c)][static_cast<std::size_t>(n)];
            power += sample * sample;
            error += off * off;
        }
    }
    return decibels(power / error);
}

TEST(VqfEncoderTest, theSoundComesBackInPlaceAndAtItsLevel)
{
    const Pcm original = music(88200);
    const ModelDecoder::Samples decoded = decodeVqf(encodeVqf(original));
    const double inPlace = snr(original, decoded);
    EXPECT_GT(inPlace, 10);
    for (const int late : {-2, -1, 1, 2})
        EXPECT_LT(snr(original, decoded, late), inPlace) << late;
}

TEST(VqfEncoderTest, littleOfTheErrorsIsHeard)
{
    double noiseToMask = 0;
    for (const int piece : {3, 4}) {
        const Pcm original = demodisc::render({piece, 2 * demodisc::SectorsPerSecond, {}});
        const ModelDecoder::Samples decoded = decodeVqf(encodeVqf(original, 2));
        quality::DecodedPcm heard;
        for (std::size_t n = 0; n < decoded[0].size(); ++n)
            for (const auto &channel : decoded)
                heard.push_back(static_cast<float>(channel[n]));
        noiseToMask += quality::Meter().measure(original, heard, 0).noiseToMask / 2;
    }
    EXPECT_LT(noiseToMask, 4.65);
}

TEST(VqfEncoderTest, theFileIsAHeaderAndAsManyFramesAsTheLengthTakes)
{
    for (const std::size_t frames : {0U, 1U, 2047U, 2048U, 2049U, 7000U}) {
        const std::vector<std::uint8_t> file = encodeVqf(music(frames));
        const std::size_t blocks = (frames + 2047) / 2048;
        const std::size_t dataBytes = ((blocks + 2) * 4458 + 7) / 8;
        ASSERT_EQ(file.size(), VqfHeaderBytes + dataBytes) << frames;
        const std::string header(file.begin(), file.begin() + VqfHeaderBytes);
        const auto number = [&file](std::size_t place) {
            return file[place] << 24 | file[place + 1] << 16 | file[place + 2] << 8 | file[place + 3];
        };
        EXPECT_EQ(header.substr(0, 12), "TWIN97012000");
        EXPECT_EQ(number(12), 36);
        EXPECT_EQ(header.substr(16, 4), "COMM");
        EXPECT_EQ(number(24), 1);
        EXPECT_EQ(number(28), 96);
        EXPECT_EQ(number(32), 44);
        EXPECT_EQ(header.substr(40, 4), "DSIZ");
        EXPECT_EQ(number(48), static_cast<int>(dataBytes));
        EXPECT_EQ(header.substr(52), "DATA");
        EXPECT_EQ(decodeVqf(file)[0].size(), blocks * 2048) << frames;
    }
}

TEST(VqfEncoderTest, theBytesDependNeitherOnThreadsNorOnTheDivisionOfTheSamples)
{
    const Pcm original = music(30000);
    const std::vector<std::uint8_t> whole = encodeVqf(original);
    for (const int threads : {2, 3})
        EXPECT_EQ(encodeVqf(original, threads), whole) << threads;
    EXPECT_EQ(encodeVqf(original, 1, {}, 777), whole);
}

TEST(VqfEncoderTest, silenceStaysSilent)
{
    Pcm samples(2 * 40000);
    const auto loudest = [](const ModelDecoder::Samples &decoded, std::size_t from) {
        double peak = 0;
        for (const auto &channel : decoded)
            for (std::size_t n = from; n < channel.size(); ++n)
                peak = std::max(peak, std::abs(channel[n]));
        return peak;
    };
    EXPECT_LT(loudest(decodeVqf(encodeVqf(samples)), 0), 0.5);
    const Pcm sound = music(10000);
    std::copy(sound.begin(), sound.end(), samples.begin());
    const ModelDecoder::Samples decoded = decodeVqf(encodeVqf(samples));
    EXPECT_GT(loudest(decoded, 0), 5000);
    EXPECT_LT(loudest(decoded, 18000), 0.5) << "behind the sound";
}

TEST(VqfEncoderTest, edgesOfTheSoundDontClick)
{
    // A tone that is cut off at both ends, after and before silence.
    Pcm samples(2 * 30000);
    for (std::size_t n = 8000; n < 22000; ++n)
        samples[2 * n] = samples[2 * n + 1] =
            static_cast<qint16>(std::lround(9000 * std::sin(0.05 * static_cast<double>(n))));
    const ModelDecoder::Samples decoded = decodeVqf(encodeVqf(samples));
    for (const auto &channel : decoded)
        for (const std::size_t n : {std::size_t{0}, std::size_t{1}, channel.size() - 2, channel.size() - 1})
            EXPECT_LT(std::abs(channel[n]), 1);
    const auto power = [&](std::size_t begin, std::size_t end) {
        double sum = 0;
        for (std::size_t n = begin; n < end; ++n)
            sum += decoded[0][n] * decoded[0][n];
        return sum / static_cast<double>(end - begin);
    };
    // Noise spreads over a medium block at most.
    EXPECT_LT(decibels(power(6000, 7700) / power(10000, 20000)), -38);
    EXPECT_LT(decibels(power(22500, 25000) / power(10000, 20000)), -20);
}

TEST(VqfEncoderTest, fullScaleStaysSane)
{
    std::mt19937 random(9);
    Pcm noise, square, opposite;
    for (int n = 0; n < 30000; ++n) {
        for (int c = 0; c < 2; ++c) {
            noise.push_back(static_cast<qint16>(random()));
            square.push_back(n / 50 % 2 ? 32767 : -32768);
            opposite.push_back((n / 60 + c) % 2 ? 32767 : -32767);
        }
    }
    for (const Pcm *samples : {&noise, &square, &opposite}) {
        const ModelDecoder::Samples decoded = decodeVqf(encodeVqf(*samples));
        double loudest = 0;
        for (const auto &channel : decoded)
            for (const double sample : channel)
                loudest = std::max(loudest, std::abs(sample));
        EXPECT_LT(loudest, 3 * 32768);
        EXPECT_GT(snr(*samples, decoded), samples == &noise ? 1 : 5);
    }
}

TEST(VqfEncoderTest, monoIsCentredAndOtherRatesKeepTheirPitch)
{
    Pcm mono;
    for (int n = 0; n < 32000; ++n)
        mono.push_back(
            static_cast<qint16>(std::lround(8000 * std::sin(2 * std::numbers::pi * 440 * n / 32000.0))));
    const ModelDecoder::Samples decoded = decodeVqf(encodeVqf(mono, 1, {32000, 1}));
    ASSERT_EQ(decoded[0].size(), (44100U + 2047) / 2048 * 2048);
    double side = 0, level = 0, error = 0;
    for (std::size_t n = 4000; n < 40000; ++n) {
        const double expected = 8000 * std::sin(2 * std::numbers::pi * 440 * static_cast<double>(n) / 44100);
        side = std::max(side, std::abs(decoded[0][n] - decoded[1][n]));
        level += expected * expected;
        error += (decoded[0][n] - expected) * (decoded[0][n] - expected);
    }
    EXPECT_LT(side, 16) << "the faintest that the format can say";
    EXPECT_GT(decibels(level / error), 15);
}

} // namespace
