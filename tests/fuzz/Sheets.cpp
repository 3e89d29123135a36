#include "base/RunTimeFailure.h"
#include "engines/images/CueImage.h"
#include "fuzz/Target.h"

// Sheets as text, and the discs that they make of the files beside them.

namespace fuzz {

namespace {

using namespace images;

QByteArrayList sheets()
{
    return {
        "FILE \"a.bin\" BINARY\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n  TRACK 02 AUDIO\n    PREGAP "
        "00:00:02\n"
        "    INDEX 01 00:00:10\n",
        "REM SESSION 01\r\nTITLE \"T\"\r\nFILE a.bin MOTOROLA\r\nTRACK 01 AUDIO\r\nFLAGS DCP\r\nINDEX 00 "
        "00:00:00\r\n"
        "INDEX 01 00:00:02\r\nPOSTGAP 00:00:03\r\nREM SESSION 02\r\nTRACK 02 MODE1/2352\r\nINDEX 01 "
        "00:00:20\r\n",
        "\xef\xbb\xbf"
        "FILE \"B.WAV\" WAVE\n TRACK 1 AUDIO\n INDEX 01 0:0:0\n INDEX 02 00:00:03\nFILE \"a.bin\" BINARY\n"
        " TRACK 02 AUDIO\n INDEX 01 00:00:00\n",
        "FILE \"a.bin\" BINARY\nTRACK 01 MODE2/2336\nINDEX 01 00:00:00\nTRACK 99 AUDIO\nINDEX 01 "
        "99999999:59:74\n",
        "TITLE \xe4\xf6\nFILE \"\" WAVE\nTRACK -1 AUDIO\nINDEX 01 -1:00:00\n",
    };
}

void parse(const QByteArray &input)
{
    try {
        const CueSheet sheet = CueSheet::parse(input);
        require(!sheet.tracks.empty() && sheet.tracks.size() <= MaxTracks, "a disc has 1 to 99 tracks");
        for (const CueTrack &track : sheet.tracks) {
            require(track.sectorSize > 0 && track.pregap >= 0 && track.postgap >= 0,
                    "lengths aren't negative");
            bool begins = false;
            for (const CueIndex &index : track.indices) {
                require(index.file < sheet.files.size() && index.sector >= 0, "an index lies in a file");
                begins |= index.number == 1;
            }
            require(begins, "each track has an INDEX 01");
        }
    } catch (const RunTimeFailure &) { // told
    }
}

void image(const QByteArray &input)
{
    static const QString sound = fileOf(QStringLiteral("a.bin"), QByteArray(60 * BytesPerSector, 's'));
    static const QString wave =
        fileOf(QStringLiteral("b.wav"),
               QByteArray("RIFF\x24\x40\0\0WAVEfmt \x10\0\0\0\1\0\2\0\x44\xac\0\0\x10\xb1\2\0"
                          "\4\0\x10\0data\0\x40\0\0",
                          44) +
                   QByteArray(0x4000, 'w'));
    try {
        CueImage disc(fileOf(QStringLiteral("disc.cue"), input));
        qint32 end = 0;
        for (const DiscTrack &track : disc.toc().tracks) {
            require(track.start >= end && track.length > 0, "tracks follow each other");
            end = track.start + track.length;
            qint16 samples[SamplesPerSector];
            disc.read(track.start, 1, samples);
            disc.read(end - 1, 1, samples);
        }
        require(end <= disc.toc().leadOut, "the lead-out comes last");
    } catch (const RunTimeFailure &) { // told
    }
}

} // namespace

const Target Sheets = {"Sheets", parse, sheets};
const Target Images = {"Images", image, sheets};

} // namespace fuzz
