#include "engines/codecs/Recipe.h"

#include "base/RunTimeFailure.h"
#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/PcmConverter.h"
#include "engines/codecs/SegmentedEncoder.h"
#include "engines/codecs/UnsplitStream.h"

#include <algorithm>
#include <thread>

namespace codecs {

namespace {

class ConvertingEncoder final : public BlockEncoder
{
public:
    ConvertingEncoder(const PcmFormat &input, const PcmFormat &wanted, std::unique_ptr<Encoder> encoder)
        : BlockEncoder(input.channels, 4096),
          m_channels(wanted.channels),
          m_converter(input, wanted),
          m_encoder(std::move(encoder))
    {}

    void whileWaiting(std::function<void()> call) override { m_encoder->whileWaiting(std::move(call)); }

private:
    void encodeBlock(const qint16 *samples, int frames) override
    {
        pass(m_converter.convert(samples, frames));
    }

    void complete() override
    {
        pass(m_converter.finish());
        m_encoder->finish();
    }

    void pass(std::span<const qint16> samples)
    {
        m_encoder->encode(samples.data(), static_cast<qsizetype>(samples.size()) / m_channels);
    }

    const int m_channels;
    PcmConverter m_converter;
    std::unique_ptr<Encoder> m_encoder;
};

class Recipe final : public EncoderRecipe
{
public:
    Recipe(const PcmFormat &wanted, MakeThreadedEncoder make) : m_wanted(wanted), m_make(std::move(make)) {}

    std::unique_ptr<Encoder> create(const PcmFormat &input, files::ByteSink &output,
                                    int threads) const override
    {
        const int cores = static_cast<int>(std::thread::hardware_concurrency());
        auto encoder = m_make(output, threads > 0 ? threads : std::max(cores, 1));
        if (input == m_wanted)
            return encoder;
        return std::make_unique<ConvertingEncoder>(input, m_wanted, std::move(encoder));
    }

private:
    const PcmFormat m_wanted;
    const MakeThreadedEncoder m_make;
};

} // namespace

std::shared_ptr<const EncoderRecipe> makeRecipe(const PcmFormat &wanted, MakeEncoder make)
{
    return makeRecipe(wanted,
                      [make = std::move(make)](files::ByteSink &output, int) { return make(output); });
}

std::shared_ptr<const EncoderRecipe> makeRecipe(const PcmFormat &wanted, MakeThreadedEncoder make)
{
    return std::make_shared<Recipe>(wanted, std::move(make));
}

std::shared_ptr<const EncoderRecipe> makeRecipe(const PcmFormat &wanted,
                                                std::shared_ptr<const PieceCodec> codec)
{
    const int channels = wanted.channels;
    return makeRecipe(wanted, [codec = std::move(codec), channels](files::ByteSink &output, int threads) {
        return std::make_unique<SegmentedEncoder>(codec, channels, output, threads);
    });
}

std::shared_ptr<const EncoderRecipe> makeBackgroundRecipe(const PcmFormat &wanted, MakeThreadedEncoder make)
{
    return makeRecipe(wanted, [wanted, make = std::move(make)](files::ByteSink &output, int threads) {
        auto stream = std::make_shared<UnsplitStream>(
            wanted, [make, threads](files::ByteSink &sink) { return make(sink, threads); });
        return std::make_unique<SegmentedEncoder>(std::move(stream), wanted.channels, output, 1);
    });
}

void refuse(const QString &description)
{
    throw RunTimeFailure(RunTimeFailure::InvalidCall, description);
}

} // namespace codecs
