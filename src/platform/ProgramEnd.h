#pragma once

#include <functional>

/// Thrown through handlers that still wait in a nested event loop once the program is ending. Nothing but the
/// border catches it.
struct ProgramEnding
{};

/// The program's end, brought about by a fatal failure or by a window's own wish. UI thread only.
class ProgramEnd
{
public:
    /// `exit` leaves the event loops with a code, as QCoreApplication::exit does.
    explicit ProgramEnd(std::function<void(int)> exit) : m_exit(std::move(exit)) {}

    void end(int code)
    {
        m_ending = true;
        m_exit(code);
    }

    bool isEnding() const { return m_ending; }

    /// To be called whenever a nested event loop returns: the handler that waited must not go on.
    void unwindIfEnding() const
    {
        if (m_ending)
            throw ProgramEnding();
    }

private:
    std::function<void(int)> m_exit;
    bool m_ending = false;
};
