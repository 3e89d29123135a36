#pragma once

#include "SampleFiles.h"

/// Ogg files put together page by page; the sound in them is no sound.
namespace samples {

inline QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

/// A page with whole packets, none of them long. The checksum is left wrong.
inline QByteArray oggPage(int flags, quint32 serial, quint32 sequence, const QByteArrayList &packets)
{
    QByteArray lacing;
    for (const QByteArray &packet : packets)
        lacing += QByteArray(packet.size() / 255, '\xff') + static_cast<char>(packet.size() % 255);
    return QByteArray("OggS\0", 5) + static_cast<char>(flags) + QByteArray(8, '\1') + littleEndian(serial) +
           littleEndian(sequence) + "bad!" + static_cast<char>(lacing.size()) + lacing + packets.join();
}

inline QByteArray comments(const QByteArrayList &fields)
{
    QByteArray packet =
        "\x03vorbis" + littleEndian(6) + "vendor" + littleEndian(static_cast<quint32>(fields.size()));
    for (const QByteArray &field : fields)
        packet += littleEndian(static_cast<quint32>(field.size())) + field;
    return packet + '\1';
}

inline const QByteArray VorbisSetup = "\x05vorbis" + QByteArray(600, 's');

/// The pages of a Vorbis stream: three headers, then `audio` pages that hold their number.
inline QByteArrayList vorbisPages(quint32 serial, const QByteArray &commentPacket, int audio = 3)
{
    QByteArrayList pages{oggPage(2, serial, 0, {"\x01vorbis" + QByteArray(23, 'i')}),
                         oggPage(0, serial, 1, {commentPacket, VorbisSetup})};
    for (int i = 0; i < audio; ++i)
        pages.append(oggPage(0, serial, static_cast<quint32>(2 + i),
                             {"audio " + QByteArray::number(serial) + ' ' + QByteArray::number(i)}));
    return pages;
}

} // namespace samples
