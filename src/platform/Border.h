#pragma once

#include "base/RunTimeFailure.h"
#include "base/Task.h"
#include "platform/ProgramEnd.h"

class Dialogs;

/// Where failures stop: Qt bears no exception through its frames, so every handler of a Qt event runs in
/// here. One that reaches the border is fatal, whatever its type: the system's error box, then the end of the
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
        } catch (const ProgramEnding &) { // the handler is unwound, the event loops are on their way out
        } catch (const TaskCancelled &) { // and so is one whose task its user cancelled
        } catch (...) {
            endWithCaught();
        }
    }

private:
    void endWithCaught() noexcept;

    Dialogs &m_dialogs;
    ProgramEnd &m_end;
};
