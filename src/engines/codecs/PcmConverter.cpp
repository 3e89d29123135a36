#include "engines/codecs/PcmConverter.h"

#include "engines/codecs/AvHandles.h"
#include "engines/codecs/Resampler.h"

extern "C" {
#include <libswresample/swresample.h>
}

#include <algorithm>

namespace codecs {

namespace {

AVChannelLayout layoutOf(const PcmFormat &format)
{
    AVChannelLayout layout;
    av_channel_layout_default(&layout, format.channels);
    return layout;
}

} // namespace

void PcmConverter::Free::operator()(SwrContext *context) const
{
    swr_free(&context);
}

PcmConverter::PcmConverter(const PcmFormat &input, const PcmFormat &output) : m_input(input), m_output(output)
{
    AVChannelLayout from = layoutOf(input);
    AVChannelLayout to = layoutOf(output);
    SwrContext *context = nullptr;
    checkAv(swr_alloc_set_opts2(&context, &to, AV_SAMPLE_FMT_S16, output.rate, &from, AV_SAMPLE_FMT_S16,
                                input.rate, 0, nullptr),
            "Resampling");
    m_context.reset(context);
    chooseResampler(context, input.rate, output.rate);
    // One row per output channel. The library's own choice would lower mono that goes to both channels.
    const bool mixed = input.channels == 2 && output.channels == 1;
    const bool same = input.channels == output.channels;
    const double matrix[4] = {mixed ? 0.5 : 1.0, mixed ? 0.5 : same ? 0.0 : 1.0, 0.0, 1.0};
    checkAv(swr_set_matrix(context, matrix, input.channels), "Resampling");
    checkAv(swr_init(context), "Resampling");
}

std::span<const qint16> PcmConverter::convert(const qint16 *samples, int frames)
{
    m_framesIn += frames;
    const int converted = pass(samples, frames);
    m_framesOut += converted;
    return {m_converted.data(),
            static_cast<std::size_t>(converted) * static_cast<std::size_t>(m_output.channels)};
}

std::span<const qint16> PcmConverter::finish()
{
    const qint64 due = std::max<qint64>(av_rescale(m_framesIn, m_output.rate, m_input.rate) - m_framesOut, 0);
    const auto values = static_cast<std::size_t>(due) * static_cast<std::size_t>(m_output.channels);
    std::vector<qint16> rest;
    while (rest.size() < values) {
        const int converted = pass(nullptr, 0);
        if (converted == 0)
            break;
        rest.insert(rest.end(), m_converted.begin(),
                    m_converted.begin() + qsizetype(converted) * m_output.channels);
    }
    // The library's own count differs by a frame now and then.
    rest.resize(values);
    m_converted = std::move(rest);
    return m_converted;
}

int PcmConverter::pass(const qint16 *samples, int frames)
{
    const int room = checkAv(swr_get_out_samples(m_context.get(), frames), "Resampling") + 1;
    m_converted.resize(static_cast<std::size_t>(room) * static_cast<std::size_t>(m_output.channels));
    auto *out = reinterpret_cast<std::uint8_t *>(m_converted.data());
    const auto *in = reinterpret_cast<const std::uint8_t *>(samples);
    return checkAv(swr_convert(m_context.get(), &out, room, samples ? &in : nullptr, frames), "Resampling");
}

} // namespace codecs
