#include "engines/codecs/VorbisLibrary.h"

#include "engines/codecs/Recipe.h"

namespace codecs {

namespace {

/// As good as the customary nominal rate of 128 kb/s in stereo.
constexpr int DefaultQuality = 400;

/// Files needn't differ in it, since nothing joins them; so the same sound gives the same bytes.
constexpr int StreamSerial = 1;

} // namespace

bool VorbisInfo::setUp(const VorbisSettings &settings)
{
    const auto [rate, channels] = settings.format;
    if (channels < 1 || channels > 2 || rate < 1)
        return false;
    if (settings.isByQuality()) {
        const auto quality = static_cast<float>(settings.quality.value_or(DefaultQuality)) / 1000.0F;
        return vorbis_encode_setup_vbr(&m_info, channels, rate, quality) == 0 &&
               vorbis_encode_setup_init(&m_info) == 0;
    }
    const auto bits = [](int bitRate) { return bitRate > 0 ? bitRate * 1000L : -1L; };
    if (vorbis_encode_setup_managed(&m_info, channels, rate, bits(settings.maxBitRate),
                                    bits(settings.nominalBitRate), bits(settings.minBitRate)) != 0)
        return false;
    if (settings.isManaged()) {
        // Setting the limits anew makes the library check how they lie to each other.
        ovectl_ratemanage2_arg limits;
        if (vorbis_encode_ctl(&m_info, OV_ECTL_RATEMANAGE2_GET, &limits) != 0 ||
            vorbis_encode_ctl(&m_info, OV_ECTL_RATEMANAGE2_SET, &limits) != 0)
            return false;
    } else if (vorbis_encode_ctl(&m_info, OV_ECTL_RATEMANAGE2_SET, nullptr) != 0) {
        // A nominal rate alone wants no rate management, which is on by itself and four times slower.
        return false;
    }
    return vorbis_encode_setup_init(&m_info) == 0;
}

VorbisAnalysis::VorbisAnalysis(const VorbisSettings &settings)
{
    if (!m_info.setUp(settings))
        refuse(QStringLiteral("The OGG encoder refuses these settings"));
    vorbis_analysis_init(&dsp, m_info.get());
    vorbis_block_init(&dsp, &block);
}

VorbisAnalysis::~VorbisAnalysis()
{
    vorbis_block_clear(&block);
    vorbis_dsp_clear(&dsp);
}

void VorbisAnalysis::feed(const qint16 *samples, int frames)
{
    const int channels = m_info.get()->channels;
    float **const buffer = vorbis_analysis_buffer(&dsp, frames);
    for (int c = 0; c < channels; ++c)
        for (int i = 0; i < frames; ++i)
            buffer[c][i] = static_cast<float>(samples[i * channels + c]) / 32768.0F;
    vorbis_analysis_wrote(&dsp, frames);
}

void VorbisFile::ClearStream::operator()(ogg_stream_state *stream) const
{
    ogg_stream_clear(stream);
    delete stream;
}

VorbisFile::VorbisFile(VorbisAnalysis &analysis, files::ByteSink &sink)
    : m_sink(sink), m_pages(new ogg_stream_state)
{
    ogg_stream_init(m_pages.get(), StreamSerial);
    vorbis_comment comment;
    vorbis_comment_init(&comment);
    ogg_packet headers[3];
    vorbis_analysis_headerout(&analysis.dsp, &comment, &headers[0], &headers[1], &headers[2]);
    vorbis_comment_clear(&comment);
    for (ogg_packet &header : headers) {
        ogg_stream_packetin(m_pages.get(), &header);
        ++m_number;
    }
    // Sound begins on a page of its own.
    writePages(ogg_stream_flush);
}

void VorbisFile::add(ogg_packet packet)
{
    packet.packetno = m_number++;
    ogg_stream_packetin(m_pages.get(), &packet);
    // The first ones get pages of their own: the place of the sound follows from the first page that isn't
    // the last, too, and a player that has but one page gets its length wrong.
    writePages(packet.packetno < 5 ? ogg_stream_flush : ogg_stream_pageout);
}

void VorbisFile::finish()
{
    writePages(ogg_stream_flush);
}

void VorbisFile::writePages(int (*next)(ogg_stream_state *, ogg_page *))
{
    ogg_page page;
    while (next(m_pages.get(), &page) != 0) {
        m_sink.write(page.header, static_cast<std::size_t>(page.header_len));
        m_sink.write(page.body, static_cast<std::size_t>(page.body_len));
    }
}

} // namespace codecs
