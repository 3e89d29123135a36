#pragma once

#include "base/RunTimeFailure.h"
#include "platform/ProgramEnd.h"

class Dialogs;

/// Where failures stop: Qt bears no exception through its frames, so every handler of a Qt event runs in
/// here. A RunTimeFailure that reaches the border is fatal: the system's error box, then the end of the
/// program.
class Border
{
public:
    Border(Dialogs &dialogs, ProgramEnd &end) : m_dialogs(dialogs), m_end(end) {}

    template <typename Handler>
    void run(Handler &&handler)
    {
        try {
            handler();
        } catch (const RunTimeFailure &failure) {
            endWith(failure);
        } catch (const ProgramEnding &) { // the handler is unwound, the event loops are on their way out
        }
    }

private:
    void endWith(const RunTimeFailure &failure);

    Dialogs &m_dialogs;
    ProgramEnd &m_end;
};
