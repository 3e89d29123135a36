#pragma once

#include <QGuiApplication>
#include <QWidget>

/// The wait cursor, for as long as it lives, over a window that is about to be blocked. The window is painted
/// first, so that it doesn't stand there half drawn.
class WaitCursor
{
public:
    explicit WaitCursor(QWidget &window)
    {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        window.repaint();
    }
    ~WaitCursor() { QGuiApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor &) = delete;
    WaitCursor &operator=(const WaitCursor &) = delete;
};
