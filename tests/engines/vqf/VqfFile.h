#pragma once

#include "ModelDecoder.h"
#include "engines/vqf/VqfEncoder.h"
#include "testkit/Encoding.h"

#include <algorithm>
#include <gtest/gtest.h>

/// Left and right in turn.
using Pcm = std::vector<qint16>;

inline std::vector<std::uint8_t> encodeVqf(const Pcm &samples, int threads = 1, codecs::PcmFormat format = {},
                                           qsizetype pieceFrames = 10000)
{
    const QByteArray file = testkit::encode(*vqf::vqfRecipe(threads), format, samples, pieceFrames);
    return {file.begin(), file.end()};
}

constexpr std::size_t VqfHeaderBytes = 56;

/// The sound of a file by the system's decoder, in 16-bit units; sample 0 is that of the input.
inline ModelDecoder::Samples decodeVqf(const std::vector<std::uint8_t> &file)
{
    const std::size_t bits = (file.size() - VqfHeaderBytes) * 8;
    std::vector<std::vector<std::uint8_t>> packets;
    for (std::size_t bit = 0; bit + vqf::FrameBits <= bits; bit += vqf::FrameBits) {
        const std::size_t first = VqfHeaderBytes + bit / 8;
        std::vector<std::uint8_t> packet{static_cast<std::uint8_t>(bit % 8)};
        packet.insert(packet.end(), file.begin() + static_cast<std::ptrdiff_t>(first),
                      file.begin() + static_cast<std::ptrdiff_t>(std::min(first + 559, file.size())));
        packet.resize(560);
        packets.push_back(packet);
    }
    return decodeBySystem(packets);
}
