#include "settings/EncoderSettings.h"

#include "base/Numbers.h"
#include "base/SkipFailures.h"
#include "components/MP3EncoderX.h"
#include "components/VorbisEncoderX.h"
#include "components/WMAEncoderX.h"
#include "settings/SettingsKeys.h"
#include "settings/WindowsVersion.h"

namespace {

void loadVbr(const SettingsStore &store, bool clamped, MP3EncoderX &mp3)
{
    const SkipFailures skip;
    skip([&] {
        const qint16 quality = toInt16(store.read(Ini::MP3_VBR_Quality));
        mp3.setVBRQuality(clamped && quality >= 2 ? qint16{1} : quality);
    });
    skip([&] { mp3.setVBRMaxBitRate(toInt32(store.read(Ini::MP3_VBR_MaxBitRate))); });
    skip([&] { mp3.setVBRMinBitRate(toInt32(store.read(Ini::MP3_VBR_MinBitRate))); });
    skip([&] { mp3.setVBRMode(3); });
}

} // namespace

void LoadEncoderSettings(const SettingsStore &store, const SystemVersion &system,
                         const QString &windowsVersionName, MP3EncoderX &mp3, WMAEncoderX &wma,
                         VorbisEncoderX &vorbis)
{
    const SkipFailures skip;
    skip([&] { mp3.setQualityMode(toInt32(store.read(Ini::MP3_QualityMode))); });
    skip([&] { mp3.setEncodingMethod(toInt32(store.read(Ini::MP3_EncodingMethod))); });
    // What the encoder reports decides, and not the text of the file.
    if (skip.condition([&] { return mp3.EncodingMethod() == 0; })) {
        skip([&] { mp3.setCBRBitRate(toInt32(store.read(Ini::MP3_CBR_BitRate))); });
    } else {
        const bool clamped = GetOSName(system) == QStringLiteral("Windows XP") ||
                             windowsVersionName.contains(QStringLiteral("Vista"));
        loadVbr(store, clamped, mp3);
    }
    skip([&] { mp3.setChannelMode(toInt32(store.read(Ini::MP3_ChannelMode))); });

    skip([&] { wma.setWMABitRate(toInt32(store.read(Ini::WMA_BitRate))); });
    skip([&] { wma.setWMASampleRateIndex(toInt32(store.read(Ini::WMA_SampleRate))); });
    skip([&] { wma.setWMAStereo(toYesNo(store.read(Ini::WMA_EncodeStereo))); });
    skip([&] { wma.setWMAEnableDRM(toYesNo(store.read(Ini::WMA_EnableDRM))); });

    skip([&] { vorbis.setNominalBitRate(toInt32(store.read(Ini::OGG_BitRate))); });
    skip([&] { vorbis.setMaxBitRate(toInt32(store.read(Ini::OGG_MaxBitRate))); });
    skip([&] { vorbis.setMinBitRate(toInt32(store.read(Ini::OGG_MinBitRate))); });
}
