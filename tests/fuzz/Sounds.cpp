#include "base/RunTimeFailure.h"
#include "engines/audiofile/AudioSource.h"
#include "engines/audiofile/OutputFormat.h"
#include "engines/common/WaveSound.h"
#include "fuzz/Target.h"
#include "testkit/Encoding.h"

#include <QBuffer>
#include <cmath>

// Files with sound: their heads, and the whole way to samples.

namespace fuzz {

namespace {

/// Every format that is written, a tenth of a second of it.
QByteArrayList files(const std::vector<audiofile::OutputFormat> &formats)
{
    std::vector<qint16> samples(2 * 4410);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = static_cast<qint16>(8000 * std::sin(0.05 * double(i / 2)));
    QByteArrayList made;
    for (const audiofile::OutputFormat &format : formats)
        made.append(testkit::encode(*audiofile::recipeOf(format), {44100, 2}, samples, 10000, 1));
    return made;
}

void head(const QByteArray &input)
{
    QByteArray bytes = input;
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    try {
        const engines::WaveSound sound = engines::findWaveSound(file);
        require(sound.start >= 0 && sound.size >= 0 && sound.start + sound.size <= input.size(),
                "samples lie in the file");
    } catch (const RunTimeFailure &) { // told
    }
}

void decode(const QByteArray &input)
{
    const QString path = fileOf(QStringLiteral("sound"), input);
    try {
        audiofile::AudioSource source(path);
        require(source.format().rate > 0 && (source.format().channels == 1 || source.format().channels == 2),
                "sound is mono or stereo");
        constexpr int MostReadings = 20;
        for (int i = 0; i < MostReadings && !source.read().empty(); ++i)
            continue;
    } catch (const RunTimeFailure &) { // told
    }
}

QByteArrayList waveSeeds()
{
    const codecs::PcmFormat stereo{44100, 2};
    return files({codecs::WavSettings{stereo, 16}, codecs::WavSettings{stereo, 8},
                  codecs::WavSettings{stereo, 4}}) +
           QByteArrayList{
               QByteArray("RIFF\xff\xff\xff\xffWAVE", 12) + QByteArray(2000, '\0'), // chunks of no length
               QByteArray(
                   "RIFF\x24\0\0\0WAVEfmt \x10\0\0\0\1\0\2\0\x14\0\0\0\x50\0\0\0\4\0\x10\0data\0\0\0\x80",
                   44) +
                   QByteArray(13, 's'),
           };
}

QByteArrayList asfSeeds()
{
    return files({audiofile::WmaProfileNumber{1}, audiofile::WmaProfileNumber{10}});
}

QByteArrayList sourceSeeds()
{
    codecs::Mp3Settings variable;
    variable.variable = true;
    const QByteArrayList ogg = files({codecs::VorbisSettings{{44100, 2}, 128, 0, 0, {}}});
    return files({codecs::Mp3Settings{}, variable}) + ogg + waveSeeds().mid(0, 1) +
           QByteArrayList{ogg.first() + ogg.first()};
}

} // namespace

const Target WaveHeads = {"WaveHeads", head, waveSeeds};
const Target Asf = {"Asf", decode, asfSeeds};
const Target Sources = {"Sources", decode, sourceSeeds, withPageChecksums};

} // namespace fuzz
