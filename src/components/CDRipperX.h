#pragma once

#include <QObject>
#include <QString>

/// The CD engine: drives, table of contents, playing, and ripping a queue of tracks into files.
///
/// A track number counts from 1, a drive index from 0; positions and lengths are sectors, 75 to the second.
/// Everything but `DriveCount` and the drives' texts speaks of the drive of the last `SelectDrive`. Signals
/// arrive on the thread that owns the object, between events, in the order `ExtractionPrepared`, then for
/// each track `TrackStarted`, any number of `ExtractionStatus`, `TrackFinished`, and at the end
/// `ExtractionComplete`; their handlers may pump events, cancel, or go away.
/// The number behind each operation is its dispatch id, behind a signal its event slot.
class CDRipperX : public QObject
{
    Q_OBJECT

public:
    /// What `DriveStatus` gives; any other number stands for no particular state.
    enum Status { Playing = 0, Paused = 1, NoDisc = 2, DiscIdle = 4 };

    /// Codes of `ExtractionStatus`. Others are signs of life.
    enum StatusCode {
        JitterNotCorrected = 2, ///< value: how many places so far
        SpeedAdjusted = 3,
        ReadFailed = 4,
        RetryingRead = 5,
        RetryFailed = 6,
        Progress = 7, ///< value: current sector
        FileAborted = 8,
        BufferFailed = 9,
        CreateFailed = 10,
        WriteFailed = 11,
        CloseFailed = 12,
        DriveFailed = 13,
        Cancelled = 14,
    };

    using QObject::QObject;

    /// True: audio goes through the encoder of `SetEncoder`; false: a plain WAV file is written.
    virtual void setUseEncoder(bool use) = 0;             // 2
    virtual void CancelExtraction() = 0;                  // 7
    virtual void EjectTray() = 0;                         // 8
    virtual QString DriveAddress(qint16 drive) const = 0; // 11
    virtual QString DriveModel(qint16 drive) const = 0;   // 12
    virtual QString DriveMaker(qint16 drive) const = 0;   // 13
    virtual QString DiscId() const = 0;                   // 14
    virtual qint16 DriveCount() const = 0;                // 15
    virtual qint16 TrackCount() const = 0;                // 16
    virtual qint32 TrackLength(qint16 track) const = 0;   // 17
    virtual qint32 TrackStart(qint16 track) const = 0;    // 18
    virtual bool IsAudioTrack(qint16 track) const = 0;    // 20
    /// A second fact about the track: whether it may be copied freely.
    virtual bool TrackFlag(qint16 track) const = 0; // 21
    virtual void LoadTray() = 0;                    // 22
    virtual void PausePlay() = 0;                   // 24
    virtual void PlayTrack(qint16 track) = 0;       // 25
    /// False: not queued. `tag` comes back in `TrackStarted`.
    virtual bool AddTrack(qint16 track, const QString &file, qint32 tag) = 0; // 28
    virtual bool DiscReady() const = 0;                                       // 29
    virtual void ResumePlay() = 0;                                            // 30
    virtual void StopPlay() = 0;                                              // 31
    virtual qint32 DriveStatus() const = 0;                                   // 32
    virtual QString SectorsToTime(qint32 sectors) const = 0;                  // 33
    /// 0 is automatic, else the drive's speed factor.
    virtual void SetSpeed(qint16 speed) = 0;    // 34
    virtual qint16 MaxSpeed() const = 0;        // 36
    virtual qint32 LastError() const = 0;       // 40
    virtual void ClearTracks() = 0;             // 41
    virtual bool SelectDrive(qint16 drive) = 0; // 43
    /// Starts the queue and returns at once; false: not started. Raises a RunTimeFailure where the encoder
    /// refuses its settings.
    virtual bool StartExtraction() = 0; // 44
    /// The inner object of one of the three encoders.
    virtual void SetEncoder(QObject *encoder) = 0; // 45

Q_SIGNALS:
    void ExtractionPrepared();                                                                 // slot 9
    void ExtractionComplete();                                                                 // slot 10
    void ExtractionStatus(qint32 code, qint32 value);                                          // slot 11
    void TrackStarted(const QString &file, qint32 firstSector, qint32 lastSector, qint32 tag); // slot 12
    void TrackFinished();                                                                      // slot 13
};
