#include "engines/audiofile/FrameConverter.h"

#include "engines/codecs/AvHandles.h"
#include "engines/codecs/Resampler.h"

extern "C" {
#include <libswresample/swresample.h>
}

#include <algorithm>

namespace audiofile {

namespace {

constexpr const char *What = "Converting decoded sound";
/// So many frames at the new rate.
constexpr int MostFramesAtOnce = 16384;

} // namespace

void FrameConverter::Free::operator()(SwrContext *context) const
{
    swr_free(&context);
}

int FrameConverter::convert(const AVFrame &frame, int from, std::vector<qint16> &samples)
{
    if (!m_context || frame.format != m_sampleFormat || frame.ch_layout.nb_channels != m_channels ||
        frame.sample_rate != m_rate) {
        finish(samples);
        setUp(frame);
    }
    const auto most = std::max<std::int64_t>(std::int64_t(MostFramesAtOnce) * m_rate / m_output.rate, 1);
    const int count = static_cast<int>(std::min<std::int64_t>(frame.nb_samples - from, most));
    const auto format = static_cast<AVSampleFormat>(m_sampleFormat);
    const bool planar = av_sample_fmt_is_planar(format) != 0;
    const int planes = planar ? m_channels : 1;
    const int frameBytes = av_get_bytes_per_sample(format) * (planar ? 1 : m_channels);
    std::vector<const std::uint8_t *> begins(frame.extended_data, frame.extended_data + planes);
    for (const std::uint8_t *&begin : begins)
        begin += std::ptrdiff_t(from) * frameBytes;
    pass(begins.data(), count, samples);
    return from + count;
}

void FrameConverter::finish(std::vector<qint16> &samples)
{
    if (m_context && m_rate != m_output.rate)
        pass(nullptr, 0, samples);
}

void FrameConverter::setUp(const AVFrame &frame)
{
    m_sampleFormat = frame.format;
    m_channels = frame.ch_layout.nb_channels;
    m_rate = frame.sample_rate;
    AVChannelLayout from = frame.ch_layout;
    if (from.order == AV_CHANNEL_ORDER_UNSPEC)
        av_channel_layout_default(&from, m_channels);
    AVChannelLayout to;
    av_channel_layout_default(&to, m_output.channels);
    const auto format = static_cast<AVSampleFormat>(m_sampleFormat);
    SwrContext *context = nullptr;
    codecs::checkAv(swr_alloc_set_opts2(&context, &to, AV_SAMPLE_FMT_S16, m_output.rate, &from, format,
                                        m_rate, 0, nullptr),
                    What);
    m_context.reset(context);
    codecs::chooseResampler(context, m_rate, m_output.rate);
    if (m_channels <= 2 && m_channels == m_output.channels && av_get_bytes_per_sample(format) > 2) {
        // Straight from more bits to 16 the library cuts; by way of a matrix it rounds.
        const double same[4] = {1, 0, 0, 1};
        const double one[1] = {1};
        codecs::checkAv(swr_set_matrix(context, m_channels == 2 ? same : one, m_channels), What);
    } else if (m_channels == 1 && m_output.channels == 2) {
        const double both[2] = {1, 1};
        codecs::checkAv(swr_set_matrix(context, both, 1), What);
    }
    codecs::checkAv(swr_init(context), What);
}

void FrameConverter::pass(const std::uint8_t *const *planes, int frames, std::vector<qint16> &samples)
{
    const int room = codecs::checkAv(swr_get_out_samples(m_context.get(), frames), What) + 1;
    const auto channels = static_cast<std::size_t>(m_output.channels);
    const std::size_t begin = samples.size();
    samples.resize(begin + static_cast<std::size_t>(room) * channels);
    auto *out = reinterpret_cast<std::uint8_t *>(samples.data() + begin);
    const int made = codecs::checkAv(
        swr_convert(m_context.get(), &out, room, const_cast<const std::uint8_t **>(planes), frames), What);
    samples.resize(begin + static_cast<std::size_t>(made) * channels);
}

} // namespace audiofile
