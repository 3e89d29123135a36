#include "testkit/TestDecoder.h"

#include <QBuffer>
#include <QFile>
#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace testkit {

namespace {

int readBytes(void *device, std::uint8_t *bytes, int count)
{
    const qint64 got = static_cast<QBuffer *>(device)->read(reinterpret_cast<char *>(bytes), count);
    return got > 0 ? static_cast<int>(got) : AVERROR_EOF;
}

std::int64_t seekBytes(void *device, std::int64_t offset, int whence)
{
    auto *buffer = static_cast<QBuffer *>(device);
    if (whence == AVSEEK_SIZE)
        return buffer->size();
    const qint64 base = whence == SEEK_CUR ? buffer->pos() : whence == SEEK_END ? buffer->size() : 0;
    return buffer->seek(base + offset) ? base + offset : -1;
}

double valueAt(const AVFrame &frame, int channel, int index)
{
    const auto format = static_cast<AVSampleFormat>(frame.format);
    const bool planar = av_sample_fmt_is_planar(format);
    const std::uint8_t *data = frame.extended_data[planar ? channel : 0];
    const int place = planar ? index : index * frame.ch_layout.nb_channels + channel;
    switch (av_get_packed_sample_fmt(format)) {
    case AV_SAMPLE_FMT_U8:
        return (data[place] - 128) * 256.0;
    case AV_SAMPLE_FMT_S16:
        return reinterpret_cast<const qint16 *>(data)[place];
    case AV_SAMPLE_FMT_S32:
        return reinterpret_cast<const qint32 *>(data)[place] / 65536.0;
    case AV_SAMPLE_FMT_FLT:
        return reinterpret_cast<const float *>(data)[place] * 32768.0;
    default:
        return reinterpret_cast<const double *>(data)[place] * 32768.0;
    }
}

void append(const AVFrame &frame, Decoded &decoded)
{
    for (int i = 0; i < frame.nb_samples; ++i)
        for (int c = 0; c < frame.ch_layout.nb_channels; ++c)
            decoded.samples.push_back(
                static_cast<qint16>(std::clamp(std::lrint(valueAt(frame, c, i)), -32768L, 32767L)));
}

void addTags(const AVDictionary *dictionary, Decoded &decoded)
{
    const AVDictionaryEntry *entry = nullptr;
    while ((entry = av_dict_get(dictionary, "", entry, AV_DICT_IGNORE_SUFFIX)))
        decoded.tags[QString::fromUtf8(entry->key).toLower()] = QString::fromUtf8(entry->value);
}

std::atomic<int> warnings;

void countWarning(void *, int level, const char *, va_list)
{
    warnings += level <= AV_LOG_WARNING;
}

void decodeStream(AVFormatContext *format, int index, double from, Decoded &decoded)
{
    const AVStream *stream = format->streams[index];
    if (from > 0)
        av_seek_frame(format, index, std::llround(from / av_q2d(stream->time_base)), AVSEEK_FLAG_BACKWARD);
    const AVCodec *codec = avcodec_find_decoder(stream->codecpar->codec_id);
    AVCodecContext *context = avcodec_alloc_context3(codec);
    avcodec_parameters_to_context(context, stream->codecpar);
    context->pkt_timebase = stream->time_base;
    avcodec_open2(context, codec, nullptr);
    decoded.codec = QString::fromLatin1(codec->name);
    decoded.rate = context->sample_rate;
    decoded.channels = context->ch_layout.nb_channels;
    decoded.bitsPerCode = context->bits_per_coded_sample;
    decoded.bitRate = stream->codecpar->bit_rate;
    decoded.seconds = double(format->duration) / AV_TIME_BASE;
    AVPacket *packet = av_packet_alloc();
    AVFrame *frame = av_frame_alloc();
    for (bool more = true; more;) {
        more = av_read_frame(format, packet) >= 0;
        if (!more || packet->stream_index == index)
            decoded.clean &= avcodec_send_packet(context, more ? packet : nullptr) >= 0;
        av_packet_unref(packet);
        while (avcodec_receive_frame(context, frame) >= 0) {
            if (decoded.samples.empty())
                decoded.begin = static_cast<double>(frame->pts) * av_q2d(stream->time_base);
            append(*frame, decoded);
        }
    }
    av_frame_free(&frame);
    av_packet_free(&packet);
    avcodec_free_context(&context);
}

} // namespace

Decoded decode(QByteArray file, double from)
{
    av_log_set_callback(&countWarning);
    const int before = warnings;
    Decoded decoded;
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    constexpr int Chunk = 32768;
    AVIOContext *io = avio_alloc_context(static_cast<unsigned char *>(av_malloc(Chunk)), Chunk, 0, &buffer,
                                         &readBytes, nullptr, &seekBytes);
    AVFormatContext *format = avformat_alloc_context();
    format->pb = io;
    if (avformat_open_input(&format, nullptr, nullptr, nullptr) >= 0) {
        avformat_find_stream_info(format, nullptr);
        decoded.format = QString::fromLatin1(format->iformat->name);
        const int index = av_find_best_stream(format, AVMEDIA_TYPE_AUDIO, -1, -1, nullptr, 0);
        addTags(format->metadata, decoded);
        if (index >= 0)
            addTags(format->streams[index]->metadata, decoded);
        if (index >= 0)
            decodeStream(format, index, from, decoded);
        avformat_close_input(&format);
    }
    av_freep(&io->buffer);
    avio_context_free(&io);
    decoded.warnings = warnings - before;
    return decoded;
}

Decoded decodeFile(const QString &path)
{
    QFile file(path);
    return decode(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
}

} // namespace testkit
