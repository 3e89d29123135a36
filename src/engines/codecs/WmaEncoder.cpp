#include "engines/codecs/WmaEncoder.h"

#include "engines/codecs/AvHandles.h"
#include "engines/codecs/AvSink.h"
#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/Recipe.h"
#include "engines/wma/StreamEncoder.h"

#include <algorithm>
#include <cstring>

namespace codecs {

namespace {

constexpr const char *What = "The WMA encoder";

/// An ASF file with one audio stream.
class AsfFile
{
public:
    AsfFile(const wma::StreamFormat &stream, files::ByteSink &sink)
        : m_sink(sink), m_packet(av_packet_alloc())
    {
        AVFormatContext *format = nullptr;
        checkAv(avformat_alloc_output_context2(&format, nullptr, "asf", nullptr), What);
        m_format.reset(format);
        format->pb = m_sink.context();
        format->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_BITEXACT;
        AVCodecParameters &sound = *avformat_new_stream(format, nullptr)->codecpar;
        sound.codec_type = AVMEDIA_TYPE_AUDIO;
        sound.codec_id = AV_CODEC_ID_WMAV2;
        sound.sample_rate = stream.rate();
        sound.bit_rate = stream.bitRate();
        sound.block_align = stream.packetBytes();
        sound.bits_per_coded_sample = 16;
        av_channel_layout_default(&sound.ch_layout, stream.channels());
        const auto header = stream.header();
        sound.extradata =
            static_cast<std::uint8_t *>(av_mallocz(header.size() + AV_INPUT_BUFFER_PADDING_SIZE));
        sound.extradata_size = static_cast<int>(header.size());
        std::memcpy(sound.extradata, header.data(), header.size());
        // With the usual size up to a sixth of the file would be filling.
        av_opt_set_int(format, "packet_size", stream.filePacketBytes(), AV_OPT_SEARCH_CHILDREN);
        m_sink.check(avformat_write_header(format, nullptr), What);
    }

    /// Times in milliseconds.
    void write(const wma::Packet &packet, qint64 begin, qint64 end)
    {
        checkAv(av_new_packet(m_packet.get(), static_cast<int>(packet.bytes.size())), What);
        std::copy(packet.bytes.begin(), packet.bytes.end(), m_packet->data);
        m_packet->pts = m_packet->dts = begin;
        m_packet->duration = std::max<qint64>(end - begin, 1); // of none the muxer would think up one
        m_packet->flags |= AV_PKT_FLAG_KEY;
        const int written = av_write_frame(m_format.get(), m_packet.get());
        av_packet_unref(m_packet.get());
        m_sink.check(written, What);
    }

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
    AvPacket m_packet;
};

class WmaEncoder final : public BlockEncoder
{
public:
    WmaEncoder(const wma::Tables &tables, const WmaSettings &settings, int threads, files::ByteSink &sink)
        : BlockEncoder(settings.channels, wma::StreamFormat(settings).frameSize()),
          m_encoder(tables, settings, threads),
          m_file(m_encoder.format(), sink)
    {}

private:
    void encodeBlock(const qint16 *samples, int frames) override
    {
        m_soundFrames += frames;
        write(m_encoder.encode(samples, frames));
    }

    void complete() override
    {
        write(m_encoder.finish());
        // The last packet's end makes the length in the file's header.
        m_file.write(m_held, m_begin, milliseconds(m_soundFrames));
        m_file.complete();
    }

    /// Holds back one packet, for the last one to be known. Decoders drop the frames of the first packet, so
    /// the second one's sound is the first that one hears.
    void write(const std::vector<wma::Packet> &packets)
    {
        for (const wma::Packet &packet : packets) {
            // Times may not be equal.
            const qint64 begin = m_packets < 2 ? m_packets : milliseconds(m_heard);
            if (m_packets > 0) {
                m_file.write(m_held, m_begin, begin);
                m_heard += qint64(packet.frames) * m_encoder.format().frameSize();
            }
            m_held = packet;
            m_begin = begin;
            ++m_packets;
        }
    }

    qint64 milliseconds(qint64 frames) const { return av_rescale(frames, 1000, m_encoder.format().rate()); }

    wma::StreamEncoder m_encoder;
    AsfFile m_file;
    wma::Packet m_held;
    qint64 m_begin = 0; ///< its time
    qint64 m_packets = 0;
    qint64 m_heard = 0; ///< sample frames before the next packet's
    qint64 m_soundFrames = 0;
};

} // namespace

std::shared_ptr<const EncoderRecipe> wmaRecipe(const WmaSettings &settings)
{
    const wma::Tables *tables = wma::measuredTables();
    if (!tables)
        refuse(QStringLiteral("This build has no WMA encoder, since the system that it was built on has no "
                              "decoder for WMA"));
    return makeBackgroundRecipe({settings.rate, settings.channels},
                                [tables, settings](files::ByteSink &sink, int threads) {
                                    return std::make_unique<WmaEncoder>(*tables, settings, threads, sink);
                                });
}

} // namespace codecs
