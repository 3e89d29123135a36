// How well and how fast VQF files are written, beside MP3 files of the same bit rate: signal-to-noise ratio
// and noise-to-mask ratio of what the system's decoders make of them.
//
//     bench_vqf [NAME]...     those sounds alone
//
// The noise-to-mask ratio is that of half Barks up to 16 kHz in windows of 2048 samples; the mask lies 3 dB
// under the signal as it spreads in the ear, and from 12 Bark on 0.25 dB per Bark more. A window's value is
// the mean over bands and channels, a sound's the mean of its windows' values in dB; lower is better. "Tonal"
// is the same with a mask that lies further under tones.
#include "engines/codecs/Mp3Encoder.h"
#include "engines/dsp/MaskingModel.h"
#include "engines/dsp/Mdct.h"
#include "engines/vqf/VqfEncoder.h"
#include "vqf_material.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <limits>
#include <numbers>
#include <numeric>
#include <stdexcept>
#include <unistd.h>

namespace {

using Samples = std::vector<float>; // left and right in turn

class Buffer : public engines::ByteSink
{
public:
    void write(const std::uint8_t *from, std::size_t count) override
    {
        bytes.resize(std::max(bytes.size(), m_place + count));
        std::copy_n(from, count, bytes.begin() + static_cast<std::ptrdiff_t>(m_place));
        m_place += count;
    }
    void seek(std::int64_t position) override { m_place = static_cast<std::size_t>(position); }

    std::vector<std::uint8_t> bytes;

private:
    std::size_t m_place = 0;
};

double encode(const codecs::EncoderRecipe &recipe, const std::vector<std::int16_t> &samples, Buffer &file)
{
    const auto start = std::chrono::steady_clock::now();
    const auto encoder = recipe.create({44100, 2}, file);
    encoder->encode(samples.data(), static_cast<qsizetype>(samples.size() / 2));
    encoder->finish();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// By the system's decoder.
Samples decode(const Buffer &file, const char *ending)
{
    const std::string path = "/tmp/bench_vqf_" + std::to_string(getpid()) + ending;
    std::FILE *out = std::fopen(path.c_str(), "wb");
    if (!out)
        throw std::runtime_error("no temporary file");
    std::fwrite(file.bytes.data(), 1, file.bytes.size(), out);
    std::fclose(out);
    std::FILE *pipe = popen(("ffmpeg -v quiet -i " + path + " -f f32le -").c_str(), "r");
    Samples samples;
    std::array<float, 4096> part;
    while (const std::size_t count = std::fread(part.data(), sizeof(float), part.size(), pipe))
        samples.insert(samples.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(count));
    pclose(pipe);
    std::remove(path.c_str());
    for (float &sample : samples)
        sample *= 32768;
    return samples;
}

/// By how many frames the decoded sound comes late.
long delayOf(const std::vector<std::int16_t> &original, const Samples &decoded)
{
    const long start = 100000, count = 20000;
    double best = -1;
    long delay = 0;
    for (long trial = -200; trial < 2600; ++trial) {
        double product = 0;
        for (long n = start; n < start + count; ++n)
            product += original[static_cast<std::size_t>(2 * n)] *
                       static_cast<double>(decoded[static_cast<std::size_t>(2 * (n + trial))]);
        if (product > best) {
            best = product;
            delay = trial;
        }
    }
    return delay;
}

struct Quality
{
    double snr = 0, noiseToMask = 0, tonal = 0;
};

class Meter
{
public:
    Meter() : m_transform(Half)
    {
        for (int n = 0; n < 2 * Half; ++n)
            m_window[n] = static_cast<float>(0.5 - 0.5 * std::cos(std::numbers::pi * (n + 0.5) / Half));
        for (int k = 0; k < Half; ++k)
            m_band[k] = static_cast<int>(2 * dsp::bark((k + 0.5) * 22050 / Half));
        m_quiet.fill(std::numeric_limits<double>::max());
        for (int k = 0; k < Half && m_band[k] < Bands; ++k)
            m_quiet[m_band[k]] =
                std::min(m_quiet[m_band[k]], dsp::hearingThreshold((k + 0.5) * 22050 / Half));
    }

    Quality measure(const std::vector<std::int16_t> &original, const Samples &decoded, long delay)
    {
        Quality quality;
        const long frames = static_cast<long>(original.size() / 2);
        std::vector<float> signal[2], noise[2];
        double power = 0, error = 0;
        for (long n = 0; n < frames; ++n) {
            for (long c = 0; c < 2; ++c) {
                const float sample = original[static_cast<std::size_t>(2 * n + c)];
                const long at = 2 * (n + delay) + c;
                const float heard = at >= 0 && at < static_cast<long>(decoded.size())
                                        ? decoded[static_cast<std::size_t>(at)]
                                        : 0;
                signal[c].push_back(sample);
                noise[c].push_back(sample - heard);
                power += sample * sample;
                error += (sample - heard) * (sample - heard);
            }
        }
        quality.snr = 10 * std::log10(power / error);
        int counted = 0;
        for (long start = 0; start + 2 * Half <= frames; start += Half) {
            double ratio = 0, tonal = 0;
            bool silent = true;
            for (int c = 0; c < 2; ++c) {
                const auto sounding = spectrum(signal[c].data() + start);
                const auto wrong = spectrum(noise[c].data() + start);
                silent = silent && std::accumulate(sounding.begin(), sounding.end(), 0.0) < 9 * Unit * Half;
                compare(sounding, wrong, ratio, tonal);
            }
            if (silent)
                continue;
            quality.noiseToMask += 10 * std::log10(ratio / 2);
            quality.tonal += 10 * std::log10(tonal / 2);
            ++counted;
        }
        quality.noiseToMask /= std::max(counted, 1);
        quality.tonal /= std::max(counted, 1);
        return quality;
    }

private:
    static constexpr int Half = 1024;
    static constexpr int Bands = 48;                 // up to 16 kHz
    static constexpr double Unit = 2 * Half * 0.375; // of noise of variance 1, per coefficient
    using Spectrum = std::array<float, Half>;

    Spectrum spectrum(const float *samples)
    {
        std::array<float, 2 * Half> windowed;
        for (int n = 0; n < 2 * Half; ++n)
            windowed[n] = samples[n] * m_window[n];
        Spectrum cosines, sines;
        m_transform.forward(windowed.data(), cosines.data());
        m_transform.forwardSine(windowed.data(), sines.data());
        for (int k = 0; k < Half; ++k)
            cosines[k] = cosines[k] * cosines[k] + sines[k] * sines[k];
        return cosines;
    }

    void compare(const Spectrum &signal, const Spectrum &noise, double &ratio, double &tonalRatio) const
    {
        std::array<double, Bands> energy{}, error{}, logs{}, widths{}, mask{}, tonalMask{};
        for (int k = 0; k < Half && m_band[k] < Bands; ++k) {
            energy[m_band[k]] += signal[k];
            error[m_band[k]] += noise[k];
            logs[m_band[k]] += 10 * std::log10(signal[k] + 1e-3);
            widths[m_band[k]] += 1;
        }
        for (int b = 0; b < Bands; ++b) {
            if (widths[b] == 0)
                continue;
            const double barks = (b + 0.5) / 2;
            const double flatness = 10 * std::log10(energy[b] / widths[b] + 1e-3) - logs[b] / widths[b];
            const double tone = widths[b] < 2 ? 0.5 : std::clamp((flatness - 2.5) / 12, 0.0, 1.0);
            const double offset = 3 + 0.25 * std::max(0.0, barks - 12);
            const double tonalOffset = tone * (14.5 + barks) + (1 - tone) * 5.5;
            for (int to = 0; to < Bands; ++to) {
                const double decay = to >= b ? 15 * (to - b) / 2.0 : 27 * (b - to) / 2.0;
                mask[to] += energy[b] * std::pow(10, -(decay + offset) / 10);
                tonalMask[to] += energy[b] * std::pow(10, -(decay + tonalOffset) / 10);
            }
        }
        int counted = 0;
        double sum = 0, tonalSum = 0;
        for (int b = 0; b < Bands; ++b) {
            if (widths[b] == 0)
                continue;
            sum += error[b] / (mask[b] + quiet(b, widths[b]));
            tonalSum += error[b] / (tonalMask[b] + quiet(b, widths[b]));
            ++counted;
        }
        ratio += sum / counted + 1e-9;
        tonalRatio += tonalSum / counted + 1e-9;
    }

    /// What isn't heard in silence, and the rounding to 16 bits.
    double quiet(int band, double width) const { return Unit * (Half * m_quiet[band] + width / 12); }

    dsp::Mdct<float> m_transform;
    std::array<double, Bands> m_quiet;
    std::array<float, 2 * Half> m_window;
    std::array<int, Half> m_band;
};

struct Mean
{
    Quality vqf, mp3;
    int count = 0;

    void add(const Quality &vqfQuality, const Quality &mp3Quality)
    {
        const auto sum = [](Quality &to, const Quality &from) {
            to.snr += from.snr;
            to.noiseToMask += from.noiseToMask;
            to.tonal += from.tonal;
        };
        sum(vqf, vqfQuality);
        sum(mp3, mp3Quality);
        ++count;
    }
};

void printRow(const std::string &name, const Quality &vqf, const Quality &mp3, int count = 1)
{
    std::printf("%-18s %6.1f %6.2f %6.2f   %6.1f %6.2f %6.2f   %+5.2f\n", name.c_str(), vqf.snr / count,
                vqf.noiseToMask / count, vqf.tonal / count, mp3.snr / count, mp3.noiseToMask / count,
                mp3.tonal / count, (vqf.noiseToMask - mp3.noiseToMask) / count);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    codecs::Mp3Settings settings;
    settings.bitRate = 96;
    settings.channelMode = codecs::Mp3Settings::JointStereo;
    const auto mp3Recipe = codecs::mp3Recipe(settings);
    const auto oneThread = vqf::vqfRecipe(1), twoThreads = vqf::vqfRecipe(2);
    Meter meter;
    Mean tuned, other;
    double seconds = 0, oneProcessor = 0, one = 0, two = 0, mp3Time = 0;
    std::printf("%-18s %20s   %20s\n%-18s %6s %6s %6s   %6s %6s %6s   %5s\n", "", "VQF 96", "MP3 96 CBR", "",
                "SNR", "NMR", "tonal", "SNR", "NMR", "tonal", "NMR");
    for (const Material &material : vqfMaterial()) {
        if (argc > 1 && std::find(argv + 1, argv + argc, material.name) == argv + argc)
            continue;
        Buffer vqfFile, mp3File, again;
        const std::clock_t before = std::clock();
        one += encode(*oneThread, material.samples, vqfFile);
        oneProcessor += static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
        if (argc == 1)
            two += encode(*twoThreads, material.samples, again);
        if (argc == 1 && again.bytes != vqfFile.bytes)
            std::printf("two threads give other bytes than one\n");
        mp3Time += encode(*mp3Recipe, material.samples, mp3File);
        seconds += static_cast<double>(material.samples.size()) / 2 / 44100;
        const Samples vqfSound = decode(vqfFile, ".vqf"), mp3Sound = decode(mp3File, ".mp3");
        const Quality vqf = meter.measure(material.samples, vqfSound, 0);
        const Quality mp3 = meter.measure(material.samples, mp3Sound, delayOf(material.samples, mp3Sound));
        (material.tuned ? tuned : other).add(vqf, mp3);
        printRow(material.name, vqf, mp3);
    }
    if (tuned.count)
        printRow("mean, tuned by", tuned.vqf, tuned.mp3, tuned.count);
    if (other.count)
        printRow("mean, others", other.vqf, other.mp3, other.count);
    std::printf("processor time: VQF %.1f times real time\n", seconds / oneProcessor);
    std::printf("times real time: VQF %.1f on one thread, %.1f on two; MP3 %.1f\n", seconds / one,
                seconds / two, seconds / mp3Time);
}
