#include "base/Formats.h"

#include "base/RunTimeFailure.h"

#include <algorithm>
#include <array>
#include <functional>
#include <iterator>

namespace {

template <typename Condition>
const Format *find(Condition condition)
{
    const auto formats = Formats::all();
    const auto found = std::find_if(formats.begin(), formats.end(), condition);
    return found == formats.end() ? nullptr : &*found;
}

const Format &known(const Format *format)
{
    if (!format)
        throw RunTimeFailure(RunTimeFailure::SubscriptOutOfRange);
    return *format;
}

} // namespace

std::span<const Format> Formats::all()
{
    static const std::array formats = {
        Format{.name = QStringLiteral("MP3"),
               .caption = QStringLiteral("MP3"),
               .jobName = QStringLiteral("MP3"),
               .extension = QStringLiteral(".mp3"),
               .rippedExtension = QStringLiteral(".mp3"),
               .encType = EncMP3,
               .convertCode = ConvertMP3,
               .usesEncoder = true,
               .savesTags = true},
        Format{.name = QStringLiteral("WAV"),
               .caption = QStringLiteral("WAV"),
               .jobName = QStringLiteral("WAV"),
               .extension = QStringLiteral(".wav"),
               .rippedExtension = QStringLiteral(".wav"),
               .encType = EncWAV,
               .convertCode = ConvertWAV,
               .usesEncoder = false,
               .savesTags = false},
        Format{.name = QStringLiteral("WMA"),
               .caption = QStringLiteral("WMA"),
               .jobName = QStringLiteral("WMA(Windows Media Audio)"),
               .extension = QStringLiteral(".wma"),
               .rippedExtension = QStringLiteral(".wma"),
               .encType = EncWMA,
               .convertCode = ConvertWMA,
               .usesEncoder = true,
               .savesTags = false},
        // Ripped to WAV files, which a second pass turns into the ".vqf" files beside them.
        Format{.name = QStringLiteral("VQF"),
               .caption = QStringLiteral("VQF"),
               .jobName = QStringLiteral("VQF"),
               .extension = QStringLiteral(".vqf"),
               .rippedExtension = QStringLiteral(".wav"),
               .encType = EncVQF,
               .convertCode = ConvertNone,
               .usesEncoder = false,
               .savesTags = false},
        Format{.name = QStringLiteral("OGG"),
               .caption = QStringLiteral("OGG Vorbis"),
               .jobName = QStringLiteral("OGG Vorbis"),
               .extension = QStringLiteral(".ogg"),
               .rippedExtension = QStringLiteral(".ogg"),
               .encType = EncOGG,
               .convertCode = ConvertOGG,
               .usesEncoder = true,
               .savesTags = true},
    };
    return formats;
}

QList<Format> Formats::withTags()
{
    QList<Format> formats;
    std::copy_if(all().begin(), all().end(), std::back_inserter(formats), std::mem_fn(&Format::savesTags));
    return formats;
}

const Format &Formats::ofJob(qint32 encType)
{
    return known(find([=](const Format &format) { return format.encType == encType; }));
}

const Format &Formats::ofConverter(qint16 code)
{
    return known(
        find([=](const Format &format) { return code != ConvertNone && format.convertCode == code; }));
}

const Format *Formats::ofFile(const QString &name)
{
    return find([&](const Format &format) { return name.endsWith(format.extension, Qt::CaseInsensitive); });
}
