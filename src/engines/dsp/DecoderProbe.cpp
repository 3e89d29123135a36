#include "engines/dsp/DecoderProbe.h"

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <cstring>
#include <stdexcept>

namespace dsp {

struct DecoderProbe::Context
{
    ~Context()
    {
        av_packet_free(&packet);
        av_frame_free(&frame);
        avcodec_free_context(&codec);
    }

    AVCodecContext *codec = nullptr;
    AVPacket *packet = av_packet_alloc();
    AVFrame *frame = av_frame_alloc();
};

bool DecoderProbe::exists(const std::string &codec)
{
    return avcodec_find_decoder_by_name(codec.c_str()) != nullptr;
}

DecoderProbe::DecoderProbe(const ProbedStream &stream) : m_context(std::make_unique<Context>())
{
    const AVCodec *decoder = avcodec_find_decoder_by_name(stream.codec.c_str());
    if (!decoder)
        throw std::runtime_error("no decoder called " + stream.codec);
    m_context->codec = avcodec_alloc_context3(decoder);
    AVCodecContext &codec = *m_context->codec;
    codec.sample_rate = stream.rate;
    av_channel_layout_default(&codec.ch_layout, stream.channels);
    codec.bit_rate = stream.bitRate;
    codec.block_align = stream.packetSize;
    codec.request_sample_fmt = AV_SAMPLE_FMT_FLTP;
    if (stream.keepStart)
        codec.flags2 |= AV_CODEC_FLAG2_SKIP_MANUAL;
    codec.extradata =
        static_cast<std::uint8_t *>(av_mallocz(stream.extradata.size() + AV_INPUT_BUFFER_PADDING_SIZE));
    codec.extradata_size = static_cast<int>(stream.extradata.size());
    if (!stream.extradata.empty())
        std::memcpy(codec.extradata, stream.extradata.data(), stream.extradata.size());
    if (avcodec_open2(&codec, decoder, nullptr) < 0)
        throw std::runtime_error("the decoder " + stream.codec + " refuses the stream");
}

DecoderProbe::~DecoderProbe() = default;

std::vector<std::vector<float>> DecoderProbe::decode(std::span<const std::uint8_t> packet)
{
    AVCodecContext &codec = *m_context->codec;
    AVFrame &frame = *m_context->frame;
    if (av_new_packet(m_context->packet, static_cast<int>(packet.size())) < 0)
        throw std::bad_alloc();
    std::memcpy(m_context->packet->data, packet.data(), packet.size());
    const int sent = avcodec_send_packet(&codec, m_context->packet);
    av_packet_unref(m_context->packet);
    if (sent < 0)
        throw std::runtime_error("the decoder refuses a packet");
    std::vector<std::vector<float>> channels;
    while (avcodec_receive_frame(&codec, &frame) == 0) {
        if (codec.sample_fmt != AV_SAMPLE_FMT_FLTP)
            throw std::runtime_error("the decoder gives no floating point samples");
        channels.resize(frame.ch_layout.nb_channels);
        for (std::size_t c = 0; c < channels.size(); ++c) {
            const auto *samples = reinterpret_cast<const float *>(frame.extended_data[c]);
            channels[c].insert(channels[c].end(), samples, samples + frame.nb_samples);
        }
        av_frame_unref(&frame);
    }
    return channels;
}

} // namespace dsp
