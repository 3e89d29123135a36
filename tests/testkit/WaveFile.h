#pragma once

#include <QByteArray>
#include <QtEndian>
#include <optional>

/// A number as WAVE files and their like hold it, its lowest byte first.
template <typename Number>
QByteArray bytesOf(Number number)
{
    QByteArray bytes(sizeof number, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/// A chunk that may claim another size than it has.
inline QByteArray chunk(const QByteArray &name, const QByteArray &content, std::optional<quint32> size = {})
{
    return name + bytesOf(size.value_or(quint32(content.size()))) + content;
}

/// Tag 1 is PCM, 3 is floating point.
inline QByteArray wavFormat(int tag, int rate, int channels, int bits, const QByteArray &more = {})
{
    const int frameBytes = channels * bits / 8;
    return chunk("fmt ", bytesOf(quint16(tag)) + bytesOf(quint16(channels)) + bytesOf(quint32(rate)) +
                             bytesOf(quint32(rate * frameBytes)) + bytesOf(quint16(frameBytes)) +
                             bytesOf(quint16(bits)) + more);
}

inline QByteArray wavFile(int tag, int rate, int channels, int bits, const QByteArray &data)
{
    return chunk("RIFF", "WAVE" + wavFormat(tag, rate, channels, bits) + chunk("data", data));
}
