#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <functional>

/// The writer's MP3 settings. Bit rates are in kb/s, rates in hertz.
class NCTMP3Options
{
public:
    virtual ~NCTMP3Options() = default;

    virtual void setVBRMaxBitRate(qint32 rate) = 0;
    virtual void setVBRQuality(qint32 quality) = 0; ///< 0 to 9
    virtual void setConstantBitRate(bool constant) = 0;
    /// 1 stereo, 2 joint stereo, 3 forced joint stereo, 4 dual channel.
    virtual void setChannelMode(qint32 mode) = 0;
    virtual void setCBRQuality(qint32 quality) = 0; ///< 0 to 9
    virtual void setWriteVBRHeader(bool write) = 0;
    virtual void setStrictMinBitRate(bool strict) = 0;
    virtual void setSampleRate(qint32 rate) = 0;
    virtual void setChannelCount(qint32 channels) = 0; ///< 1 for mono, 2 otherwise
    virtual void setCBRBitRate(qint32 rate) = 0;
};

/// Decoding of one file or encoding of one file: MP3, WAV, WMA, OGG Vorbis. Audio passes as interleaved
/// signed 16-bit values of 1 or 2 channels. Every call is synchronous; a failed one is a RunTimeFailure, but
/// the two openings report by `Status` (negative: failed). The number behind each operation is its dispatch
/// id.
class NCTAudioFile : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void OpenRead(const QString &path) = 0; // 1
    virtual void CloseFile() = 0;                   // 2, also on an instance that isn't open
    /// Ends the writing of a file that is to leave nothing behind.
    virtual void DropFile() = 0;
    /// Creates the file in the output format last set; the path's extension agrees with it.
    virtual void OpenWrite(const QString &path) = 0;             // 3
    virtual void WriteSamples(const QList<qint16> &samples) = 0; // 4
    /// At most `count` values from the current place on; empty at the end of the data.
    virtual QList<qint16> ReadSamples(qint32 count) = 0; // 5
    virtual qint32 DurationSeconds() const = 0;          // 10
    /// Array values for a second of audio.
    virtual qint32 SamplesPerSecond() const = 0; // 13
    /// A line for people: the opened file, the output format or the WMA profile; empty where the format last
    /// set isn't possible.
    virtual QString FormatString() const = 0; // 14
    /// On a reader whose source has come to its end also negative where not all of it could be read.
    virtual qint32 Status() const = 0;                                                 // 19
    virtual qint32 ChannelCount() const = 0;                                           // 20
    virtual qint32 SampleRate() const = 0;                                             // 21, hertz
    virtual void SetWAVFormat(qint32 rate, qint32 channels, qint32 bitsPerSample) = 0; // 45
    /// The PCM that `WriteSamples` will deliver.
    virtual void SetInputFormat(qint32 rate, qint32 channels) = 0; // 46
    /// Fixed bit rate; variable bit rate within limits; quality mode, where `quality` is 0 to 1000.
    virtual void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate) = 0; // 56
    virtual void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum,
                              qint32 maximum) = 0; // 56
    virtual void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum,
                              qint16 quality) = 0; // 56
    /// A profile's number is 1 to 51.
    virtual void SelectWMAProfile(qint32 profile) = 0;  // 58
    virtual void setExtendedFormats(bool extended) = 0; // 70
    /// `goOn` is called often while a call waits for the file that is being read. Once it says false, the
    /// call waits no longer: `OpenRead` fails, `ReadSamples` gives nothing. This program's own.
    virtual void setWhileReading(std::function<bool()> goOn) = 0;
    virtual NCTMP3Options &MP3Options() = 0; // 73
    /// Whether the encoder can do it; minimum and maximum are 0 without variable bit rate.
    virtual bool CheckOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum,
                                qint32 maximum) const = 0; // 91
};
