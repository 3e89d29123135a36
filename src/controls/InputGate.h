#pragma once

#include <QObject>

class QAbstractButton;
class QWidget;

/// Holds input back while a window waits for work in a loop that handles events: keys, clicks, dropped files
/// and closing come to nothing. Only asking to cancel gets through: Escape, closing the window, and clicks on
/// its one button that is left to answer, whose handler calls `cancel`. A box that comes up meanwhile is
/// answered as ever.
class InputGate : public QObject
{
public:
    InputGate(QWidget &window, const QAbstractButton &answering);
    ~InputGate() override;

    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }

protected:
    bool eventFilter(QObject *target, QEvent *event) override;

private:
    QWidget &m_window;
    const QWidget *m_modal; ///< the window that holds all others back, as it was
    const QAbstractButton &m_answering;
    bool m_cancelled = false;
};
