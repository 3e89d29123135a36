#include "base/RunTimeFailure.h"
#include "engines/cdrom/CdEngineJob.h"
#include "engines/cdrom/ImageDrive.h"
#include "engines/cdrom/MachineDrive.h"

using namespace cdrom;

namespace {

constexpr std::chrono::milliseconds FirstLook{150};
constexpr std::chrono::milliseconds Heartbeat{200};

CdEngine::Drives allDrives(const QString &discsFolder)
{
    CdEngine::Drives drives = machineDrives();
    for (std::shared_ptr<Drive> &image : imageDrives(discsFolder))
        drives.push_back(std::move(image));
    return drives;
}

} // namespace

CdEngine::CdEngine(const QString &discsFolder, QObject *parent)
    : CdEngine(allDrives(discsFolder), makeAudioOutput, parent)
{}

CdEngine::CdEngine(Drives drives, MakeOutput makeOutput, QObject *parent)
    : CDRipperX(parent), m_player(std::make_unique<Player>(std::move(makeOutput)))
{
    for (std::shared_ptr<Drive> &drive : drives)
        m_drives.push_back({std::move(drive), nullptr});
    m_heart.setInterval(Heartbeat);
    connect(&m_heart, &QTimer::timeout, this, &CdEngine::beat);
}

CdEngine::~CdEngine()
{
    dropJob();
}

qint16 CdEngine::DriveCount() const
{
    return static_cast<qint16>(m_drives.size());
}

DriveTexts CdEngine::texts(qint16 drive) const
{
    const auto index = static_cast<std::size_t>(drive);
    return drive >= 0 && index < m_drives.size() ? m_drives[index].drive->texts() : DriveTexts{};
}

QString CdEngine::DriveAddress(qint16 drive) const
{
    return texts(drive).address;
}

QString CdEngine::DriveMaker(qint16 drive) const
{
    return texts(drive).maker;
}

QString CdEngine::DriveModel(qint16 drive) const
{
    return texts(drive).model;
}

bool CdEngine::SelectDrive(qint16 drive)
{
    StopPlay();
    const auto index = static_cast<std::size_t>(drive);
    const bool known = drive >= 0 && index < m_drives.size();
    m_selected = known ? &m_drives[index] : nullptr;
    m_lastError = known ? 0 : RunTimeFailure::SubscriptOutOfRange;
    m_announced = 0;
    if (!known)
        return false;
    if (!m_selected->watcher)
        m_selected->watcher = std::make_unique<DriveWatcher>(m_selected->drive);
    m_selected->watcher->look(FirstLook);
    return true;
}

qint32 CdEngine::LastError() const
{
    return m_lastError;
}

DiscView CdEngine::view() const
{
    return m_selected ? m_selected->watcher->view() : DiscView{};
}

bool CdEngine::DiscReady() const
{
    const DiscView now = view();
    m_announced = now.disc;
    return now.toc != nullptr;
}

qint32 CdEngine::DriveStatus() const
{
    constexpr qint32 NoParticularState = 3;
    const DiscView now = view();
    if (now.medium == Medium::Busy)
        return NoParticularState;
    if (!now.toc)
        m_player->stop();
    if (const Player::State state = m_player->state(); state != Player::State::Idle)
        return state == Player::State::Paused ? Paused : Playing;
    if (now.disc != m_announced || !now.toc) {
        m_announced = now.disc;
        return NoDisc;
    }
    return DiscIdle;
}

QString CdEngine::DiscId() const
{
    const DiscView now = view();
    return freeDbId(now.toc ? *now.toc : DiscToc{});
}

qint16 CdEngine::TrackCount() const
{
    const DiscView now = view();
    return now.toc ? static_cast<qint16>(now.toc->tracks.size()) : qint16(0);
}

DiscTrack CdEngine::track(qint16 number) const
{
    const DiscView now = view();
    const DiscTrack *found = now.toc ? now.toc->track(number) : nullptr;
    return found ? *found : DiscTrack{0, 0, 1, false, false};
}

qint32 CdEngine::TrackLength(qint16 track) const
{
    return this->track(track).length;
}

qint32 CdEngine::TrackStart(qint16 track) const
{
    return this->track(track).start;
}

bool CdEngine::IsAudioTrack(qint16 track) const
{
    return this->track(track).audio;
}

bool CdEngine::TrackFlag(qint16 track) const
{
    return this->track(track).mayBeCopied;
}

QString CdEngine::SectorsToTime(qint32 sectors) const
{
    return timeOf(sectors);
}

qint16 CdEngine::MaxSpeed() const
{
    return m_selected ? m_selected->drive->maxSpeed() : qint16(0);
}

void CdEngine::SetSpeed(qint16 speed)
{
    if (m_selected)
        m_selected->drive->setSpeed(speed);
}

void CdEngine::EjectTray()
{
    StopPlay();
    if (m_selected)
        m_selected->watcher->moveTray(true);
}

void CdEngine::LoadTray()
{
    if (m_selected)
        m_selected->watcher->moveTray(false);
}

void CdEngine::PlayTrack(qint16 track)
{
    const DiscTrack found = this->track(track);
    if (found.audio)
        m_player->play(m_selected->drive, found);
}

void CdEngine::PausePlay()
{
    m_player->pause();
}

void CdEngine::ResumePlay()
{
    m_player->resume();
}

void CdEngine::StopPlay()
{
    m_player->stop();
}
