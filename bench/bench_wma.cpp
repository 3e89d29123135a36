// How well and how fast WMA files are written, beside MP3 files of constant bit rate that are not smaller. At
// low rates the sounds are long, so that the files' heads don't count, and four per cent are allowed, since a
// lower nominal rate makes another format; where MP3 hasn't the bit rate its next higher one is taken.
//
//     bench_wma [RATE CHANNELS KILOBITS [NAME]...]     one combination, of those sounds alone
#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/PcmConverter.h"
#include "engines/codecs/WmaEncoder.h"
#include "quality/Coding.h"
#include "quality/Material.h"
#include "quality/Table.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace {

using codecs::WmaSettings;
using quality::Pcm;

/// As stereo of that rate; both channels are the same where the stream is mono.
Pcm fitted(const Pcm &samples, const WmaSettings &settings)
{
    const auto converted = [](const Pcm &from, const codecs::PcmFormat &input,
                              const codecs::PcmFormat &output) {
        if (input == output)
            return from;
        codecs::PcmConverter converter(input, output);
        Pcm to;
        for (std::size_t begin = 0; begin < from.size(); begin += 8192) {
            const auto count = std::min<std::size_t>(8192, from.size() - begin);
            const auto part =
                converter.convert(from.data() + begin, static_cast<int>(count) / input.channels);
            to.insert(to.end(), part.begin(), part.end());
        }
        const auto rest = converter.finish();
        to.insert(to.end(), rest.begin(), rest.end());
        return to;
    };
    const codecs::PcmFormat stream{settings.rate, settings.channels};
    return converted(converted(samples, {}, stream), stream, {settings.rate, 2});
}

constexpr int LowBitRate = 32;

/// Of the same bit rate, or the next higher one.
codecs::Mp3Settings mp3Settings(const WmaSettings &settings)
{
    codecs::Mp3Settings mp3;
    mp3.bitRate = settings.bitRate;
    mp3.channelMode = settings.channels == 2 ? codecs::Mp3Settings::JointStereo : codecs::Mp3Settings::Mono;
    mp3.rate = settings.rate == 44100 ? codecs::suitableMp3Rate(mp3) : settings.rate;
    int next = 0;
    for (const int bitRate : codecs::mp3BitRates(mp3.rate))
        if (bitRate >= settings.bitRate && (next == 0 || bitRate < next))
            next = bitRate;
    mp3.bitRate = next;
    return mp3;
}

/// The times of all sounds.
struct Times
{
    double sound = 0, one = 0, two = 0, mp3 = 0;
};

/// A file that isn't larger than `limit` bytes, by a lower bit rate where need be.
QByteArray encodeWithin(double limit, WmaSettings settings, const Pcm &samples)
{
    for (;; --settings.bitRate) {
        const auto encoded = quality::encode(*codecs::wmaRecipe(settings), samples, {settings.rate, 2});
        if (static_cast<double>(encoded.file.size()) <= limit)
            return encoded.file;
    }
}

void compare(const WmaSettings &settings, const std::vector<std::string> &names, Times &times)
{
    const codecs::Mp3Settings mp3 = mp3Settings(settings);
    const bool low = settings.bitRate <= LowBitRate;
    std::printf("\n%d Hz, %d channels, %d kb/s; MP3 at %d Hz, %d kb/s\n", settings.rate, settings.channels,
                settings.bitRate, mp3.rate, mp3.bitRate);
    const auto wmaRecipe = codecs::wmaRecipe(settings);
    const auto mp3Recipe = codecs::mp3Recipe(mp3);
    quality::Meter meter(settings.rate);
    quality::Table table({"WMA", "MP3 CBR"});
    double wmaBytes = 0, mp3Bytes = 0;
    for (const quality::Material &material : quality::material(low ? 60 : 14)) {
        if (!names.empty() && std::find(names.begin(), names.end(), material.name) == names.end())
            continue;
        const Pcm samples = fitted(material.samples, settings);
        const codecs::PcmFormat format{settings.rate, 2};
        const auto wmaFile = quality::encode(*wmaRecipe, samples, format);
        times.sound += static_cast<double>(samples.size()) / 2 / settings.rate;
        times.one += wmaFile.processorSeconds;
        times.two += wmaFile.seconds;
        const auto mp3File = quality::encode(*mp3Recipe, samples, format);
        times.mp3 += mp3File.seconds;
        const QByteArray wma =
            encodeWithin((low ? 1.04 : 1) * static_cast<double>(mp3File.file.size()), settings, samples);
        wmaBytes += static_cast<double>(wma.size());
        mp3Bytes += static_cast<double>(mp3File.file.size());
        // WMA files need no search for their delay: there is none. MP3 has that of its own, lower rate.
        const auto decoded = quality::decode(mp3File.file, QStringLiteral(".mp3"), settings.rate);
        const long delay = quality::delayOf(samples, decoded, 2600L * settings.rate / mp3.rate);
        table.addRow(material.name, material.tuned ? "tuned by" : "others",
                     {meter.measure(samples, quality::decode(wma, QStringLiteral(".wma"), settings.rate), 0),
                      meter.measure(samples, decoded, delay)});
    }
    table.printMeans();
    std::printf("WMA files have %.3f of the MP3 files' bytes\n", wmaBytes / mp3Bytes);
}

} // namespace

int main(int argc, char **argv)
{
    if (!codecs::wmaIsAvailable()) {
        std::puts("This build has no WMA encoder.");
        return 1;
    }
    Times times;
    if (argc > 3) {
        compare({std::atoi(argv[1]), std::atoi(argv[2]), std::atoi(argv[3])}, {argv + 4, argv + argc}, times);
    } else {
        for (const WmaSettings &settings : wma::StreamKinds)
            compare(settings, {}, times);
    }
    std::printf("times real time: WMA %.1f a core, %.1f on all cores; MP3 %.1f\n", times.sound / times.one,
                times.sound / times.two, times.sound / times.mp3);
}
