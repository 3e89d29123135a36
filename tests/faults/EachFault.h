#pragma once

#include "testkit/faults/Faults.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <cerrno>
#include <gtest/gtest.h>

struct Fault
{
    faults::Call call;
    int error;
};

inline constexpr Fault EachKind[] = {
    {faults::Call::Open, EMFILE},   {faults::Call::Open, ENOSPC},  {faults::Call::Write, ENOSPC},
    {faults::Call::Write, EIO},     {faults::Call::Flush, EIO},    {faults::Call::Flush, ENOSPC},
    {faults::Call::Rename, ENOSPC}, {faults::Call::Rename, EIO},   {faults::Call::Link, ENOSPC},
    {faults::Call::Link, EMFILE},   {faults::Call::Truncate, EIO}, {faults::Call::Map, EAGAIN},
    {faults::Call::Thread, EAGAIN},
};

/// For each kind of call that concerns a file below `folder`: `prepare`, then `action` with the first of
/// those calls failing, then `check`; the same with the second, the third, until a run passes untouched.
/// `check` gets whether a call failed.
template <typename Prepare, typename Action, typename Check>
void withEachFault(const QString &folder, Prepare prepare, Action action, Check check)
{
    constexpr int Most = 500;
    for (const Fault &fault : EachKind) {
        bool failed = true;
        for (int n = 1; failed; ++n) {
            SCOPED_TRACE(testing::Message()
                         << faults::Names[int(fault.call)] << ' ' << n << " fails with " << fault.error);
            ASSERT_LE(n, Most);
            prepare();
            faults::arm(folder.toStdString(), fault.call, n, fault.error);
            action();
            failed = faults::disarm();
            check(failed);
            if (testing::Test::HasFailure())
                return;
        }
    }
}

inline QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

/// The names in a folder, hidden ones too.
inline QStringList namesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}
