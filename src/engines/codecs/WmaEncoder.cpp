#include "engines/codecs/WmaEncoder.h"

#include "engines/codecs/AvHandles.h"
#include "engines/codecs/AvSink.h"
#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/Recipe.h"

#include <algorithm>

namespace codecs {

namespace {

constexpr const char *What = "The WMA encoder";

AvCodec openCodec(const WmaSettings &settings)
{
    const AVCodec *codec = avcodec_find_encoder(AV_CODEC_ID_WMAV2);
    if (!codec)
        refuse(QStringLiteral("There is no WMA encoder on this system"));
    AvCodec context(avcodec_alloc_context3(codec));
    context->sample_rate = settings.rate;
    context->time_base = {1, settings.rate};
    context->sample_fmt = AV_SAMPLE_FMT_FLTP;
    context->bit_rate = settings.bitRate * 1000LL;
    context->flags |= AV_CODEC_FLAG_BITEXACT;
    av_channel_layout_default(&context->ch_layout, settings.channels);
    checkAv(avcodec_open2(context.get(), codec, nullptr), What);
    return context;
}

/// An ASF file with one audio stream.
class AsfFile
{
public:
    AsfFile(const AVCodecContext &codec, engines::ByteSink &sink) : m_sink(sink)
    {
        AVFormatContext *format = nullptr;
        checkAv(avformat_alloc_output_context2(&format, nullptr, "asf", nullptr), What);
        m_format.reset(format);
        format->pb = m_sink.context();
        format->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
        AVStream *stream = avformat_new_stream(format, nullptr);
        checkAv(avcodec_parameters_from_context(stream->codecpar, &codec), What);
        // A packet of the file that holds a whole number of the encoder's, each with its head. With the usual
        // size up to a sixth of the file would be filling.
        constexpr int UsualPacket = 3200;
        const int withHead = codec.block_align + 17;
        const int packetSize = std::max(1, UsualPacket / withHead) * withHead + 30;
        av_opt_set_int(format, "packet_size", packetSize, AV_OPT_SEARCH_CHILDREN);
        m_sink.check(avformat_write_header(format, nullptr), What);
    }

    void write(AVPacket *packet) { m_sink.check(av_write_frame(m_format.get(), packet), What); }

    void complete()
    {
        m_sink.check(av_write_trailer(m_format.get()), What);
        avio_flush(m_format->pb);
        m_sink.check(m_format->pb->error, What);
    }

private:
    struct Free
    {
        void operator()(AVFormatContext *format) const { avformat_free_context(format); }
    };

    AvSink m_sink;
    std::unique_ptr<AVFormatContext, Free> m_format;
};

/// The transform overlaps frames: a frame comes out whole only with both its neighbours. So a frame of
/// silence stands before the sound and one behind it. Decoders give a packet's frame with the next packet and
/// drop two frames at the start, so the sound of the third packet is the first that one hears.
class WmaEncoder final : public BlockEncoder
{
public:
    WmaEncoder(const WmaSettings &settings, AvCodec codec, engines::ByteSink &sink)
        : BlockEncoder(settings.channels, codec->frame_size),
          m_rate(settings.rate),
          m_codec(std::move(codec)),
          m_file(*m_codec, sink),
          m_frame(av_frame_alloc()),
          m_packet(av_packet_alloc())
    {
        m_frame->format = m_codec->sample_fmt;
        m_frame->nb_samples = m_codec->frame_size;
        checkAv(av_channel_layout_copy(&m_frame->ch_layout, &m_codec->ch_layout), What);
        checkAv(av_frame_get_buffer(m_frame.get(), 0), What);
        encodeFrame(nullptr, 0);
        writePacket(0);
    }

private:
    void encodeBlock(const qint16 *samples, int frames) override
    {
        m_soundFrames += frames;
        encodeFrame(samples, frames);
        writePacket(0);
    }

    void complete() override
    {
        encodeFrame(nullptr, 0);
        // The last packet's end makes the length in the file's header.
        writePacket(milliseconds(m_soundFrames));
        m_file.complete();
    }

    /// Makes the next packet; behind `frames` comes silence.
    void encodeFrame(const qint16 *samples, int frames)
    {
        checkAv(av_frame_make_writable(m_frame.get()), What);
        const int channels = m_codec->ch_layout.nb_channels;
        for (int c = 0; c < channels; ++c) {
            auto *const plane = reinterpret_cast<float *>(m_frame->extended_data[c]);
            for (int i = 0; i < frames; ++i)
                plane[i] = static_cast<float>(samples[i * channels + c]) / 32768.0F;
            std::fill(plane + frames, plane + m_frame->nb_samples, 0.0F);
        }
        checkAv(avcodec_send_frame(m_codec.get(), m_frame.get()), What);
        checkAv(avcodec_receive_packet(m_codec.get(), m_packet.get()), What);
    }

    void writePacket(qint64 end)
    {
        // The two packets that aren't heard take a millisecond each: times may neither be negative nor equal.
        const int number = m_packets++;
        const qint64 begin = number < 3 ? number : milliseconds(qint64(number - 2) * m_codec->frame_size);
        m_packet->pts = m_packet->dts = begin;
        m_packet->duration = std::max<qint64>(end - begin, 1); // of none the muxer would think up one
        m_file.write(m_packet.get());
    }

    qint64 milliseconds(qint64 frames) const { return av_rescale(frames, 1000, m_rate); }

    const int m_rate;
    AvCodec m_codec;
    AsfFile m_file;
    AvFrame m_frame;
    AvPacket m_packet;
    int m_packets = 0;
    qint64 m_soundFrames = 0;
};

} // namespace

std::shared_ptr<const EncoderRecipe> wmaRecipe(const WmaSettings &settings)
{
    openCodec(settings);
    return makeRecipe({settings.rate, settings.channels}, [settings](engines::ByteSink &sink) {
        return std::make_unique<WmaEncoder>(settings, openCodec(settings), sink);
    });
}

} // namespace codecs
