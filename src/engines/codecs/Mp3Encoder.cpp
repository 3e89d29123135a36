#include "engines/codecs/Mp3Encoder.h"

#include "base/RunTimeFailure.h"
#include "engines/codecs/Mp3Tag.h"
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
Lame openLame(const Mp3Settings &settings, int outputRate, bool withTag = false)
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
    lame_set_bWriteVbrTag(l, withTag && (!settings.variable || settings.variableHeader));
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

/// The bytes of one piece: whole frames that need nothing of the frames before them.
struct Mp3Piece final : EncodedPiece
{
    std::vector<std::uint8_t> bytes;
    std::vector<std::uint8_t> tagFrame; ///< of the first piece; the same bytes stand empty before its sound
    int padding = 0;                    ///< of the last piece
};

/// Encodes a piece, a frame's samples at each call, so that each call codes one frame at most.
class Mp3PieceEncoding
{
public:
    Mp3PieceEncoding(const Mp3Settings &settings, const Piece &piece, Mp3Piece &encoded)
        : m_piece(piece), m_encoded(encoded), m_mono(settings.channelMode == Mp3Settings::Mono)
    {
        m_lame = openLame(settings, settings.rate, piece.number == 0);
        m_frameSize = lame_get_framesize(m_lame.get());
    }

    /// False where `cancelled` became true.
    bool run(const std::atomic<bool> &cancelled)
    {
        const qint64 warmUpFrames = m_piece.warmUp / m_frameSize;
        const qint64 ownFrames = m_piece.frames / m_frameSize;
        const qint64 channels = m_mono ? 1 : 2;
        const qint64 total = static_cast<qint64>(m_piece.samples.size()) / channels;
        bool dropping = m_piece.number > 0;
        for (qint64 at = 0; at < total; at += m_frameSize) {
            if (cancelled)
                return false;
            feed(m_piece.samples.data() + at * channels, static_cast<int>(std::min(m_frameSize, total - at)));
            const qint64 coded = lame_get_frameNum(m_lame.get());
            // Both sides of a joint empty the bit reservoir: what follows begins with a frame of its own.
            if (dropping && coded >= warmUpFrames) {
                keep(lame_encode_flush_nogap(m_lame.get(), m_bytes.data(), room()));
                m_encoded.bytes.clear();
                dropping = false;
            }
            if (!m_piece.last && coded >= warmUpFrames + ownFrames) {
                keep(lame_encode_flush_nogap(m_lame.get(), m_bytes.data(), room()));
                break;
            }
        }
        complete();
        return true;
    }

private:
    int room() const { return static_cast<int>(m_bytes.size()); }

    void feed(const qint16 *samples, int frames)
    {
        // The call for interleaved samples takes two channels whatever was set.
        keep(m_mono ? lame_encode_buffer(m_lame.get(), samples, samples, frames, m_bytes.data(), room())
                    : lame_encode_buffer_interleaved(m_lame.get(), const_cast<qint16 *>(samples), frames,
                                                     m_bytes.data(), room()));
    }

    void complete()
    {
        if (m_piece.last) {
            keep(lame_encode_flush(m_lame.get(), m_bytes.data(), room()));
            m_encoded.padding = lame_get_encoder_padding(m_lame.get());
        }
        if (m_piece.number > 0)
            return;
        // The first frame was left empty for the tag. Where bit rate and tag don't fit together there's none.
        const std::size_t count = lame_get_lametag_frame(m_lame.get(), m_bytes.data(), m_bytes.size());
        if (count > 0 && count <= m_bytes.size())
            m_encoded.tagFrame.assign(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(count));
    }

    void keep(int count)
    {
        if (count < 0)
            refuse(QStringLiteral("The MP3 encoder failed (%1)").arg(count));
        m_encoded.bytes.insert(m_encoded.bytes.end(), m_bytes.begin(), m_bytes.begin() + count);
    }

    const Piece &m_piece;
    Mp3Piece &m_encoded;
    const bool m_mono;
    Lame m_lame;
    qint64 m_frameSize = 0;
    /// As much as LAME may ask for one call, and for all that waits at the end.
    std::array<unsigned char, 7200 + 1152 * 5 / 4> m_bytes;
};

class Mp3Joiner final : public PieceJoiner
{
public:
    explicit Mp3Joiner(files::ByteSink &sink) : m_sink(sink), m_tag({}) {}

    void add(EncodedPiece &piece) override
    {
        auto &encoded = static_cast<Mp3Piece &>(piece);
        const std::size_t tagSize = encoded.tagFrame.size();
        if (tagSize > 0)
            m_tag = Mp3Tag(std::move(encoded.tagFrame));
        m_tag.add(encoded.bytes.data() + tagSize, encoded.bytes.size() - tagSize);
        m_padding = encoded.padding;
        if (!encoded.bytes.empty())
            m_sink.write(encoded.bytes.data(), encoded.bytes.size());
    }

    void finish() override
    {
        const std::vector<std::uint8_t> frame = m_tag.complete(m_padding);
        if (frame.empty())
            return;
        m_sink.seek(0);
        m_sink.write(frame.data(), frame.size());
    }

private:
    files::ByteSink &m_sink;
    Mp3Tag m_tag;
    int m_padding = 0;
};

class Mp3Pieces final : public PieceCodec
{
public:
    Mp3Pieces(const Mp3Settings &settings, int seconds) : m_settings(settings), m_seconds(seconds) {}

    PiecePlan plan() const override
    {
        const qint64 frame = m_settings.rate >= 32000 ? 1152 : 576;
        return {.warmUp = 6 * frame,
                .lookAhead = (frame == 1152 ? 4 : 6) * frame,
                .length = m_seconds * m_settings.rate / frame * frame};
    }

    std::unique_ptr<EncodedPiece> encode(Piece piece, const std::atomic<bool> &cancelled) const override
    {
        auto encoded = std::make_unique<Mp3Piece>();
        if (!Mp3PieceEncoding(m_settings, piece, *encoded).run(cancelled))
            return nullptr;
        return encoded;
    }

    std::unique_ptr<PieceJoiner> joiner(files::ByteSink &output) const override
    {
        return std::make_unique<Mp3Joiner>(output);
    }

private:
    const Mp3Settings m_settings;
    const qint64 m_seconds;
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
    return makeRecipe({settings.rate, settings.channelMode == Mp3Settings::Mono ? 1 : 2},
                      mp3Pieces(settings));
}

std::shared_ptr<const PieceCodec> mp3Pieces(const Mp3Settings &settings, int pieceSeconds)
{
    return std::make_shared<Mp3Pieces>(settings, pieceSeconds);
}

} // namespace codecs
