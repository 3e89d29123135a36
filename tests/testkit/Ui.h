#pragma once

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>
#include <QWidget>
#include <gtest/gtest.h>

/// A control, or any other object of a window, by its name. A wrong name fails the test.
template <typename Control>
Control *control(QObject &window, const QString &name)
{
    auto *found = window.findChild<Control *>(name);
    if (!found)
        qFatal("There is no control %s of this kind", qPrintable(name));
    return found;
}

/// Lets a running timer fire now.
inline void fireTimer(QTimer *timer)
{
    ASSERT_TRUE(timer->isActive()) << timer->objectName().toStdString() << " isn't running";
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
}

/// Handles events until the condition holds; false when it doesn't within the time. Sleeps between events,
/// and looks now and then by itself, since what other threads and the disk do is no event.
template <typename Condition>
bool waitFor(Condition condition, int milliseconds = 90000)
{
    const QDeadlineTimer end(milliseconds);
    QTimer look;
    look.start(5);
    while (!condition()) {
        if (end.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Deletes what waits for its deletion.
inline void deleteUnloaded()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
