#include "rip/JobKinds.h"

#include "base/RunTimeFailure.h"

#include <array>

const JobKind &jobKind(qint32 encType)
{
    static const std::array<JobKind, 5> kinds = {{
        {QStringLiteral("Ripping CD Track(s) to MP3 File(s) ..."), QStringLiteral("Track.mp3")},
        {QStringLiteral("Ripping CD Track(s) to WAV File(s) ..."), QStringLiteral("Track.wav")},
        {QStringLiteral("Ripping CD Track(s) to OGG Vorbis File(s) ..."), QStringLiteral("Track.ogg")},
        {QStringLiteral("Ripping CD Track(s) to WMA(Windows Media Audio) File(s) ..."),
         QStringLiteral("Track.wma")},
        {QStringLiteral("Ripping CD Track(s) to VQF File(s) ..."), QStringLiteral("Track.wav")},
    }};
    if (encType < 0 || encType >= static_cast<qint32>(kinds.size()))
        throw RunTimeFailure(RunTimeFailure::SubscriptOutOfRange);
    return kinds[static_cast<std::size_t>(encType)];
}
