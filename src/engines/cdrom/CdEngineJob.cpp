#include "engines/cdrom/CdEngineJob.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"
#include "engines/codecs/WavEncoder.h"

#include <QMetaMethod>

using namespace cdrom;

namespace {

/// How long a cancelled rip may take to end before it is left to itself.
constexpr qint64 CancelPatience = 600;
/// After so long without a report comes a sign of life.
constexpr qint64 LongestSilence = 900;
constexpr qint32 SignOfLife = 1;

} // namespace

void CdEngine::Inbox::post(const ExtractionEvent &event)
{
    {
        const std::lock_guard lock(m_mutex);
        if (!m_owner)
            return;
        m_events.push_back(event);
    }
    schedule();
}

std::optional<ExtractionEvent> CdEngine::Inbox::take()
{
    const std::lock_guard lock(m_mutex);
    if (m_events.empty())
        return std::nullopt;
    const ExtractionEvent event = m_events.front();
    m_events.pop_front();
    return event;
}

bool CdEngine::Inbox::isEmpty()
{
    const std::lock_guard lock(m_mutex);
    return m_events.empty();
}

void CdEngine::Inbox::schedule()
{
    const std::lock_guard lock(m_mutex);
    if (m_owner)
        QMetaObject::invokeMethod(m_owner, &CdEngine::deliver, Qt::QueuedConnection);
}

void CdEngine::Inbox::shut()
{
    const std::lock_guard lock(m_mutex);
    m_owner = nullptr;
    m_events.clear();
}

void CdEngine::setUseEncoder(bool use)
{
    m_useEncoder = use;
}

void CdEngine::SetEncoder(QObject *encoder)
{
    m_encoder = encoder;
}

void CdEngine::ClearTracks()
{
    m_queue.clear();
}

bool CdEngine::AddTrack(qint16 track, const QString &file, qint32 tag)
{
    const DiscView now = view();
    const DiscTrack *found = now.toc ? now.toc->track(track) : nullptr;
    if (!found || !found->audio || file.isEmpty())
        return false;
    if (m_queue.empty())
        m_queueToc = now.toc;
    else if (*m_queueToc != *now.toc)
        return false;
    m_queue.push_back({*found, file, tag});
    return true;
}

bool CdEngine::StartExtraction()
{
    const DiscView now = view();
    if (m_queue.empty() || !now.toc || *now.toc != *m_queueToc)
        return false;
    if (m_job && !m_job->sinceCancel.isValid())
        return false;
    std::shared_ptr<const codecs::EncoderRecipe> recipe;
    if (m_useEncoder) {
        const auto *source = dynamic_cast<const codecs::EncoderSource *>(m_encoder.data());
        if (!source)
            throw RunTimeFailure(RunTimeFailure::ObjectNotSet);
        recipe = source->recipe();
    } else {
        recipe = codecs::wavRecipe();
    }
    StopPlay();
    dropJob();
    m_job = std::make_unique<Job>();
    m_job->inbox = std::make_shared<Inbox>(*this);
    m_job->work = std::make_shared<Extraction>(
        ExtractionPlan{m_selected->drive, m_queueToc, m_queue, std::move(recipe)},
        [inbox = m_job->inbox](const ExtractionEvent &event) { inbox->post(event); });
    try {
        m_job->reader = LooseThread("rip reader", [work = m_job->work](const auto &) { work->read(); });
        m_job->writer = LooseThread("rip writer", [work = m_job->work](const auto &) { work->write(); });
    } catch (const RunTimeFailure &failure) {
        qCWarning(logRip) << "Extraction isn't started:" << failure.what();
        dropJob();
        return false;
    }
    m_job->sinceTold.start();
    m_heart.start();
    return true;
}

void CdEngine::CancelExtraction()
{
    if (!m_job || m_job->sinceCancel.isValid())
        return;
    m_job->sinceCancel.start();
    m_job->work->cancel();
}

void CdEngine::dropJob()
{
    std::erase_if(m_ending, [](const LooseThread &thread) { return thread.hasEnded(); });
    if (!m_job)
        return;
    m_heart.stop();
    m_job->inbox->shut();
    m_job->work->cancel();
    m_ending.push_back(std::move(m_job->reader));
    m_ending.push_back(std::move(m_job->writer));
    m_job.reset();
}

bool CdEngine::isHeard() const
{
    for (const QMetaMethod &signal : {QMetaMethod::fromSignal(&CDRipperX::ExtractionPrepared),
                                      QMetaMethod::fromSignal(&CDRipperX::TrackStarted),
                                      QMetaMethod::fromSignal(&CDRipperX::ExtractionStatus),
                                      QMetaMethod::fromSignal(&CDRipperX::TrackFinished),
                                      QMetaMethod::fromSignal(&CDRipperX::ExtractionComplete)})
        if (isSignalConnected(signal))
            return true;
    return false;
}

/// At once: whoever connects next must not hear of this job. Where a receiver is destroyed, each signal is
/// told with a lock of Qt's held, under which nothing may be asked; the next beat or event finds that out.
void CdEngine::disconnectNotify(const QMetaMethod &signal)
{
    if (!signal.isValid() && !isHeard())
        dropJob();
}

/// Looks after a job of which nothing is heard.
void CdEngine::beat()
{
    if (!isHeard())
        dropJob();
    if (!m_job || m_job->telling)
        return;
    if (m_job->sinceCancel.isValid() && m_job->sinceCancel.hasExpired(CancelPatience))
        tellEnd();
    else if (m_job->sinceTold.hasExpired(LongestSilence))
        m_job->inbox->post({ExtractionEvent::Kind::Status, SignOfLife, 0});
}

/// Sends the signal of one event. While its handlers run, and perhaps handle events themselves, the next one
/// waits: so the order holds, and the handlers never stand on each other.
void CdEngine::deliver()
{
    if (!m_job || m_job->telling)
        return;
    if (!isHeard()) {
        dropJob();
        return;
    }
    const std::shared_ptr<Inbox> inbox = m_job->inbox;
    const std::optional<ExtractionEvent> event = inbox->take();
    if (!event)
        return;
    if (event->kind == ExtractionEvent::Kind::Complete) {
        tellEnd();
        return;
    }
    const QPointer<CdEngine> self(this);
    m_job->telling = true;
    m_job->sinceTold.start();
    tell(*event);
    if (!self || !m_job || m_job->inbox != inbox)
        return;
    m_job->telling = false;
    if (!inbox->isEmpty())
        inbox->schedule();
}

void CdEngine::tell(const ExtractionEvent &event)
{
    switch (event.kind) {
    case ExtractionEvent::Kind::Prepared:
        Q_EMIT ExtractionPrepared();
        break;
    case ExtractionEvent::Kind::TrackStarted: {
        const QueuedTrack track = m_job->work->plan().tracks[static_cast<std::size_t>(event.code)];
        Q_EMIT TrackStarted(track.file, track.track.start, track.lastSector(), track.tag);
        break;
    }
    case ExtractionEvent::Kind::Status:
        Q_EMIT ExtractionStatus(event.code, event.value);
        break;
    case ExtractionEvent::Kind::TrackFinished:
        Q_EMIT TrackFinished();
        break;
    case ExtractionEvent::Kind::Complete:
        break;
    }
}

void CdEngine::tellEnd()
{
    const QPointer<CdEngine> self(this);
    const std::shared_ptr<Inbox> inbox = m_job->inbox;
    if (m_job->sinceCancel.isValid()) {
        m_job->telling = true;
        Q_EMIT ExtractionStatus(Cancelled, 0);
        if (!self || !m_job || m_job->inbox != inbox)
            return;
    }
    dropJob();
    Q_EMIT ExtractionComplete();
}
