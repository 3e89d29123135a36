#include "base/Task.h"

#include <QEventLoop>
#include <QScopeGuard>
#include <QTimer>

namespace {

constexpr std::chrono::milliseconds AskInterval{50};

} // namespace

Task::Task(const char *name, Work work, LooseThread::Patience patience) : m_patience(patience)
{
    m_bell->owner = this;
    m_thread = LooseThread(name, [bell = m_bell, work = std::move(work)](const std::stop_token &stop) {
        work(stop);
        const std::lock_guard lock(bell->mutex);
        if (Task *owner = bell->owner)
            QMetaObject::invokeMethod(
                owner, [owner] { owner->tellEnd(State::Ended); }, Qt::QueuedConnection);
    });
}

Task::~Task()
{
    {
        const std::lock_guard lock(m_bell->mutex);
        m_bell->owner = nullptr;
    }
    m_thread.end(m_patience);
}

void Task::cancel()
{
    m_thread.requestStop();
    if (m_patience && !std::exchange(m_cancelled, true))
        QTimer::singleShot(*m_patience, Qt::PreciseTimer, this, [this] { tellEnd(State::LeftBehind); });
}

void Task::tellEnd(State state)
{
    if (hasEnded())
        return;
    m_state = state;
    Q_EMIT ended();
}

void Task::wait(const TaskWait &how)
{
    QEventLoop loop;
    connect(this, &Task::ended, &loop, &QEventLoop::quit);
    std::exception_ptr failure;
    QTimer question;
    connect(&question, &QTimer::timeout, &loop, [&] {
        try {
            if (!how.isCancelled())
                return;
        } catch (...) {
            failure = std::current_exception();
        }
        question.stop();
        cancel();
    });
    if (how.isCancelled)
        question.start(AskInterval);
    if (!hasEnded())
        loop.exec(how.takesInput ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    question.stop();
    // The program may be ending, which ends all loops.
    if (!hasEnded())
        m_state = m_thread.end(m_patience) ? State::Ended : State::LeftBehind;
    if (failure)
        std::rethrow_exception(failure);
}
