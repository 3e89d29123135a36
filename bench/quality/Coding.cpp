#include "quality/Coding.h"

#include "testkit/Encoding.h"

#include <QProcess>
#include <QTemporaryFile>
#include <chrono>
#include <ctime>

namespace quality {

Encoded encode(const codecs::EncoderRecipe &recipe, const Pcm &samples, const codecs::PcmFormat &format)
{
    Encoded encoded;
    const auto start = std::chrono::steady_clock::now();
    const std::clock_t before = std::clock();
    encoded.file = testkit::encode(recipe, format, samples);
    encoded.processorSeconds = static_cast<double>(std::clock() - before) / CLOCKS_PER_SEC;
    encoded.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return encoded;
}

DecodedPcm decode(const QByteArray &file, const QString &ending, int rate)
{
    QTemporaryFile encoded(QStringLiteral("quality_XXXXXX") + ending);
    encoded.open();
    encoded.write(file);
    encoded.flush();
    QProcess decoder;
    decoder.setStandardErrorFile(QProcess::nullDevice());
    decoder.start(QStringLiteral("ffmpeg"),
                  {QStringLiteral("-nostdin"), QStringLiteral("-i"), encoded.fileName(), QStringLiteral("-f"),
                   QStringLiteral("f32le"), QStringLiteral("-ac"), QStringLiteral("2"), QStringLiteral("-ar"),
                   QString::number(rate), QStringLiteral("-")});
    decoder.waitForFinished(-1);
    const QByteArray bytes = decoder.readAllStandardOutput();
    DecodedPcm samples(static_cast<std::size_t>(bytes.size()) / sizeof(float));
    std::copy_n(bytes.data(), samples.size() * sizeof(float), reinterpret_cast<char *>(samples.data()));
    for (float &sample : samples)
        sample *= 32768;
    return samples;
}

Quality measure(Meter &meter, const Pcm &original, const QByteArray &file, const QString &ending, int rate)
{
    const DecodedPcm decoded = decode(file, ending, rate);
    return meter.measure(original, decoded, delayOf(original, decoded));
}

} // namespace quality
