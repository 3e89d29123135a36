#include "engines/audiofile/AudioFile.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"
#include "base/Task.h"
#include "engines/audiofile/FormatText.h"
#include "engines/audiofile/ReadBack.h"
#include "engines/audiofile/WmaProfiles.h"
#include "engines/codecs/Recipe.h"

#include <QFileInfo>
#include <algorithm>

namespace audiofile {

AudioFile::AudioFile(QObject *parent)
    : NCTAudioFile(parent), m_mp3([this](const codecs::Mp3Settings &settings) { setOutput(settings); })
{}

void AudioFile::OpenRead(const QString &path)
{
    m_source.reset();
    m_sourceText = QString();
    m_status = 0;
    m_sourcePath = path;
    try {
        m_source = traced(logConvert, path, [&] {
            const auto open = [path](const std::stop_token &stop) {
                return std::make_unique<AudioSource>(path, stop);
            };
            return std::make_unique<ReadAhead>(open, m_goOn);
        });
        m_sourceText = m_source->description();
    } catch (const RunTimeFailure &failure) {
        m_status = -failure.number();
    }
}

void AudioFile::CloseFile()
{
    m_source.reset();
    // Nothing is open afterwards, also where the file can't be finished.
    if (const auto target = std::move(m_target)) {
        traced(logConvert, target->path,
               [&] { doBeside("file finisher", [&](const auto &) { target->finish(m_input); }); });
    }
}

void AudioFile::OpenWrite(const QString &path)
{
    m_target.reset();
    m_status = 0;
    try {
        m_target =
            traced(logConvert, path, [&] { return std::make_unique<Target>(path, recipeOf(m_output)); });
    } catch (const RunTimeFailure &failure) {
        m_status = -failure.number();
    }
}

void AudioFile::WriteSamples(const QList<qint16> &samples)
{
    if (!m_target)
        codecs::refuse(QStringLiteral("No file is open for writing"));
    try {
        traced(logConvert, m_target->path, [&] {
            const qsizetype frames = samples.size() / m_input.channels;
            m_target->encoderOf(m_input).encode(samples.constData(), frames);
            m_target->frames += frames;
        });
    } catch (const RunTimeFailure &) {
        m_target.reset();
        throw;
    }
}

QList<qint16> AudioFile::ReadSamples(qint32 count)
{
    if (!m_source || count < 1)
        codecs::refuse(QStringLiteral("No file is open for reading"));
    // All that one reading gives is encoded at one go, while the window waits: a quarter of a second keeps it
    // lively with the slowest encoder, too.
    const qint32 most = std::max(SampleRate() / 4, 1) * ChannelCount();
    return traced(logConvert, m_sourcePath, [&] {
        const std::vector<qint16> samples =
            m_source->read(static_cast<std::size_t>(std::min(count, most)), m_goOn);
        if (samples.empty() && m_source->wasDamaged()) {
            m_status = -RunTimeFailure::DeviceIoError;
            qCWarning(logConvert).noquote() << m_sourcePath << "is damaged, not all of it could be read";
        }
        return QList<qint16>(samples.begin(), samples.end());
    });
}

qint32 AudioFile::DurationSeconds() const
{
    return m_source ? m_source->seconds() : 0;
}

qint32 AudioFile::SamplesPerSecond() const
{
    return SampleRate() * ChannelCount();
}

QString AudioFile::FormatString() const
{
    return m_sourceText ? *m_sourceText : outputText(m_output);
}

qint32 AudioFile::ChannelCount() const
{
    return sourceFormat().channels;
}

qint32 AudioFile::SampleRate() const
{
    return sourceFormat().rate;
}

void AudioFile::SetWAVFormat(qint32 rate, qint32 channels, qint32 bitsPerSample)
{
    setOutput(codecs::WavSettings{{rate, channels}, bitsPerSample});
}

void AudioFile::SetInputFormat(qint32 rate, qint32 channels)
{
    if (rate < 1 || channels < 1 || channels > 2)
        codecs::refuse(QStringLiteral("Samples can't have %1 Hz and %2 channels").arg(rate).arg(channels));
    if (m_target && m_target->encoder)
        codecs::refuse(QStringLiteral("The file that is being written has its input format already"));
    m_input = {rate, channels};
}

void AudioFile::SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate)
{
    SetOGGFormat(rate, channels, bitRate, 0, 0);
}

void AudioFile::SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum)
{
    setOutput(codecs::VorbisSettings{{rate, channels}, bitRate, minimum, maximum, {}});
}

void AudioFile::SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum,
                             qint16 quality)
{
    setOutput(codecs::VorbisSettings{{rate, channels}, bitRate, minimum, maximum, quality});
}

void AudioFile::SelectWMAProfile(qint32 profile)
{
    if (profile < 1 || profile > WmaProfileCount)
        codecs::refuse(QStringLiteral("There is no WMA profile %1").arg(profile));
    setOutput(WmaProfileNumber{profile});
}

bool AudioFile::CheckOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum,
                               qint32 maximum) const
{
    return codecs::vorbisFormatExists({{rate, channels}, bitRate, minimum, maximum, {}});
}

void AudioFile::setOutput(const OutputFormat &format)
{
    m_output = format;
    m_sourceText.reset();
}

codecs::Encoder &AudioFile::Target::encoderOf(const codecs::PcmFormat &input)
{
    if (!encoder)
        encoder = recipe->create(input, file);
    return *encoder;
}

/// The older file stays where the new one isn't as good as its sound.
void AudioFile::Target::finish(const codecs::PcmFormat &input)
{
    encoderOf(input).finish();
    if (QFileInfo::exists(path)) {
        file.flush();
        checkReadBack(file.temporaryPath(), input, frames);
    }
    file.commit();
}

/// All zero without a source.
codecs::PcmFormat AudioFile::sourceFormat() const
{
    return m_source ? m_source->format() : codecs::PcmFormat{0, 0};
}

} // namespace audiofile
