#include "Measure.h"

#include <QFile>
#include <QThread>
#include <algorithm>
#include <sys/resource.h>

namespace {

rusage resources(int whose = RUSAGE_SELF)
{
    rusage used{};
    getrusage(whose, &used);
    return used;
}

double seconds(const timeval &time)
{
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

double processorSeconds(const rusage &used)
{
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

constexpr int TickMilliseconds = 2;

} // namespace

double processorSeconds()
{
    return processorSeconds(resources());
}

double childrensProcessorSeconds()
{
    return processorSeconds(resources(RUSAGE_CHILDREN));
}

double peakMegabytes()
{
    return static_cast<double>(resources().ru_maxrss) * 1024 / 1e6;
}

QString machineName()
{
    QString processor = QStringLiteral("unknown processor");
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray &line : file.readAll().split('\n')) {
            if (line.startsWith("model name"))
                processor = QString::fromUtf8(line.mid(line.indexOf(':') + 1).trimmed());
        }
    }
    return QStringLiteral("%1, %2 cores").arg(processor).arg(QThread::idealThreadCount());
}

LoopWatch::LoopWatch()
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setInterval(TickMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_longest = std::max(m_longest, m_clock.nsecsElapsed() - qint64{TickMilliseconds} * 1'000'000);
        m_clock.start();
    });
    reset();
    m_timer.start();
}

void LoopWatch::reset()
{
    m_longest = 0;
    m_clock.start();
}
