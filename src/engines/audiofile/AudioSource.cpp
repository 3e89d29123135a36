#include "engines/audiofile/AudioSource.h"

#include "base/RunTimeFailure.h"
#include "engines/audiofile/AsfProtection.h"
#include "engines/audiofile/FormatText.h"
#include "engines/audiofile/OggLength.h"

#include <QtEndian>
#include <algorithm>
#include <cmath>
#include <string_view>

namespace audiofile {

namespace {

/// What the library may allocate at a time; covers and the like need not have more.
constexpr std::size_t MostBytesAtOnce = 64 << 20;
constexpr int HighestRate = 768000;
/// Of a stream behind another one: some bytes of it could become hours at the rate of the first.
constexpr int LowestJoinedRate = 1000;
constexpr int MostChannels = 64;
constexpr qsizetype FramesPerRead = 16384;
constexpr int MostFaultsInARow = 10'000; // of 64 kB each in OGG files
/// Longer than any format's block.
constexpr int MostHeldFrames = 8192;

[[noreturn]] void failNoSound()
{
    throw RunTimeFailure(RunTimeFailure::InvalidCall,
                         QStringLiteral("This is no MP3, WAV, WMA or OGG file with sound"));
}

/// The first of a Vorbis stream's three header packets; in joined files such streams follow each other.
bool beginsVorbisStream(const AVPacket &packet)
{
    constexpr std::string_view Head("\1vorbis");
    return std::string_view(reinterpret_cast<const char *>(packet.data), std::size_t(packet.size))
        .starts_with(Head);
}

/// So much of the sound's beginning was added by the encoder or the decoder, in frames. It is told where the
/// decoder is not to cut by itself.
qint64 toBeSkipped(const AVFrame &frame)
{
    const AVFrameSideData *told = av_frame_get_side_data(&frame, AV_FRAME_DATA_SKIP_SAMPLES);
    return told ? qFromLittleEndian<quint32>(told->data) : 0;
}

} // namespace

AudioSource::AudioSource(const QString &path, std::stop_token stop)
    : m_file(path, std::move(stop)), m_packet(av_packet_alloc()), m_frame(av_frame_alloc())
{
    if (isProtectedAsf(m_file.file()))
        throw RunTimeFailure(RunTimeFailure::PermissionDenied, QStringLiteral("The file is protected"));
    const AvFile::WorkLimit limit(m_file);
    openContainer();
    openDecoder();
    findLength();
    m_converter.emplace(m_format);
    // A file that only looks like sound shows it here and not in the middle of a job.
    while (m_decoded.empty() && decodeMore())
        continue;
    if (m_decoded.empty() && m_faulty)
        failNoSound();
    const bool none = m_decoded.empty() || m_length == 0; // decoders give a lone block, sound or not
    m_seconds = none ? 0 : std::max(m_seconds, 1);
}

void AudioSource::openContainer()
{
    // Faults of a file are told by failures; nothing goes to the terminal.
    av_log_set_level(AV_LOG_QUIET);
    av_max_alloc(MostBytesAtOnce);
    m_length = lengthInOnlyPage(m_file.file());
    AVFormatContext *container = avformat_alloc_context();
    container->pb = m_file.context();
    // Other formats aren't read, among them lists that would open further files.
    container->format_whitelist = av_strdup("mp3,wav,asf,ogg");
    if (avformat_open_input(&container, nullptr, nullptr, nullptr) < 0)
        failNoSound();
    m_container.reset(container);
    if (avformat_find_stream_info(container, nullptr) < 0)
        failNoSound();
    m_stream = av_find_best_stream(container, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
    if (m_stream < 0)
        failNoSound();
    // Cover pictures are streams, too.
    for (unsigned i = 0; i < container->nb_streams; ++i)
        container->streams[i]->discard = int(i) == m_stream ? AVDISCARD_DEFAULT : AVDISCARD_ALL;
}

void AudioSource::openDecoder()
{
    const AVStream &stream = *m_container->streams[m_stream];
    const AVCodecParameters &parameters = *stream.codecpar;
    const int channels = parameters.ch_layout.nb_channels;
    const AVCodec *codec = avcodec_find_decoder(parameters.codec_id);
    if (!codec || parameters.sample_rate < 1 || parameters.sample_rate > HighestRate || channels < 1 ||
        channels > MostChannels)
        failNoSound();
    m_decoder.reset(avcodec_alloc_context3(codec));
    m_decoder->pkt_timebase = stream.time_base;
    if (m_length) {
        // The library takes a page that is the first and the last for one that begins before the sound, and
        // would cut too much of its end.
        m_decoder->flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
        m_heldFrames = MostHeldFrames;
    }
    if (avcodec_parameters_to_context(m_decoder.get(), &parameters) < 0 ||
        avcodec_open2(m_decoder.get(), codec, nullptr) < 0)
        failNoSound();
    m_format = {parameters.sample_rate, std::min(channels, 2)};
    m_description = sourceText(*m_container, parameters);
}

void AudioSource::findLength()
{
    const qint64 duration = m_container->duration; // in millionths of a second
    if (duration <= 0)
        return;
    m_seconds = static_cast<int>(std::clamp<double>(std::nearbyint(double(duration) / AV_TIME_BASE), 0, 1e9));
    if (m_length || m_container->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE)
        return; // known, or a guess
    const AVCodecParameters &parameters = *m_container->streams[m_stream]->codecpar;
    const QLatin1String container(m_container->iformat->name);
    const bool blocks =
        container == QLatin1String("wav") && av_get_exact_bits_per_sample(parameters.codec_id) == 0;
    // The last block is filled up, by less than a block or, where frames overlap, by two frames.
    if (container == QLatin1String("asf"))
        m_heldFrames = 2 * std::max(m_decoder->frame_size, 2048);
    else if (blocks)
        m_heldFrames = MostHeldFrames;
    else
        return;
    m_length = av_rescale(duration, m_format.rate, AV_TIME_BASE);
}

std::vector<qint16> AudioSource::read()
{
    const auto channels = static_cast<std::size_t>(m_format.channels);
    const std::size_t held = m_ended ? 0 : static_cast<std::size_t>(m_heldFrames) * channels;
    while (!m_ended && m_decoded.size() < held + FramesPerRead * channels)
        decodeMore();
    const std::size_t keep = m_ended ? 0 : held;
    const std::size_t given = m_decoded.size() - std::min(keep, m_decoded.size());
    std::vector<qint16> samples(m_decoded.begin(), m_decoded.begin() + qsizetype(given));
    m_decoded.erase(m_decoded.begin(), m_decoded.begin() + qsizetype(given));
    m_framesGiven += qint64(given / channels);
    return samples;
}

/// A step that makes some sound, or none. False at the end.
bool AudioSource::decodeMore()
{
    if (m_ended)
        return false;
    if (m_taken < m_frame->nb_samples)
        m_taken = m_converter->convert(*m_frame, m_taken, m_decoded);
    else if (!takeFrame() && (m_draining || !sendPacket()))
        end();
    return !m_ended;
}

/// False where the decoder needs another packet first.
bool AudioSource::takeFrame()
{
    av_frame_unref(m_frame.get());
    const int result = avcodec_receive_frame(m_decoder.get(), m_frame.get());
    m_faulty |= result < 0 && result != AVERROR(EAGAIN) && result != AVERROR_EOF;
    if (result < 0)
        return false;
    const int rate = m_frame->sample_rate;
    if (rate < 1 || rate > HighestRate || (rate < LowestJoinedRate && rate != m_format.rate)) {
        m_faulty = true;
        av_frame_unref(m_frame.get());
    }
    m_skip += toBeSkipped(*m_frame);
    m_taken = static_cast<int>(std::min<qint64>(m_skip, m_frame->nb_samples));
    m_skip -= m_taken;
    return true;
}

/// Gives the decoder the next packet, or the sign that none follows.
bool AudioSource::sendPacket()
{
    if (const int result = av_read_frame(m_container.get(), m_packet.get()); result < 0) {
        if (m_file.asksTooMuch())
            failNoSound();
        if (m_file.failed())
            throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        // The library gives up at a long fault in the middle, and goes on when it is asked again.
        if (result != AVERROR_EOF && !avio_feof(m_file.context()) && ++m_faultsInARow < MostFaultsInARow) {
            m_faulty = true;
            return true;
        }
        avcodec_send_packet(m_decoder.get(), nullptr);
        m_draining = true;
        return true;
    }
    m_faultsInARow = 0;
    if (m_packet->stream_index == m_stream) {
        // Else the decoder would overlap the last block of one stream with the first of the next.
        if (m_decoder->codec_id == AV_CODEC_ID_VORBIS && beginsVorbisStream(*m_packet))
            avcodec_flush_buffers(m_decoder.get());
        m_packetTime += m_packet->duration;
        m_faulty |= (m_packet->flags & AV_PKT_FLAG_CORRUPT) != 0;
        m_faulty |= avcodec_send_packet(m_decoder.get(), m_packet.get()) < 0;
    }
    av_packet_unref(m_packet.get());
    return true;
}

void AudioSource::end()
{
    m_converter->finish(m_decoded);
    m_ended = true;
    m_complete = m_file.isWhole() && hasAllItSpeaksOf();
    cutTail();
}

/// Whether all came that the file's head speaks of. What a faulty place in the middle swallows shows here,
/// too.
bool AudioSource::hasAllItSpeaksOf() const
{
    const QLatin1String container(m_container->iformat->name);
    const AVStream &stream = *m_container->streams[m_stream];
    const bool guessed = m_container->duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
    if (container == QLatin1String("wav"))
        return !guessed || m_container->duration <= 0; // else the head speaks of more than the file holds
    if (container == QLatin1String("asf"))
        return m_length &&
               m_framesGiven + qint64(m_decoded.size()) / m_format.channels >= *m_length - m_heldFrames;
    if (container == QLatin1String("mp3") && !guessed && stream.duration != AV_NOPTS_VALUE) {
        // Whether the frame that tells the number counts itself, encoders don't agree.
        const qint64 frame = av_rescale_q(m_decoder->frame_size, {1, m_format.rate}, stream.time_base);
        return m_packetTime >= stream.duration - frame;
    }
    return true;
}

void AudioSource::cutTail()
{
    if (!m_length)
        return;
    const qint64 frames = qint64(m_decoded.size()) / m_format.channels;
    const qint64 excess = m_framesGiven + frames - *m_length;
    if (excess > 0 && excess <= std::min<qint64>(m_heldFrames, frames))
        m_decoded.resize(static_cast<std::size_t>((frames - excess) * m_format.channels));
}

} // namespace audiofile
