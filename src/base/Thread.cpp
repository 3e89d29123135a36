#include "base/Thread.h"

#include "base/Log.h"
#include "base/RunTimeFailure.h"

#include <atomic>
#include <cstring>
#include <pthread.h>
#include <system_error>

namespace {

constexpr std::size_t LongestName = 15;
constexpr int NoShortage = -1;

std::atomic<int> threadsLeft = NoShortage;

bool systemHasThread()
{
    int left = threadsLeft;
    while (left > 0 && !threadsLeft.compare_exchange_weak(left, left - 1)) {
    }
    return left != 0;
}

void runNamed(const std::stop_token &stop, const char *name, const std::function<void(std::stop_token)> &run)
{
    pthread_setname_np(pthread_self(), name);
    try {
        run(stop);
    } catch (const std::exception &failure) {
        qCCritical(logProgram) << "Thread" << name << "ended by" << failure.what();
    }
}

} // namespace

std::jthread startThread(const char *name, std::function<void(std::stop_token)> run)
{
    Q_ASSERT(std::strlen(name) <= LongestName);
    try {
        if (!systemHasThread())
            throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
        return std::jthread(runNamed, name, std::move(run));
    } catch (const std::system_error &) {
        throw RunTimeFailure(RunTimeFailure::OutOfMemory,
                             QStringLiteral("Not enough resources for a thread"));
    }
}

ThreadShortage::ThreadShortage(int left)
{
    threadsLeft = left;
}

ThreadShortage::~ThreadShortage()
{
    threadsLeft = NoShortage;
}
