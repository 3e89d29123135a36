#pragma once

#include "files/ByteSink.h"

#include <cstdint>
#include <vector>

namespace codecs {

/// The tag frame at the head of an MP3 stream, which tells players its exact length and where to find each
/// hundredth of it. An encoder of one piece knows its own piece only; so the frame that the first piece's
/// encoder made is filled in again for the whole stream. Layout: the Xing header and LAME's extension of it.
class Mp3Tag
{
public:
    /// `frame` is the tag frame of the first piece. An empty one stands for a stream that has none: at the
    /// lowest bit rates the tag doesn't fit.
    explicit Mp3Tag(std::vector<std::uint8_t> frame) : m_frame(std::move(frame)) {}

    /// The next bytes of sound; they end with a whole frame.
    void add(const std::uint8_t *bytes, std::size_t count);

    /// The frame for all the sound so far. `padding` is the number of samples behind the end that the last
    /// encoder appended.
    std::vector<std::uint8_t> complete(int padding) const;

    std::size_t size() const { return m_frame.size(); }

private:
    void addPosition();

    std::vector<std::uint8_t> m_frame;
    std::uint32_t m_frames = 0;
    std::uint64_t m_bytes = 0;
    std::uint16_t m_soundCrc = 0;
    std::vector<std::uint64_t> m_positions; ///< of every `m_step`th frame, in bytes of sound
    std::uint32_t m_step = 1;
};

/// Bytes of the MP3 frame whose header begins here; 0 where none does.
std::size_t mp3FrameSize(const std::uint8_t *header);

} // namespace codecs
