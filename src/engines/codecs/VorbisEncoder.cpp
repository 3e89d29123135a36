#include "engines/codecs/VorbisEncoder.h"

#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/Recipe.h"

#include <vorbis/vorbisenc.h>

namespace codecs {

namespace {

/// As good as the customary nominal rate of 128 kb/s in stereo.
constexpr int DefaultQuality = 400;

/// Files needn't differ in it, since nothing joins them; so the same sound gives the same bytes.
constexpr int StreamSerial = 1;

class Info
{
public:
    Info() { vorbis_info_init(&info); }
    ~Info() { vorbis_info_clear(&info); }
    Info(const Info &) = delete;
    Info &operator=(const Info &) = delete;

    vorbis_info info;
};

/// False where the library refuses.
bool setUp(vorbis_info &info, const VorbisSettings &settings)
{
    const auto [rate, channels] = settings.format;
    if (channels < 1 || channels > 2 || rate < 1)
        return false;
    const bool limited = settings.minBitRate > 0 || settings.maxBitRate > 0;
    const bool byQuality = settings.quality || (settings.nominalBitRate <= 0 && !limited);
    if (byQuality) {
        const auto quality = static_cast<float>(settings.quality.value_or(DefaultQuality)) / 1000.0F;
        return vorbis_encode_setup_vbr(&info, channels, rate, quality) == 0 &&
               vorbis_encode_setup_init(&info) == 0;
    }
    const auto bits = [](int bitRate) { return bitRate > 0 ? bitRate * 1000L : -1L; };
    if (vorbis_encode_setup_managed(&info, channels, rate, bits(settings.maxBitRate),
                                    bits(settings.nominalBitRate), bits(settings.minBitRate)) != 0)
        return false;
    if (limited) {
        // Setting the limits anew makes the library check how they lie to each other.
        ovectl_ratemanage2_arg limits;
        if (vorbis_encode_ctl(&info, OV_ECTL_RATEMANAGE2_GET, &limits) != 0 ||
            vorbis_encode_ctl(&info, OV_ECTL_RATEMANAGE2_SET, &limits) != 0)
            return false;
    } else if (vorbis_encode_ctl(&info, OV_ECTL_RATEMANAGE2_SET, nullptr) != 0) {
        // A nominal rate alone wants no rate management, which is on by itself and four times slower.
        return false;
    }
    return vorbis_encode_setup_init(&info) == 0;
}

/// The objects of libvorbis and libogg that one stream needs.
class Stream
{
public:
    explicit Stream(const VorbisSettings &settings)
    {
        if (!setUp(m_info.info, settings))
            refuse(QStringLiteral("The OGG encoder refuses these settings"));
        vorbis_comment_init(&comment);
        vorbis_analysis_init(&dsp, &m_info.info);
        vorbis_block_init(&dsp, &block);
        ogg_stream_init(&pages, StreamSerial);
    }

    ~Stream()
    {
        ogg_stream_clear(&pages);
        vorbis_block_clear(&block);
        vorbis_dsp_clear(&dsp);
        vorbis_comment_clear(&comment);
    }

    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;

private:
    Info m_info; // outlives the rest

public:
    vorbis_comment comment;
    vorbis_dsp_state dsp;
    vorbis_block block;
    ogg_stream_state pages;
};

class VorbisEncoder final : public BlockEncoder
{
public:
    VorbisEncoder(const VorbisSettings &settings, engines::ByteSink &sink)
        : BlockEncoder(settings.format.channels, 1024),
          m_channels(settings.format.channels),
          m_stream(settings),
          m_sink(sink)
    {
        ogg_packet identification;
        ogg_packet comments;
        ogg_packet books;
        vorbis_analysis_headerout(&m_stream.dsp, &m_stream.comment, &identification, &comments, &books);
        for (ogg_packet *packet : {&identification, &comments, &books})
            ogg_stream_packetin(&m_stream.pages, packet);
        // Sound begins on a page of its own.
        writePages(ogg_stream_flush);
    }

private:
    void encodeBlock(const qint16 *samples, int frames) override
    {
        float **const buffer = vorbis_analysis_buffer(&m_stream.dsp, frames);
        for (int c = 0; c < m_channels; ++c)
            for (int i = 0; i < frames; ++i)
                buffer[c][i] = static_cast<float>(samples[i * m_channels + c]) / 32768.0F;
        analyse(frames);
    }

    void complete() override
    {
        analyse(0);
        writePages(ogg_stream_flush);
    }

    /// No frames end the stream; the library puts the exact length into the last page.
    void analyse(int frames)
    {
        vorbis_analysis_wrote(&m_stream.dsp, frames);
        while (vorbis_analysis_blockout(&m_stream.dsp, &m_stream.block) == 1) {
            vorbis_analysis(&m_stream.block, nullptr);
            vorbis_bitrate_addblock(&m_stream.block);
            ogg_packet packet;
            while (vorbis_bitrate_flushpacket(&m_stream.dsp, &packet) == 1) {
                ogg_stream_packetin(&m_stream.pages, &packet);
                // The first ones get pages of their own: the place of the sound follows from the first page
                // that isn't the last, too, and a player that has but one page gets its length wrong.
                writePages(packet.packetno < 5 ? ogg_stream_flush : ogg_stream_pageout);
            }
        }
    }

    void writePages(int (*next)(ogg_stream_state *, ogg_page *))
    {
        ogg_page page;
        while (next(&m_stream.pages, &page) != 0) {
            m_sink.write(page.header, static_cast<std::size_t>(page.header_len));
            m_sink.write(page.body, static_cast<std::size_t>(page.body_len));
        }
    }

    const int m_channels;
    Stream m_stream;
    engines::ByteSink &m_sink;
};

} // namespace

bool vorbisFormatExists(const VorbisSettings &settings)
{
    Info info;
    return setUp(info.info, settings);
}

std::shared_ptr<const EncoderRecipe> vorbisRecipe(const VorbisSettings &settings)
{
    if (!vorbisFormatExists(settings))
        refuse(
            QStringLiteral("The OGG encoder can't write %1 Hz, %2 channels with the bit rates %3 (nominal), "
                           "%4 (minimum), %5 (maximum) kb/s")
                .arg(settings.format.rate)
                .arg(settings.format.channels)
                .arg(settings.nominalBitRate)
                .arg(settings.minBitRate)
                .arg(settings.maxBitRate));
    return makeRecipe(settings.format, [settings](engines::ByteSink &sink) {
        return std::make_unique<VorbisEncoder>(settings, sink);
    });
}

} // namespace codecs
