#pragma once

#include "base/RunTimeFailure.h"

#include <utility>

/// For routines that pass over a failing statement and go on with the next one. Each statement is wrapped by
/// itself:
///
///     SkipFailures skip;
///     skip([&] { encoder.setCBRBitRate(toInt32(text)); });
///     if (skip.condition([&] { return list.isEmpty(); })) ...
///
/// A callee without a guard of its own is left as a whole when it fails. Only RunTimeFailure is passed over.
class SkipFailures
{
public:
    template <typename Statement>
    void operator()(Statement &&statement) const
    {
        try {
            std::forward<Statement>(statement)();
        } catch (const RunTimeFailure &) { // passed over, by the rule above
        }
    }

    /// A failing condition counts as passed: the next statement is the first one inside its block.
    template <typename Condition>
    bool condition(Condition &&test) const
    {
        try {
            return std::forward<Condition>(test)();
        } catch (const RunTimeFailure &) {
            return true;
        }
    }
};
