#pragma once

/// Lets pending events run from inside a long work. Any handler may run within the call; where the program is
/// ending it unwinds instead of returning.
class EventPump
{
public:
    virtual ~EventPump() = default;
    virtual void processEvents() = 0;
};
