#pragma once

#include "testkit/WaveFile.h"

#include <QList>
#include <cstring>
#include <functional>
#include <ogg/ogg.h>

/// Files of bytes, as encoders wouldn't write them.

/// An Ogg Vorbis file of the packets of another one, each of them (from 0) changed by `change`.
inline QByteArray remadeOgg(
    const QByteArray &ogg, int pageBytes = 4096, int serial = 1,
    const std::function<void(QByteArray &packet, qint64 number)> &change = [](auto &, auto) {})
{
    ogg_sync_state input;
    ogg_stream_state from;
    ogg_stream_state to;
    ogg_sync_init(&input);
    ogg_stream_init(&from, 1);
    ogg_stream_init(&to, serial);
    std::memcpy(ogg_sync_buffer(&input, ogg.size()), ogg.constData(), std::size_t(ogg.size()));
    ogg_sync_wrote(&input, ogg.size());
    QByteArray result;
    ogg_page page;
    const auto flush = [&] {
        while (ogg_stream_flush_fill(&to, &page, pageBytes) != 0)
            result += QByteArray(reinterpret_cast<char *>(page.header), page.header_len) +
                      QByteArray(reinterpret_cast<char *>(page.body), page.body_len);
    };
    while (ogg_sync_pageout(&input, &page) == 1) {
        ogg_stream_pagein(&from, &page);
        for (ogg_packet packet; ogg_stream_packetout(&from, &packet) == 1;) {
            QByteArray bytes(reinterpret_cast<const char *>(packet.packet), packet.bytes);
            change(bytes, packet.packetno);
            packet.packet = reinterpret_cast<unsigned char *>(bytes.data());
            packet.bytes = bytes.size();
            ogg_stream_packetin(&to, &packet);
            if (packet.packetno < 3)
                flush();
        }
    }
    flush();
    ogg_stream_clear(&to);
    ogg_stream_clear(&from);
    ogg_sync_clear(&input);
    return result;
}

/// The packet with comments of an Ogg Vorbis file.
inline QByteArray vorbisComments(const QList<QByteArray> &comments)
{
    QByteArray bytes = "\3vorbis" + bytesOf(quint32(0)) + bytesOf(quint32(comments.size()));
    for (const QByteArray &comment : comments)
        bytes += bytesOf(quint32(comment.size())) + comment;
    return bytes + '\1';
}
