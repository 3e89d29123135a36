#pragma once

#include "components/CDRipperX.h"
#include "engines/cdrom/DriveWatcher.h"
#include "engines/cdrom/Extraction.h"
#include "engines/cdrom/Player.h"

#include <QPointer>
#include <QTimer>
#include <memory>
#include <vector>

/// The real CD engine. Its drives are found when it is made and stay its drives, whatever comes and goes.
/// No operation waits for a drive, but for `SelectDrive`, which gives it a moment to tell of its disc.
///
/// A disc that wasn't there for the last `DiscReady`, or is another than then, is first announced by one
/// `NoDisc` of `DriveStatus`; so whoever reads discs when they come back misses none.
///
/// A rip of which nobody hears any more, all signals being disconnected, ends by itself.
class CdEngine : public CDRipperX
{
    Q_OBJECT

public:
    using Drives = std::vector<std::shared_ptr<cdrom::Drive>>;

    /// The machine's drives, and behind them a drive for each disc image in the folder, which may not exist.
    explicit CdEngine(const QString &discsFolder, QObject *parent = nullptr);
    explicit CdEngine(Drives drives, cdrom::MakeOutput makeOutput = cdrom::makeAudioOutput,
                      QObject *parent = nullptr);
    ~CdEngine() override;

    void setUseEncoder(bool use) override;
    void CancelExtraction() override;
    void EjectTray() override;
    QString DriveAddress(qint16 drive) const override;
    QString DriveModel(qint16 drive) const override;
    QString DriveMaker(qint16 drive) const override;
    QString DiscId() const override;
    qint16 DriveCount() const override;
    qint16 TrackCount() const override;
    qint32 TrackLength(qint16 track) const override;
    qint32 TrackStart(qint16 track) const override;
    bool IsAudioTrack(qint16 track) const override;
    bool TrackFlag(qint16 track) const override;
    void LoadTray() override;
    void PausePlay() override;
    void PlayTrack(qint16 track) override;
    bool AddTrack(qint16 track, const QString &file, qint32 tag) override;
    bool DiscReady() const override;
    void ResumePlay() override;
    void StopPlay() override;
    qint32 DriveStatus() const override;
    QString SectorsToTime(qint32 sectors) const override;
    void SetSpeed(qint16 speed) override;
    qint16 MaxSpeed() const override;
    qint32 LastError() const override;
    void ClearTracks() override;
    bool SelectDrive(qint16 drive) override;
    bool StartExtraction() override;
    void SetEncoder(QObject *encoder) override;

protected:
    void disconnectNotify(const QMetaMethod &signal) override;

private:
    /// A drive and, from its first selection on, its watcher.
    struct Watched
    {
        std::shared_ptr<cdrom::Drive> drive;
        std::unique_ptr<cdrom::DriveWatcher> watcher;
    };

    /// A rip that runs, and what of its events is still to be told.
    struct Job;
    class Inbox;

    void deliver();
    void tell(const cdrom::ExtractionEvent &event);
    void tellEnd();
    void beat();
    bool isHeard() const;
    /// Forgets the job; its threads end by themselves.
    void dropJob();

    cdrom::DriveTexts texts(qint16 drive) const;
    cdrom::DiscView view() const;
    /// The track on the disc of the selected drive; one of no length where there is none.
    cdrom::DiscTrack track(qint16 number) const;

    std::vector<Watched> m_drives;
    Watched *m_selected = nullptr;
    qint32 m_lastError = 0;
    mutable quint64 m_announced = 0; ///< the disc that the program knows of; 0: none

    std::unique_ptr<cdrom::Player> m_player;

    bool m_useEncoder = false;
    QPointer<QObject> m_encoder;
    std::vector<cdrom::QueuedTrack> m_queue;
    std::shared_ptr<const cdrom::DiscToc> m_queueToc; ///< of the disc for which the queue stands
    std::unique_ptr<Job> m_job;
    std::vector<LooseThread> m_ending; ///< threads of former jobs
    QTimer m_heart;                    ///< runs with a job
};
