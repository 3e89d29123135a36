#include "base/RunTimeFailure.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/Mp3Tags.h"
#include "engines/tagfile/OggSamples.h"
#include "engines/tagfile/OggTags.h"
#include "fuzz/Target.h"
#include "testkit/MemorySink.h"

#include <QBuffer>

// Tags in MP3 and Ogg Vorbis files: read, changed, and read again.

namespace fuzz {

namespace {

using namespace engines;

struct Kind
{
    TagFields (*read)(QIODevice &file);
    TagEdit (*edit)(QIODevice &file, const TagFields &fields);
};

/// What was written reads back, and a file that holds it already isn't written again.
void readAndChange(const Kind &kind, const QByteArray &input)
{
    QByteArray bytes = input;
    QBuffer file(&bytes);
    file.open(QIODevice::ReadOnly);
    audioKind(file);
    try {
        kind.read(file);
        const TagFields wanted =
            TagFields{
                QStringLiteral("Title"), QStringLiteral("Ärtist"), {}, QStringLiteral("Comment"), 1999, 17, 3}
                .writable();
        const TagEdit edit = kind.edit(file, wanted);
        if (!edit)
            return;
        testkit::MemorySink sink;
        edit(sink);
        QByteArray written = sink.content();
        QBuffer again(&written);
        again.open(QIODevice::ReadOnly);
        require(kind.read(again) == wanted, "tags read back as they were written");
    } catch (const RunTimeFailure &) { // told
    }
}

void mp3(const QByteArray &input)
{
    readAndChange({readMp3Tags, editMp3Tags}, input);
}

void ogg(const QByteArray &input)
{
    readAndChange({readOggTags, editOggTags}, input);
}

QByteArrayList mp3Seeds()
{
    using namespace samples;
    const QByteArray sound = mp3Frames(3);
    const QByteArray picture = latin1("image/png") + QByteArray("\0\3\0\xff\0\xfb\xff\xe0", 8);
    const QByteArray chapter =
        QByteArray("c1\0", 3) + QByteArray(16, '\1') + frame24("TIT2", latin1("chapter"));
    return {
        id3v2(3, frame23("TIT2", latin1("Title")) + frame23("APIC", picture) + QByteArray(30, '\0')) + sound +
            id3v1("Title"),
        id3v2(4, frame24("TPE1", QByteArray("\3a\0b", 4)) + frame24("CHAP", chapter) +
                     frame24("TDRC", latin1("2004-05-06")) + frame24("APIC", picture, 0x0002)) +
            sound,
        id3v2(4, frame24("TCON", latin1("17")) + frame24("APIC", picture), 0x80) + sound,
        id3v2(2, frame22("TT2", latin1("T")) + frame22("COM", latin1("eng") + QByteArray("\0c", 2))) + sound,
        id3v2(3, frame23("COMM", latin1("eng") + QByteArray("\0text", 5)), 0x40) + id3v2(3, {}) +
            id3v2(3, {}) + sound,
        id3v2(4, frame24("TIT2", QByteArray("\1\xff\xfe\x41\0\0\xd8", 7), 0x0009)) + sound,
    };
}

QByteArrayList oggSeeds()
{
    using namespace samples;
    return {
        vorbisPages(7, comments({"TITLE=a", "artist=b", "DATE=2004-05-06", "=", "x"})).join(),
        vorbisPages(1, comments({}), 0).join(),
        vorbisPages(1, "\x03vorbis\xff\xff\xff\xff").join(),
        vorbisPages(1, comments({"METADATA_BLOCK_PICTURE=" + QByteArray(5000, 'p')})).join(),
    };
}

} // namespace

const Target Mp3Tags = {"Mp3Tags", mp3, mp3Seeds};
const Target OggTags = {"OggTags", ogg, oggSeeds, withPageChecksums};

} // namespace fuzz
