// How well and how fast WMA files are written, beside MP3 files of constant bit rate that are not smaller.
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

/// Nothing where MP3 has no such bit rate.
std::shared_ptr<const codecs::EncoderRecipe> mp3Recipe(const WmaSettings &settings)
{
    codecs::Mp3Settings mp3;
    mp3.bitRate = settings.bitRate;
    mp3.channelMode = settings.channels == 2 ? codecs::Mp3Settings::JointStereo : codecs::Mp3Settings::Mono;
    mp3.rate = settings.rate == 44100 ? codecs::suitableMp3Rate(mp3) : settings.rate;
    const auto rates = codecs::mp3BitRates(mp3.rate);
    if (std::find(rates.begin(), rates.end(), mp3.bitRate) == rates.end())
        return nullptr;
    return codecs::mp3Recipe(mp3);
}

/// The times of all sounds.
struct Times
{
    double sound = 0, one = 0, two = 0, mp3 = 0;
};

/// A file that isn't larger than `limit` bytes, by a lower bit rate where need be.
QByteArray encodeWithin(qsizetype limit, WmaSettings settings, const Pcm &samples)
{
    for (;; --settings.bitRate) {
        const auto encoded = quality::encode(*codecs::wmaRecipe(settings), samples, {settings.rate, 2});
        if (encoded.file.size() <= limit)
            return encoded.file;
    }
}

void compare(const WmaSettings &settings, const std::vector<std::string> &names, Times &times)
{
    std::printf("\n%d Hz, %d channels, %d kb/s\n", settings.rate, settings.channels, settings.bitRate);
    const auto wmaRecipe = codecs::wmaRecipe(settings);
    const auto mp3 = mp3Recipe(settings);
    quality::Meter meter(settings.rate);
    quality::Table table(mp3 ? std::vector<std::string>{"WMA", "MP3 CBR"} : std::vector<std::string>{"WMA"});
    for (const quality::Material &material : quality::material()) {
        if (!names.empty() && std::find(names.begin(), names.end(), material.name) == names.end())
            continue;
        const Pcm samples = fitted(material.samples, settings);
        const codecs::PcmFormat format{settings.rate, 2};
        auto wmaFile = quality::encode(*wmaRecipe, samples, format);
        times.sound += static_cast<double>(samples.size()) / 2 / settings.rate;
        times.one += wmaFile.processorSeconds;
        times.two += wmaFile.seconds;
        std::vector<quality::Quality> qualities;
        if (mp3) {
            const auto mp3File = quality::encode(*mp3, samples, format);
            times.mp3 += mp3File.seconds;
            wmaFile.file = encodeWithin(mp3File.file.size(), settings, samples);
            qualities.push_back(measure(meter, samples, mp3File.file, QStringLiteral(".mp3"), settings.rate));
        }
        // WMA files need no search for their delay: there is none.
        qualities.insert(
            qualities.begin(),
            meter.measure(samples, quality::decode(wmaFile.file, QStringLiteral(".wma"), settings.rate), 0));
        table.addRow(material.name, material.tuned ? "tuned by" : "others", qualities);
    }
    table.printMeans();
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
