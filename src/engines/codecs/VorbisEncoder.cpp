#include "engines/codecs/VorbisEncoder.h"

#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/Recipe.h"
#include "engines/codecs/VorbisLibrary.h"
#include "engines/codecs/VorbisPieces.h"

namespace codecs {

namespace {

/// Encodes a stream in one go.
class ManagedVorbisEncoder final : public BlockEncoder
{
public:
    ManagedVorbisEncoder(const VorbisSettings &settings, files::ByteSink &sink)
        : BlockEncoder(settings.format.channels, 1024), m_analysis(settings), m_file(m_analysis, sink)
    {}

private:
    void encodeBlock(const qint16 *samples, int frames) override
    {
        m_analysis.feed(samples, frames);
        analyse();
    }

    void complete() override
    {
        m_analysis.end();
        analyse();
        m_file.finish();
    }

    void analyse()
    {
        while (vorbis_analysis_blockout(&m_analysis.dsp, &m_analysis.block) == 1) {
            vorbis_analysis(&m_analysis.block, nullptr);
            vorbis_bitrate_addblock(&m_analysis.block);
            ogg_packet packet;
            while (vorbis_bitrate_flushpacket(&m_analysis.dsp, &packet) == 1)
                m_file.add(packet);
        }
    }

    VorbisAnalysis m_analysis;
    VorbisFile m_file;
};

} // namespace

bool vorbisFormatExists(const VorbisSettings &settings)
{
    return VorbisInfo().setUp(settings);
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
    if (!settings.isManaged())
        return makeRecipe(settings.format, std::make_shared<VorbisPieces>(settings));
    return makeBackgroundRecipe(settings.format, [settings](files::ByteSink &sink, int) {
        return std::make_unique<ManagedVorbisEncoder>(settings, sink);
    });
}

} // namespace codecs
