#include "engines/codecs/Mp3Tag.h"

#include "engines/codecs/Mp3Encoder.h"

#include <algorithm>
#include <array>

namespace codecs {

namespace {

constexpr std::size_t MostPositions = 400;

// Places in the tag, counted from its name.
constexpr std::size_t FrameCountAt = 8;
constexpr std::size_t ByteCountAt = 12;
constexpr std::size_t SeekTableAt = 16;
constexpr std::size_t SeekPoints = 100;
constexpr std::size_t DelayAndPaddingAt = 141;
constexpr std::size_t MusicLengthAt = 148;
constexpr std::size_t MusicCrcAt = 152;
constexpr std::size_t TagCrcAt = 154;

/// CRC-16 of the polynomial 0xA001, reflected, as LAME's tag has it.
std::uint16_t crc16(std::uint16_t crc, const std::uint8_t *bytes, std::size_t count)
{
    static const auto table = [] {
        std::array<std::uint16_t, 256> values{};
        for (unsigned i = 0; i < values.size(); ++i) {
            unsigned value = i;
            for (int bit = 0; bit < 8; ++bit)
                value = (value >> 1) ^ ((value & 1) ? 0xA001 : 0);
            values[i] = static_cast<std::uint16_t>(value);
        }
        return values;
    }();
    for (std::size_t i = 0; i < count; ++i)
        crc = static_cast<std::uint16_t>((crc >> 8) ^ table[(crc ^ bytes[i]) & 0xff]);
    return crc;
}

void putBigEndian(std::vector<std::uint8_t> &bytes, std::size_t at, std::uint64_t value, int size)
{
    for (int i = size - 1; i >= 0; --i, value >>= 8)
        bytes[at + static_cast<std::size_t>(i)] = static_cast<std::uint8_t>(value);
}

bool isMpeg1(const std::uint8_t *header)
{
    return ((header[1] >> 3) & 3) == 3;
}

/// Where the tag's name stands in its frame: behind header and side information.
std::size_t tagPlace(const std::vector<std::uint8_t> &frame)
{
    const bool mono = (frame[3] >> 6) == 3;
    if (isMpeg1(frame.data()))
        return 4 + (mono ? 17 : 32);
    return 4 + (mono ? 9 : 17);
}

} // namespace

std::size_t mp3FrameSize(const std::uint8_t *header)
{
    static constexpr int rates[3] = {44100, 48000, 32000};
    const int version = (header[1] >> 3) & 3; // 3: MPEG 1, 2: MPEG 2, 0: MPEG 2.5
    const int rateIndex = (header[2] >> 2) & 3;
    const int bitRateIndex = header[2] >> 4;
    if (header[0] != 0xff || (header[1] & 0xe6) != 0xe2 || version == 1 || rateIndex == 3 ||
        bitRateIndex == 0 || bitRateIndex == 15)
        return 0;
    const int rate = rates[rateIndex] / (version == 3 ? 1 : version == 2 ? 2 : 4);
    // MPEG 2.5 has the rows of MPEG 2; those beyond its own list aren't written.
    const int bitRate = mp3BitRates(version == 3 ? 44100 : 22050)[static_cast<std::size_t>(bitRateIndex - 1)];
    const int padding = (header[2] >> 1) & 1;
    return static_cast<std::size_t>((isMpeg1(header) ? 144000 : 72000) * bitRate / rate + padding);
}

void Mp3Tag::add(const std::uint8_t *bytes, std::size_t count)
{
    if (m_frame.empty())
        return;
    m_soundCrc = crc16(m_soundCrc, bytes, count);
    for (std::size_t at = 0; at + 4 <= count;) {
        const std::size_t size = mp3FrameSize(bytes + at);
        if (size == 0)
            break;
        if (m_frames % m_step == 0)
            addPosition();
        ++m_frames;
        m_bytes += size;
        at += size;
    }
}

void Mp3Tag::addPosition()
{
    m_positions.push_back(m_bytes);
    if (m_positions.size() < MostPositions)
        return;
    // Every second one goes, so that memory is bounded however long the stream is.
    for (std::size_t i = 0; i < MostPositions / 2; ++i)
        m_positions[i] = m_positions[2 * i];
    m_positions.resize(MostPositions / 2);
    m_step *= 2;
}

std::vector<std::uint8_t> Mp3Tag::complete(int padding) const
{
    std::vector<std::uint8_t> frame = m_frame;
    if (frame.empty())
        return frame;
    const std::size_t tag = tagPlace(frame);
    const std::uint64_t total = frame.size() + m_bytes;
    putBigEndian(frame, tag + FrameCountAt, m_frames, 4);
    putBigEndian(frame, tag + ByteCountAt, total, 4);
    for (std::size_t point = 0; point < SeekPoints && m_frames > 0; ++point) {
        const std::size_t position = std::min(point * m_frames / SeekPoints / m_step, m_positions.size() - 1);
        frame[tag + SeekTableAt + point] =
            static_cast<std::uint8_t>(std::min<std::uint64_t>(255, m_positions[position] * 256 / total));
    }
    // 12 bits of delay, which the first piece knows, and 12 of padding.
    frame[tag + DelayAndPaddingAt + 1] =
        static_cast<std::uint8_t>((frame[tag + DelayAndPaddingAt + 1] & 0xf0) | ((padding >> 8) & 0x0f));
    frame[tag + DelayAndPaddingAt + 2] = static_cast<std::uint8_t>(padding);
    putBigEndian(frame, tag + MusicLengthAt, total, 4);
    putBigEndian(frame, tag + MusicCrcAt, m_soundCrc, 2);
    putBigEndian(frame, tag + TagCrcAt, crc16(0, frame.data(), tag + TagCrcAt), 2);
    return frame;
}

} // namespace codecs
