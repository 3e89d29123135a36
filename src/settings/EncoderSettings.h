#pragma once

#include <QString>

class MP3EncoderX;
class SettingsStore;
class SystemVersion;
class VorbisEncoderX;
class WMAEncoderX;

/// Puts the stored options into the three encoders. A statement that fails is passed over.
///
/// `windowsVersionName` is the name that the start-up keeps: empty during the first load, so that a system
/// whose name tells it needs the VBR clamp gets it from the first reload on.
void LoadEncoderSettings(const SettingsStore &store, const SystemVersion &system,
                         const QString &windowsVersionName, MP3EncoderX &mp3, WMAEncoderX &wma,
                         VorbisEncoderX &vorbis);
