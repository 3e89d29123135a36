#include "engines/tagfile/AudioKind.h"

#include "engines/common/OggPage.h"
#include "engines/tagfile/Id3v2Tag.h"
#include "engines/tagfile/MpegFrames.h"

#include <algorithm>

namespace engines {

namespace {

constexpr qint64 Window = 64 * 1024;
constexpr qint64 LongestPadding = 1024 * 1024;
constexpr qint64 Id3v1Size = 128;

/// How files of other formats begin. The kind is the last word: what begins like this is no MPEG audio.
struct Signature
{
    qsizetype place;
    QByteArrayView bytes;
    AudioKind kind;
};

constexpr Signature Signatures[] = {
    {8, "WAVEfmt ", AudioKind::OtherAudio}, // most of RIFF, RF64
    {8, "WAVE", AudioKind::OtherAudio},
    {0, "RIFF", AudioKind::NoAudio},
    {8, "AIFF", AudioKind::OtherAudio},
    {8, "AIFC", AudioKind::OtherAudio},
    {0, "fLaC", AudioKind::OtherAudio},
    {0, "\x30\x26\xb2\x75\x8e\x66\xcf\x11\xa6\xd9", AudioKind::OtherAudio}, // ASF: WMA
    {0, "TWIN", AudioKind::OtherAudio},                                     // VQF
    {4, "ftypM4A", AudioKind::OtherAudio},
    {4, "ftypM4B", AudioKind::OtherAudio},
    {4, "ftyp", AudioKind::NoAudio},
    {0, "MAC ", AudioKind::OtherAudio},
    {0, "MPCK", AudioKind::OtherAudio},
    {0, "MP+", AudioKind::OtherAudio},
    {0, "wvpk", AudioKind::OtherAudio},
    {0, "TTA1", AudioKind::OtherAudio},
    {0, "DSD ", AudioKind::OtherAudio},
    {0, "caff", AudioKind::OtherAudio},
    {0, ".snd", AudioKind::OtherAudio},
    {0, "#!AMR", AudioKind::OtherAudio},
    {0, "\xff\xf1", AudioKind::OtherAudio}, // AAC in ADTS
    {0, "\xff\xf9", AudioKind::OtherAudio},
    {0, "PK\x03\x04", AudioKind::NoAudio},
    {0, "\x1a\x45\xdf\xa3", AudioKind::NoAudio}, // Matroska
    {0, "%PDF", AudioKind::NoAudio},
};

AudioKind oggKind(QIODevice &file, qint64 place)
{
    bool vorbis = false;
    bool other = false;
    file.seek(place);
    while (const std::optional<OggPage> page = OggPage::read(file)) {
        if (!page->beginsStream())
            break;
        const auto holds = [&](QByteArrayView start) { return page->body().startsWith(start); };
        if (holds("\x01vorbis"))
            vorbis = true;
        else if (holds(QByteArrayView("\x80theora", 7)) || holds("BBCD"))
            return AudioKind::NoAudio;
        else if (!holds("fishead"))
            other = true;
    }
    if (vorbis && !other)
        return AudioKind::OggVorbis;
    return vorbis || other ? AudioKind::OtherAudio : AudioKind::NoAudio;
}

/// Where the zero bytes behind a tag end.
qint64 behindPadding(QIODevice &file, qint64 place)
{
    const qint64 end = place + LongestPadding;
    while (place < end) {
        const QByteArray bytes = bytesAt(file, place, Window);
        const auto content = std::find_if(bytes.begin(), bytes.end(), [](char c) { return c != '\0'; });
        place += content - bytes.begin();
        if (content != bytes.end() || bytes.isEmpty())
            break;
    }
    return place;
}

} // namespace

QByteArray bytesAt(QIODevice &file, qint64 place, qint64 count)
{
    return place <= file.size() && file.seek(place) ? file.read(count) : QByteArray();
}

qint64 sizeOfTagsInFront(QIODevice &file)
{
    qint64 size = 0;
    // One more is left to be found than a file may have, so that it is seen that there are too many.
    for (int tags = 0; tags <= Id3v2Tag::MostTags; ++tags)
        size += Id3v2Tag::sizeOf(bytesAt(file, size, 10));
    return size;
}

AudioKind audioKind(QIODevice &file)
{
    const qint64 tags = sizeOfTagsInFront(file);
    const qint64 start = tags > 0 ? behindPadding(file, tags) : 0;
    const QByteArray bytes = bytesAt(file, start, Window);
    for (const Signature &signature : Signatures) {
        if (bytes.size() > signature.place &&
            QByteArrayView(bytes).sliced(signature.place).startsWith(signature.bytes))
            return signature.kind;
    }
    if (bytes.startsWith("OggS"))
        return oggKind(file, start);

    qint64 end = file.size();
    if (bytesAt(file, std::max<qint64>(start, end - Id3v1Size), 3) == "TAG")
        end -= Id3v1Size;
    const bool isWhole = start + bytes.size() >= end;
    const int layer = mpegLayer(isWhole ? bytes.left(end - start) : bytes, isWhole);
    return layer == 0 ? AudioKind::NoAudio : layer == 3 ? AudioKind::Mp3 : AudioKind::OtherAudio;
}

} // namespace engines
