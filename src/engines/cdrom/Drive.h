#pragma once

#include "engines/images/Disc.h"

#include <functional>
#include <memory>

namespace cdrom {

using namespace images; // what a disc is

struct DriveTexts
{
    QString address;
    QString maker;
    QString model;
};

enum class Medium {
    None,    ///< no disc, or an open tray
    Busy,    ///< the drive can't say yet, as while it spins up
    Present, ///< a disc, readable or not
};

struct MediumState
{
    Medium medium = Medium::None;
    quint64 stamp = 0; ///< another number stands for another disc
};

/// How a reader speaks with the one who reads. Both are called on the reading thread, from inside `read`.
struct ReadHooks
{
    /// A code of CDRipperX::ExtractionStatus, with its value.
    std::function<void(qint32 code, qint32 value)> report = [](qint32, qint32) {};
    /// True: give up now.
    std::function<bool()> stopped = [] { return false; };
};

enum class ReadResult {
    Read,
    Lost,    ///< sectors can't be read, whatever was tried
    Stopped, ///< as the hook asked
    NoDisc,  ///< the disc or its drive is gone
};

/// Reads the audio of one disc, span after span. One thread at a time.
class AudioReader
{
public:
    virtual ~AudioReader() = default;

    virtual const DiscToc &toc() const = 0;
    /// Turns to the sectors from `first` to `last`.
    virtual void begin(qint32 first, qint32 last) = 0;
    /// The next sectors of the span. `count` is how many there is room for, at least 1, and becomes how many
    /// were read; the caller stops at the last sector. After any other result than Read the next call is
    /// `begin`.
    virtual ReadResult read(qint16 *samples, qint32 &count) = 0;
};

enum class ReadFor { Extraction, Playing };

/// One drive: the machine's, or a disc image in its place. `medium`, `readToc` and `moveTray` are called by
/// one thread, the drive's watcher, and may take as long as the drive takes; the rest may be called from any.
class Drive
{
public:
    virtual ~Drive() = default;

    virtual DriveTexts texts() const = 0;
    virtual qint16 maxSpeed() const = 0;
    /// 0: as fast as it goes. Holds for readers opened from now on.
    virtual void setSpeed(qint16 factor) = 0;

    virtual MediumState medium() = 0;
    /// Failure 57 for a disc that can't be read.
    virtual DiscToc readToc() = 0;
    virtual void moveTray(bool open) = 0;

    /// Opens the disc. Failure 57 where that can't be done.
    virtual std::unique_ptr<AudioReader> openReader(ReadFor purpose, const ReadHooks &hooks) = 0;
};

} // namespace cdrom
