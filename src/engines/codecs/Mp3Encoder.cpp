#include "engines/codecs/Mp3Encoder.h"

#include "base/RunTimeFailure.h"
#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/Recipe.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <lame/lame.h>

namespace codecs {

namespace {

constexpr int Mpeg1BitRates[] = {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320};
constexpr int Mpeg2BitRates[] = {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160};
constexpr int Mpeg25BitRates[] = {8, 16, 24, 32, 40, 48, 56, 64};

struct Close
{
    void operator()(lame_t lame) const { lame_close(lame); }
};
using Lame = std::unique_ptr<lame_global_struct, Close>;

MPEG_mode modeOf(Mp3Settings::ChannelMode mode)
{
    switch (mode) {
    case Mp3Settings::JointStereo:
    case Mp3Settings::ForcedJointStereo:
        return JOINT_STEREO;
    case Mp3Settings::DualChannel:
        return DUAL_CHANNEL;
    case Mp3Settings::Mono:
        return MONO;
    case Mp3Settings::Stereo:
        break;
    }
    return STEREO;
}

/// Without an output rate LAME chooses one.
Lame openLame(const Mp3Settings &settings, int outputRate)
{
    Lame lame(lame_init());
    if (!lame)
        throw RunTimeFailure(RunTimeFailure::CantCreateComponent);
    lame_t l = lame.get();
    lame_set_in_samplerate(l, settings.rate);
    lame_set_out_samplerate(l, outputRate);
    lame_set_num_channels(l, settings.channelMode == Mp3Settings::Mono ? 1 : 2);
    lame_set_mode(l, modeOf(settings.channelMode));
    lame_set_force_ms(l, settings.channelMode == Mp3Settings::ForcedJointStereo);
    lame_set_quality(l, settings.quality);
    lame_set_bWriteVbrTag(l, !settings.variable || settings.variableHeader);
    if (settings.variable) {
        lame_set_VBR(l, vbr_mtrh);
        lame_set_VBR_q(l, settings.variableQuality);
        lame_set_VBR_min_bitrate_kbps(l, nearestMp3BitRate(settings.rate, settings.minBitRate));
        lame_set_VBR_max_bitrate_kbps(l, nearestMp3BitRate(settings.rate, settings.maxBitRate));
        lame_set_VBR_hard_min(l, settings.strictMinBitRate);
    } else {
        lame_set_VBR(l, vbr_off);
        lame_set_brate(l, nearestMp3BitRate(settings.rate, settings.bitRate));
    }
    if (lame_init_params(l) < 0)
        refuse(QStringLiteral("The MP3 encoder refuses these settings"));
    return lame;
}

class Mp3Encoder final : public BlockEncoder
{
public:
    Mp3Encoder(const Mp3Settings &settings, engines::ByteSink &sink)
        : BlockEncoder(settings.channelMode == Mp3Settings::Mono ? 1 : 2, BlockFrames),
          m_lame(openLame(settings, settings.rate)),
          m_mono(settings.channelMode == Mp3Settings::Mono),
          m_sink(sink)
    {}

private:
    static constexpr int BlockFrames = 1152;

    void encodeBlock(const qint16 *samples, int frames) override
    {
        const int room = static_cast<int>(m_bytes.size());
        // The call for interleaved samples takes two channels whatever was set.
        put(m_mono ? lame_encode_buffer(m_lame.get(), samples, samples, frames, m_bytes.data(), room)
                   : lame_encode_buffer_interleaved(m_lame.get(), const_cast<qint16 *>(samples), frames,
                                                    m_bytes.data(), room));
    }

    void complete() override
    {
        put(lame_encode_flush(m_lame.get(), m_bytes.data(), static_cast<int>(m_bytes.size())));
        // The first frame was left empty for the tag, with the sound's exact length and the points for
        // seeking, which is complete only now. Where bit rate and tag don't fit together there's no such
        // frame.
        const std::size_t count = lame_get_lametag_frame(m_lame.get(), m_bytes.data(), m_bytes.size());
        if (count == 0 || count > m_bytes.size())
            return;
        m_sink.seek(0);
        m_sink.write(m_bytes.data(), count);
    }

    void put(int count)
    {
        if (count < 0)
            refuse(QStringLiteral("The MP3 encoder failed (%1)").arg(count));
        if (count > 0)
            m_sink.write(m_bytes.data(), static_cast<std::size_t>(count));
    }

    Lame m_lame;
    const bool m_mono;
    engines::ByteSink &m_sink;
    /// As much as LAME may ask for one block, and for all that waits at the end.
    std::array<unsigned char, 7200 + BlockFrames * 5 / 4> m_bytes;
};

} // namespace

std::span<const int> mp3BitRates(int rate)
{
    switch (rate) {
    case 32000:
    case 44100:
    case 48000:
        return Mpeg1BitRates;
    case 16000:
    case 22050:
    case 24000:
        return Mpeg2BitRates;
    case 8000:
    case 11025:
    case 12000:
        return Mpeg25BitRates;
    default:
        return {};
    }
}

int nearestMp3BitRate(int rate, int bitRate)
{
    const auto rates = mp3BitRates(rate);
    return *std::min_element(rates.begin(), rates.end(), [bitRate](int a, int b) {
        return std::abs(a - bitRate) < std::abs(b - bitRate);
    });
}

int suitableMp3Rate(Mp3Settings settings)
{
    settings.rate = 44100;
    return lame_get_out_samplerate(openLame(settings, 0).get());
}

std::shared_ptr<const EncoderRecipe> mp3Recipe(const Mp3Settings &settings)
{
    if (mp3BitRates(settings.rate).empty())
        refuse(QStringLiteral("There is no MP3 format with %1 Hz").arg(settings.rate));
    if (settings.variable && settings.minBitRate > settings.maxBitRate)
        refuse(QStringLiteral("The lowest MP3 bit rate, %1 kb/s, lies above the highest, %2 kb/s")
                   .arg(settings.minBitRate)
                   .arg(settings.maxBitRate));
    openLame(settings, settings.rate);
    return makeRecipe(
        {settings.rate, settings.channelMode == Mp3Settings::Mono ? 1 : 2},
        [settings](engines::ByteSink &sink) { return std::make_unique<Mp3Encoder>(settings, sink); });
}

} // namespace codecs
