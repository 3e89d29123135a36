#pragma once

#include <QElapsedTimer>
#include <QTimer>

/// Processor time of this process so far, all its threads, in seconds.
double processorSeconds();
/// The same of all children that have ended and been waited for.
double childrensProcessorSeconds();
/// The most memory that this process has held at once, in megabytes (10^6 bytes).
double peakMegabytes();
/// The machine's processor and how many of its cores this process may use.
QString machineName();

/// Measures how long the event loop, nested ones included, leaves events waiting: a timer's delay.
class LoopWatch : public QObject
{
public:
    LoopWatch();

    /// The longest delay since the last reset, in milliseconds.
    double longestGap() const { return static_cast<double>(m_longest) / 1e6; }
    void reset();

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_longest = 0; ///< nanoseconds
};
