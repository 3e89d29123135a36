#pragma once

#include <QStringList>

/// The one log into which all doubles of a test write, so that an order can be compared as a whole.
class CallLog
{
public:
    void add(const QString &call) { m_calls.append(call); }
    const QStringList &calls() const { return m_calls; }
    /// The log so far; it begins anew.
    QStringList take() { return std::exchange(m_calls, {}); }

private:
    QStringList m_calls;
};
