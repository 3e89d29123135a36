#include "engines/audiofile/FormatText.h"

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "engines/audiofile/WmaProfiles.h"
#include "engines/codecs/AvHandles.h"

#include <QStringList>

namespace audiofile {

namespace {

using codecs::Mp3Settings;

QString line(const QString &format, int rate, const QString &channels, const QString &coding)
{
    QStringList parts = {format, QStringLiteral("%1 Hz").arg(rate), channels};
    if (!coding.isEmpty())
        parts.append(coding);
    return parts.join(QStringLiteral(", "));
}

QString channelText(int channels)
{
    switch (channels) {
    case 1:
        return QStringLiteral("Mono");
    case 2:
        return QStringLiteral("Stereo");
    default:
        return QStringLiteral("%1 Channels").arg(channels);
    }
}

QString channelText(Mp3Settings::ChannelMode mode)
{
    switch (mode) {
    case Mp3Settings::Mono:
        return QStringLiteral("Mono");
    case Mp3Settings::JointStereo:
        return QStringLiteral("Joint Stereo");
    case Mp3Settings::ForcedJointStereo:
        return QStringLiteral("Forced Joint Stereo");
    case Mp3Settings::DualChannel:
        return QStringLiteral("Dual Channel");
    case Mp3Settings::Stereo:
        break;
    }
    return QStringLiteral("Stereo");
}

/// The bit rate that is written, and the one that was asked for where it is another.
QString constantRateText(int written, int wanted)
{
    QString text = QStringLiteral("%1 kb/s CBR").arg(written);
    if (written != wanted)
        text += QStringLiteral(" (the nearest to %1 kb/s)").arg(wanted);
    return text;
}

struct Text
{
    QString operator()(std::monostate) const { return {}; }

    QString operator()(const Mp3Settings &settings) const
    {
        const QString coding =
            settings.variable ? QStringLiteral("%1 to %2 kb/s VBR, quality %3")
                                    .arg(settings.minBitRate)
                                    .arg(settings.maxBitRate)
                                    .arg(settings.variableQuality)
                              : constantRateText(codecs::nearestMp3BitRate(settings.rate, settings.bitRate),
                                                 settings.bitRate);
        return line(QStringLiteral("MP3"), settings.rate, channelText(settings.channelMode), coding);
    }

    QString operator()(const codecs::WavSettings &settings) const
    {
        const QString coding =
            settings.bits >= 8 ? QStringLiteral("%1 bits PCM") : QStringLiteral("%1 bits IMA ADPCM");
        return line(QStringLiteral("WAV"), settings.format.rate, channelText(settings.format.channels),
                    coding.arg(settings.bits));
    }

    QString operator()(const codecs::VorbisSettings &settings) const
    {
        QString coding;
        if (settings.quality)
            coding = QStringLiteral("VBR, quality %1").arg(numberText(*settings.quality / 100.0));
        else if (settings.minBitRate == 0 && settings.maxBitRate == 0)
            coding = QStringLiteral("about %1 kb/s").arg(settings.nominalBitRate);
        else
            coding = QStringLiteral("%1 to %2 kb/s VBR, about %3 kb/s")
                         .arg(settings.minBitRate)
                         .arg(settings.maxBitRate)
                         .arg(settings.nominalBitRate);
        return line(QStringLiteral("OGG Vorbis"), settings.format.rate, channelText(settings.format.channels),
                    coding);
    }

    QString operator()(WmaProfileNumber profile) const
    {
        const auto settings = wmaProfile(profile.number);
        return line(QStringLiteral("WMA"), settings.rate, channelText(settings.channels),
                    QStringLiteral("%1 kb/s CBR, profile %2").arg(settings.bitRate).arg(profile.number));
    }
};

/// How the samples of an uncompressed sound are numbers.
QString numbersOf(AVCodecID coding)
{
    switch (coding) {
    case AV_CODEC_ID_PCM_F32LE:
    case AV_CODEC_ID_PCM_F64LE:
        return QStringLiteral("float");
    case AV_CODEC_ID_PCM_ALAW:
        return QStringLiteral("A-law");
    case AV_CODEC_ID_PCM_MULAW:
        return QStringLiteral("\u00b5-law");
    default:
        return QStringLiteral("PCM");
    }
}

QString formatOf(const AVFormatContext &container, const AVCodecParameters &sound)
{
    const QLatin1String name(container.iformat->name);
    if (name == QLatin1String("mp3"))
        return QStringLiteral("MP3");
    if (name == QLatin1String("asf"))
        return QStringLiteral("WMA");
    if (name == QLatin1String("wav"))
        return QStringLiteral("WAV");
    return sound.codec_id == AV_CODEC_ID_VORBIS ? QStringLiteral("OGG Vorbis") : QStringLiteral("OGG");
}

} // namespace

QString outputText(const OutputFormat &format)
{
    try {
        recipeOf(format);
    } catch (const RunTimeFailure &) { // an impossible format has no name
        return {};
    }
    return std::visit(Text(), format);
}

QString sourceText(const AVFormatContext &container, const AVCodecParameters &sound)
{
    QString coding;
    if (const int bits = av_get_exact_bits_per_sample(sound.codec_id); bits > 0)
        coding = QStringLiteral("%1 bits %2").arg(bits).arg(numbersOf(sound.codec_id));
    else if (sound.bit_rate > 0)
        coding = QStringLiteral("%1 kb/s").arg((sound.bit_rate + 500) / 1000);
    return line(formatOf(container, sound), sound.sample_rate, channelText(sound.ch_layout.nb_channels),
                coding);
}

} // namespace audiofile
