#include "engines/tagfile/MpegFrames.h"

#include <QtEndian>

namespace engines {

namespace {

/// How far the first frame may lie behind the start: a stream cut out of a longer one begins inside a frame.
constexpr qsizetype LongestJunk = 4096;
constexpr qsizetype LongestFreeFrame = 8192;
/// What stays the same in all frame headers of a stream: sync, version, layer, sample rate.
constexpr quint32 SameInAll = 0xfffe0c00;

struct FrameHeader
{
    quint32 bits = 0;
    int layer = 0;        ///< 0: no header
    qsizetype length = 0; ///< 0: free format, told by where the next frame begins
    qsizetype padding = 0;
};

FrameHeader headerAt(const QByteArray &bytes, qsizetype place)
{
    constexpr int Rates[2][3][14] = {{{32, 64, 96, 128, 160, 192, 224, 256, 288, 320, 352, 384, 416, 448},
                                      {32, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320, 384},
                                      {32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 224, 256, 320}},
                                     {{32, 48, 56, 64, 80, 96, 112, 128, 144, 160, 176, 192, 224, 256},
                                      {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160},
                                      {8, 16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 144, 160}}};
    constexpr int SampleRates[] = {44100, 48000, 32000};

    if (place < 0 || place + 4 > bytes.size())
        return {};
    FrameHeader header;
    header.bits = qFromBigEndian<quint32>(bytes.constData() + place);
    const int version = (header.bits >> 19) & 3; // 0: MPEG 2.5, 2: MPEG 2, 3: MPEG 1
    const int layer = 4 - ((header.bits >> 17) & 3);
    const int rate = (header.bits >> 12) & 15;
    const int sampleRate = (header.bits >> 10) & 3;
    const int emphasis = header.bits & 3;
    if (header.bits >> 21 != 0x7ff || version == 1 || layer == 4 || rate == 15 || sampleRate == 3 ||
        emphasis == 2)
        return {};
    header.layer = layer;
    const int slot = layer == 1 ? 4 : 1;
    header.padding = (header.bits & 0x200) ? slot : 0;
    if (rate > 0) {
        const int bits = Rates[version == 3 ? 0 : 1][layer - 1][rate - 1] * 1000;
        const int hertz = SampleRates[sampleRate] >> (version == 3 ? 0 : version == 2 ? 1 : 2);
        const int samples = layer == 1 ? 384 : layer == 3 && version != 3 ? 576 : 1152;
        header.length = samples / 8 / slot * bits / hertz * slot + header.padding;
    }
    return header;
}

bool belongTogether(const FrameHeader &one, const FrameHeader &other)
{
    return other.layer > 0 && (one.bits & SameInAll) == (other.bits & SameInAll) &&
           (one.length == 0) == (other.length == 0);
}

/// Bytes of a frame of free format without its padding: the next such frame is found by its header.
qsizetype freeLength(const QByteArray &bytes, qsizetype place, const FrameHeader &first)
{
    for (qsizetype next = place + 24; next < place + LongestFreeFrame; ++next) {
        if (belongTogether(first, headerAt(bytes, next)))
            return next - place - first.padding;
    }
    return 0;
}

/// Whether frame follows frame from the place on, `count` of them at least, or all up to the end.
bool framesAt(const QByteArray &bytes, qsizetype place, int count, bool isWhole)
{
    const FrameHeader first = headerAt(bytes, place);
    if (first.layer == 0)
        return false;
    const qsizetype free = first.length == 0 ? freeLength(bytes, place, first) : 0;
    if (first.length == 0 && free == 0)
        return false;
    FrameHeader header = first;
    for (int i = 0; i < count; ++i) {
        if (!belongTogether(first, header))
            return false;
        place += header.length > 0 ? header.length : free + header.padding;
        if (isWhole && place == bytes.size())
            return true;
        header = headerAt(bytes, place);
    }
    return true;
}

} // namespace

int mpegLayer(const QByteArray &bytes, bool isWhole)
{
    for (qsizetype place = 0; place < std::min(LongestJunk, bytes.size()); ++place) {
        place = bytes.indexOf('\xff', place);
        if (place < 0 || place >= LongestJunk)
            return 0;
        if (framesAt(bytes, place, place == 0 ? 2 : 3, isWhole))
            return headerAt(bytes, place).layer;
    }
    return 0;
}

} // namespace engines
