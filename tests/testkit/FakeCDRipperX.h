#pragma once

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "components/CDRipperX.h"
#include "testkit/CallLog.h"

#include <QList>
#include <QMetaMethod>
#include <QPointer>

/// A CD engine whose drives, disc and answers the test sets. Calls that change something go into the log; the
/// test sends the events by emitting the signals.
class FakeCDRipperX : public CDRipperX
{
public:
    struct Drive
    {
        QString address, maker, model;
    };
    struct Track
    {
        qint32 start = 0;
        qint32 length = 0;
        bool audio = true;
    };

    explicit FakeCDRipperX(CallLog &log) : m_log(log) {}

    QList<Drive> drives;
    QList<Track> tracks;
    QString discId = QStringLiteral("0a0b0c03");
    qint32 status = DiscIdle;
    bool discReady = true;
    bool selectable = true;
    qint16 maxSpeed = 8;
    int failAtTrackStart = 0; ///< TrackStart of this track fails with 57
    bool starts = true;
    int startFailure = 0;     ///< StartExtraction fails with this number
    QList<int> refusedTracks; ///< AddTrack says no

    void setUseEncoder(bool use) override { m_log.add(QStringLiteral("UseEncoder ") + yesNoText(use)); }
    void CancelExtraction() override { m_log.add(QStringLiteral("CancelExtraction")); }
    void EjectTray() override { m_log.add(QStringLiteral("EjectTray")); }
    QString DriveAddress(qint16 drive) const override { return drives[drive].address; }
    QString DriveModel(qint16 drive) const override { return drives[drive].model; }
    QString DriveMaker(qint16 drive) const override { return drives[drive].maker; }
    QString DiscId() const override { return discId; }
    qint16 DriveCount() const override { return static_cast<qint16>(drives.size()); }
    qint16 TrackCount() const override { return static_cast<qint16>(tracks.size()); }
    qint32 TrackLength(qint16 track) const override { return tracks[track - 1].length; }
    qint32 TrackStart(qint16 track) const override
    {
        if (track == failAtTrackStart)
            throw RunTimeFailure(RunTimeFailure::DeviceIoError);
        return tracks[track - 1].start;
    }
    bool IsAudioTrack(qint16 track) const override { return tracks[track - 1].audio; }
    bool TrackFlag(qint16) const override { return true; }
    void LoadTray() override { m_log.add(QStringLiteral("LoadTray")); }
    void PausePlay() override { m_log.add(QStringLiteral("PausePlay")); }
    void PlayTrack(qint16 track) override { m_log.add(QStringLiteral("PlayTrack %1").arg(track)); }
    bool AddTrack(qint16 track, const QString &file, qint32 tag) override
    {
        m_log.add(QStringLiteral("AddTrack %1 %2 %3").arg(track).arg(file).arg(tag));
        return !refusedTracks.contains(track);
    }
    bool DiscReady() const override { return discReady; }
    void ResumePlay() override { m_log.add(QStringLiteral("ResumePlay")); }
    void StopPlay() override { m_log.add(QStringLiteral("StopPlay")); }
    qint32 DriveStatus() const override { return status; }
    QString SectorsToTime(qint32 sectors) const override { return QStringLiteral("t%1").arg(sectors); }
    void SetSpeed(qint16 speed) override { m_log.add(QStringLiteral("SetSpeed %1").arg(speed)); }
    qint16 MaxSpeed() const override { return maxSpeed; }
    qint32 LastError() const override { return 0; }
    void ClearTracks() override { m_log.add(QStringLiteral("ClearTracks")); }
    bool SelectDrive(qint16 drive) override
    {
        m_log.add(QStringLiteral("SelectDrive %1").arg(drive));
        return selectable;
    }
    bool StartExtraction() override
    {
        m_log.add(QStringLiteral("StartExtraction"));
        if (startFailure != 0)
            throw RunTimeFailure(startFailure, QStringLiteral("no such rate"));
        return starts;
    }
    void SetEncoder(QObject *encoder) override
    {
        m_log.add(QStringLiteral("SetEncoder ") +
                  (encoder ? encoder->objectName() : QStringLiteral("nothing")));
    }

    /// Whether its reports reach anybody; a job of which nobody hears is dropped by the real engine.
    bool isHeard() const { return isSignalConnected(QMetaMethod::fromSignal(&CDRipperX::ExtractionStatus)); }

private:
    CallLog &m_log;
};
