#include "base/Task.h"

#include "base/RunTimeFailure.h"
#include "testkit/Ui.h"

#include <QCursor>
#include <QEventLoop>
#include <QWindow>
#include <array>
#include <atomic>
#include <condition_variable>
#include <new>
#include <pthread.h>
#include <semaphore>

using namespace std::chrono_literals;

namespace {

/// What a test holds a thread up with; the thread may outlive the test.
using Gate = std::shared_ptr<std::binary_semaphore>;
Gate closedGate()
{
    return std::make_shared<std::binary_semaphore>(0);
}

/// Works until it is asked to stop, and says that it was.
int workUntilStopped(const std::stop_token &stop)
{
    std::mutex mutex;
    std::condition_variable_any never;
    std::unique_lock lock(mutex);
    never.wait(lock, stop, [] { return false; });
    return -1;
}

/// A window that counts the moves of the mouse over it.
class MoveCounter : public QWindow
{
public:
    int count = 0;

protected:
    void mouseMoveEvent(QMouseEvent *) override { ++count; }
};

} // namespace

TEST(TaskTest, whatTheWorkReturnsReachesTheCallerWhoseClocksGoOnMeanwhile)
{
    const Gate gate = closedGate();
    QTimer::singleShot(0, [gate] { gate->release(); });
    std::thread::id worker;
    const auto result = doBeside("work", [&](const auto &) {
        gate->acquire();
        worker = std::this_thread::get_id();
        return std::make_unique<int>(42);
    });
    EXPECT_EQ(*result, 42);
    EXPECT_NE(worker, std::this_thread::get_id());
}

TEST(TaskTest, whatTheWorkThrowsReachesTheCallerWhateverItIs)
{
    const auto thrown = [](auto what) { doBeside("work", [what](const auto &) { throw what; }); };
    EXPECT_THROW(thrown(RunTimeFailure(RunTimeFailure::DiskFull)), RunTimeFailure);
    EXPECT_THROW(thrown(std::bad_alloc()), std::bad_alloc);
    EXPECT_THROW(thrown(7), int);
}

TEST(TaskTest, theMouseWaitsForTheEndUnlessTheCallerTakesInput)
{
    MoveCounter window;
    window.setGeometry(0, 0, 100, 100);
    window.show();
    QCoreApplication::processEvents();
    for (const bool takesInput : {false, true}) {
        window.count = 0;
        QCursor::setPos(takesInput ? 40 : 30, 10);
        const Gate gate = closedGate();
        QTimer::singleShot(20ms, [gate] { gate->release(); });
        doBeside("work", [gate](const auto &) { gate->acquire(); }, {.takesInput = takesInput});
        EXPECT_EQ(window.count, takesInput ? 1 : 0);
        EXPECT_TRUE(waitFor([&] { return window.count == 1; })) << "late, but not lost";
    }
}

TEST(TaskTest, aWorkThatIsCancelledReturnsWhatItHas)
{
    int asked = 0;
    EXPECT_EQ(doBeside("work", workUntilStopped, {.isCancelled = [&] { return ++asked == 2; }}), -1);
    EXPECT_EQ(asked, 2) << "and is asked no more";
}

TEST(TaskTest, whatTheQuestionThrowsEndsTheWorkAndReachesTheCaller)
{
    std::atomic<bool> ended = false;
    const auto work = [&](const std::stop_token &stop) {
        workUntilStopped(stop);
        ended = true;
    };
    EXPECT_THROW(doBeside("work", work, {.isCancelled = []() -> bool { throw 7; }}), int);
    EXPECT_TRUE(ended);
}

TEST(TaskTest, aWorkThatDoesNotAnswerIsLeftBehindWhereTheCallerSaysSo)
{
    const Gate gate = closedGate();
    const Gate ended = closedGate();
    const auto work = [gate, ended](const auto &) {
        gate->acquire();
        ended->release();
    };
    EXPECT_THROW(doBeside("work", work, {.patience = 1ms, .isCancelled = [] { return true; }}),
                 TaskCancelled);
    gate->release();
    ended->acquire(); // it went on by itself
}

TEST(TaskTest, theEndOfTheProgramEndsTheWork)
{
    QEventLoop outer; // in which the handler runs that waits for the work
    int result = 0;
    QTimer::singleShot(0, &outer, [&] {
        QTimer::singleShot(0, &outer, [] { QCoreApplication::exit(); });
        result = doBeside("work", workUntilStopped);
    });
    outer.exec();
    EXPECT_EQ(result, -1);
}

TEST(TaskTest, theEndOfATaskIsToldOnceInTheThreadOfItsOwner)
{
    TaskOf<QString> task("work", [](const auto &) { return QStringLiteral("done"); });
    int told = 0;
    QObject::connect(&task, &Task::ended, &task, [&] {
        EXPECT_EQ(QThread::currentThread(), task.thread());
        EXPECT_TRUE(task.hasEnded());
        ++told;
    });
    EXPECT_FALSE(task.hasEnded()) << "by the event loop alone";
    ASSERT_TRUE(waitFor([&] { return told > 0; }));
    task.cancel();
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
    EXPECT_EQ(task.take(), QStringLiteral("done"));
}

TEST(TaskTest, aTaskThatIsCancelledEndsWithinItsPatience)
{
    const Gate gate = closedGate();
    TaskOf<void> deaf(
        "work", [gate](const auto &) { gate->acquire(); }, 1ms);
    TaskOf<int> polite("work", workUntilStopped);
    deaf.cancel();
    polite.cancel();
    ASSERT_TRUE(waitFor([&] { return deaf.hasEnded() && polite.hasEnded(); }));
    EXPECT_THROW(deaf.take(), TaskCancelled);
    EXPECT_EQ(polite.take(), -1);
    gate->release();
}

TEST(TaskTest, aTaskThatIsGoneTellsNothingAndHasEnded)
{
    std::atomic<bool> ended = false;
    int told = 0;
    {
        TaskOf<void> task("work", [&](const std::stop_token &stop) {
            workUntilStopped(stop);
            ended = true;
        });
        QObject::connect(&task, &Task::ended, [&] { ++told; });
    }
    EXPECT_TRUE(ended);
    const Gate gate = closedGate();
    const Gate left = closedGate();
    {
        const TaskOf<void> task(
            "work",
            [gate, left](const auto &) {
                gate->acquire();
                left->release();
            },
            0ms);
        QObject::connect(&task, &Task::ended, [&] { ++told; });
    }
    gate->release();
    left->acquire();
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 0);
}

TEST(TaskTest, aThreadThatCanNotBeStartedIsAFailureOfTheCaller)
{
    const ThreadShortage shortage(1);
    EXPECT_EQ(doBeside("work", [](const auto &) { return 1; }), 1);
    try {
        doBeside("work", [](const auto &) {});
        ADD_FAILURE() << "there was a thread";
    } catch (const RunTimeFailure &failure) {
        EXPECT_EQ(failure.number(), RunTimeFailure::OutOfMemory);
    }
}

TEST(TaskTest, threadsHaveNames)
{
    EXPECT_EQ(doBeside("a thread's name",
                       [](const auto &) {
                           std::array<char, 16> name{};
                           pthread_getname_np(pthread_self(), name.data(), name.size());
                           return QString::fromLatin1(name.data());
                       }),
              QStringLiteral("a thread's name"));
}
