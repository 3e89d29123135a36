#pragma once

#include <functional>
#include <thread>

/// All threads of the program start here. The name, of 15 characters at most, is what debuggers and profilers
/// show. `run` keeps its failures to itself, and tells them by what it shares with whoever waits for it; what
/// it throws all the same ends its thread alone. Raises a RunTimeFailure (7) where the system has no thread
/// to give.
std::jthread startThread(const char *name, std::function<void(std::stop_token)> run);

/// For tests: while it lives the system has only so many threads to give.
class ThreadShortage
{
public:
    explicit ThreadShortage(int threadsLeft);
    ~ThreadShortage();
    ThreadShortage(const ThreadShortage &) = delete;
    ThreadShortage &operator=(const ThreadShortage &) = delete;
};
