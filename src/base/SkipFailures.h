#pragma once

#include "base/Log.h"

#include <utility>

/// For routines that pass over a failing statement and go on with the next one. Each statement is wrapped by
/// itself:
///
///     SkipFailures skip;
///     skip([&] { encoder.setCBRBitRate(toInt32(text)); });
///     if (skip.condition([&] { return list.isEmpty(); })) ...
///
/// A callee without a guard of its own is left as a whole when it fails. Only RunTimeFailure is passed over;
/// the log tells of it when its category "tonelift.program" is at the level of debugging.
class SkipFailures
{
public:
    template <typename Statement>
    void operator()(Statement &&statement) const
    {
        try {
            std::forward<Statement>(statement)();
        } catch (const RunTimeFailure &failure) { // passed over, by the rule above
            logPassedOver(failure);
        }
    }

    /// A failing condition counts as passed: the next statement is the first one inside its block.
    template <typename Condition>
    bool condition(Condition &&test) const
    {
        try {
            return std::forward<Condition>(test)();
        } catch (const RunTimeFailure &failure) {
            logPassedOver(failure);
            return true;
        }
    }
};
