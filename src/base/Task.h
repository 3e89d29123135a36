#pragma once

#include "base/LooseThread.h"

#include <QObject>
#include <memory>
#include <mutex>

/// Told by a task that was cancelled; whoever cancels it expects that, so it is no failure.
struct TaskCancelled
{};

/// How a caller waits for its task.
struct TaskWait
{
    /// How long a cancelled task may take to end before it is left behind, with work that owns all it uses.
    LooseThread::Patience patience = std::nullopt;
    /// Asked twenty times a second; true cancels the task. What it throws cancels it, too, and reaches the
    /// caller instead of the task's result.
    std::function<bool()> isCancelled = {};
    /// Whether keys and clicks are handled meanwhile, so that handlers of any window may run.
    bool takesInput = false;
};

/// Work in a thread of its own, whose end is told in the thread that owns the task: by a signal, so that a
/// window attaches its handler as it does to any other. `TaskOf` has the result.
///
/// Everything but the work belongs to the owner's thread, which has an event loop. Destroying the task
/// cancels it and waits for its end, as long as its patience lasts; it tells nothing any more.
class Task : public QObject
{
    Q_OBJECT

public:
    ~Task() override;

    /// Asks the work to stop, by its stop token; `ended` is told when it does, or when the patience is at its
    /// end.
    void cancel();
    bool hasEnded() const { return m_state != State::Running; }

Q_SIGNALS:
    /// From the event loop, once.
    void ended();

protected:
    using Work = std::function<void(std::stop_token)>;

    /// Raises a RunTimeFailure (7) where no thread can be started.
    Task(const char *name, Work work, LooseThread::Patience patience);

    /// Handles events until the task has ended.
    void wait(const TaskWait &how);
    bool isLeftBehind() const { return m_state == State::LeftBehind; }

private:
    enum class State { Running, Ended, LeftBehind };
    /// What the thread rings at its end; deaf once the task is gone.
    struct Bell
    {
        std::mutex mutex;
        Task *owner = nullptr;
    };

    void tellEnd(State state);

    const LooseThread::Patience m_patience;
    State m_state = State::Running;
    bool m_cancelled = false;
    const std::shared_ptr<Bell> m_bell = std::make_shared<Bell>();
    LooseThread m_thread;
};

/// A task with a result.
template <typename Result>
class TaskOf final : public Task
{
public:
    /// `work` takes a std::stop_token, and asks it now and then whether to go on; if not, it returns what it
    /// has or throws TaskCancelled.
    template <typename Work>
    TaskOf(const char *name, Work work, LooseThread::Patience patience = std::nullopt)
        : TaskOf(name, std::make_shared<Job>(std::move(work)), patience)
    {}

    /// Once, after the end: the work's result, or what it threw, of whatever type. TaskCancelled where it was
    /// left behind.
    Result take()
    {
        if (isLeftBehind())
            throw TaskCancelled();
        return m_result.get();
    }

    /// Waits for the end, and takes.
    Result take(const TaskWait &how)
    {
        wait(how);
        return take();
    }

private:
    using Job = std::packaged_task<Result(std::stop_token)>;

    TaskOf(const char *name, const std::shared_ptr<Job> &job, LooseThread::Patience patience)
        : Task(
              name, [job](const std::stop_token &stop) { (*job)(stop); }, patience),
          m_result(job->get_future())
    {}

    std::future<Result> m_result;
};

/// Does the work in a thread, while the caller's windows go on painting and its clocks ticking. Returns the
/// work's result or throws what it threw; TaskCancelled where it was left behind.
template <typename Work>
auto doBeside(const char *name, Work work, const TaskWait &how = {})
{
    return TaskOf<std::invoke_result_t<Work &, std::stop_token>>(name, std::move(work), how.patience)
        .take(how);
}
