#include "engines/codecs/WavEncoder.h"

#include "base/RunTimeFailure.h"
#include "engines/codecs/BlockEncoder.h"
#include "engines/codecs/ImaAdpcm.h"
#include "engines/codecs/Recipe.h"

#include <array>
#include <limits>

namespace codecs {

namespace {

static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "Samples go to the file as they lie in memory");

/// What the header says of the stream.
struct WavFormat
{
    int tag;
    PcmFormat pcm;
    int bits;
    int blockBytes;
    int blockFrames;
};

/// The RIFF frame round the sound: a header whose sizes are put in at the end, and the check that they fit.
class WavFile
{
public:
    WavFile(const WavFormat &format, files::ByteSink &sink) : m_format(format), m_sink(sink)
    {
        writeHeader();
    }

    void write(const std::uint8_t *bytes, std::size_t count, qint64 frames)
    {
        if (m_bytes + count > std::numeric_limits<std::uint32_t>::max() - LongestHeader)
            throw RunTimeFailure(RunTimeFailure::Overflow,
                                 QStringLiteral("A WAV file can't hold more than 4 GB"));
        m_sink.write(bytes, count);
        m_bytes += count;
        m_frames += frames;
    }

    void complete()
    {
        if (m_bytes % 2 != 0) {
            const std::uint8_t filling = 0;
            m_sink.write(&filling, 1);
        }
        m_sink.seek(0);
        writeHeader();
    }

private:
    static constexpr std::size_t LongestHeader = 60;

    void number(std::size_t bytes, std::uint64_t value)
    {
        for (; bytes > 0; --bytes, value >>= 8)
            m_header[m_used++] = static_cast<std::uint8_t>(value);
    }

    void name(const char *text)
    {
        for (; *text; ++text)
            m_header[m_used++] = static_cast<std::uint8_t>(*text);
    }

    void writeHeader()
    {
        const bool pcm = m_format.tag == 1;
        const auto blockBytes = static_cast<std::uint64_t>(m_format.blockBytes);
        const auto blockFrames = static_cast<std::uint64_t>(m_format.blockFrames);
        const auto rate = static_cast<std::uint64_t>(m_format.pcm.rate);
        m_used = 0;
        name("RIFF");
        number(4, (pcm ? 44 : LongestHeader) - 8 + m_bytes + m_bytes % 2);
        name("WAVEfmt ");
        number(4, pcm ? 16 : 20);
        number(2, static_cast<std::uint64_t>(m_format.tag));
        number(2, static_cast<std::uint64_t>(m_format.pcm.channels));
        number(4, rate);
        number(4, rate * blockBytes / blockFrames);
        number(2, blockBytes);
        number(2, static_cast<std::uint64_t>(m_format.bits));
        if (!pcm) {
            number(2, 2);
            number(2, blockFrames);
            name("fact");
            number(4, 4);
            number(4, static_cast<std::uint64_t>(m_frames));
        }
        name("data");
        number(4, m_bytes);
        m_sink.write(m_header.data(), m_used);
    }

    const WavFormat m_format;
    files::ByteSink &m_sink;
    std::array<std::uint8_t, LongestHeader> m_header;
    std::size_t m_used = 0;
    std::uint64_t m_bytes = 0;
    qint64 m_frames = 0;
};

class Pcm16Encoder final : public Encoder
{
public:
    Pcm16Encoder(const PcmFormat &format, files::ByteSink &sink)
        : m_frameBytes(2 * format.channels), m_file({1, format, 16, m_frameBytes, 1}, sink)
    {}

    void encode(const qint16 *samples, qsizetype frames) override
    {
        m_file.write(reinterpret_cast<const std::uint8_t *>(samples),
                     static_cast<std::size_t>(frames * m_frameBytes), frames);
    }

    void finish() override { m_file.complete(); }

private:
    const int m_frameBytes;
    WavFile m_file;
};

class Pcm8Encoder final : public BlockEncoder
{
public:
    Pcm8Encoder(const PcmFormat &format, files::ByteSink &sink)
        : BlockEncoder(format.channels, BlockFrames),
          m_channels(format.channels),
          m_file({1, format, 8, format.channels, 1}, sink)
    {}

private:
    static constexpr int BlockFrames = 4096;

    void encodeBlock(const qint16 *samples, int frames) override
    {
        const auto count = static_cast<std::size_t>(frames * m_channels);
        for (std::size_t i = 0; i < count; ++i)
            m_bytes[i] = static_cast<std::uint8_t>(std::min((samples[i] + 32768 + 128) >> 8, 255));
        m_file.write(m_bytes.data(), count, frames);
    }

    void complete() override { m_file.complete(); }

    const int m_channels;
    WavFile m_file;
    std::array<std::uint8_t, std::size_t(2) * BlockFrames> m_bytes;
};

class AdpcmEncoder final : public BlockEncoder
{
public:
    AdpcmEncoder(const WavSettings &settings, const ImaAdpcm &coder, files::ByteSink &sink)
        : BlockEncoder(settings.format.channels, coder.blockFrames()),
          m_coder(coder),
          m_file({0x11, settings.format, settings.bits, coder.blockBytes(), coder.blockFrames()}, sink)
    {}

private:
    void encodeBlock(const qint16 *samples, int frames) override
    {
        m_block.clear();
        m_coder.encode(samples, frames, m_block);
        m_file.write(m_block.data(), m_block.size(), frames);
    }

    void complete() override { m_file.complete(); }

    ImaAdpcm m_coder;
    WavFile m_file;
    std::vector<std::uint8_t> m_block;
};

std::unique_ptr<Encoder> wavEncoder(const WavSettings &settings, files::ByteSink &sink)
{
    if (settings.bits == 16)
        return std::make_unique<Pcm16Encoder>(settings.format, sink);
    if (settings.bits == 8)
        return std::make_unique<Pcm8Encoder>(settings.format, sink);
    return std::make_unique<AdpcmEncoder>(
        settings, ImaAdpcm(settings.format.rate, settings.format.channels, settings.bits), sink);
}

} // namespace

bool wavFormatExists(const WavSettings &settings)
{
    const auto [rate, channels] = settings.format;
    if (channels < 1 || channels > 2 || rate < 1)
        return false;
    if (settings.bits == 16 || settings.bits == 8)
        return rate <= HighestWavRate;
    return settings.bits >= 2 && settings.bits <= 5 && rate <= HighestAdpcmRate;
}

std::shared_ptr<const EncoderRecipe> wavRecipe(const WavSettings &settings)
{
    if (!wavFormatExists(settings))
        refuse(QStringLiteral("There is no WAV format with %1 Hz, %2 channels and %3 bits")
                   .arg(settings.format.rate)
                   .arg(settings.format.channels)
                   .arg(settings.bits));
    return makeRecipe(settings.format,
                      [settings](files::ByteSink &sink) { return wavEncoder(settings, sink); });
}

} // namespace codecs
