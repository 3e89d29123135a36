#pragma once

#include "engines/cdrom/CdEngine.h"

#include <QElapsedTimer>

/// Takes the events of a rip from its threads to the engine's, in order, one for each turn of the event loop.
class CdEngine::Inbox
{
public:
    explicit Inbox(CdEngine &owner) : m_owner(&owner) {}

    /// Any thread.
    void post(const cdrom::ExtractionEvent &event);
    /// The owner's thread, as everything below.
    std::optional<cdrom::ExtractionEvent> take();
    bool isEmpty();
    /// Calls the owner's `deliver` from the event loop.
    void schedule();
    /// Lets nothing through any more, and forgets what is there.
    void shut();

private:
    std::mutex m_mutex;
    CdEngine *m_owner;
    std::deque<cdrom::ExtractionEvent> m_events;
};

struct CdEngine::Job
{
    std::shared_ptr<cdrom::Extraction> work;
    std::shared_ptr<Inbox> inbox;
    LooseThread reader;
    LooseThread writer;
    bool telling = false; ///< a signal is being sent
    QElapsedTimer sinceTold;
    QElapsedTimer sinceCancel; ///< valid once cancelled
};
