#include "engines/cdrom/AudioOutput.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QDir>
#include <QMediaDevices>
#include <algorithm>
#include <chrono>

namespace cdrom {

namespace {

constexpr double FrameRate = 44100;
constexpr qsizetype FrameBytes = 4;
constexpr qsizetype BufferFrames = 44100;

class SystemOutput : public AudioOutput
{
public:
    SystemOutput(const QAudioDevice &device, const QAudioFormat &format) : m_sink(device, format)
    {
        m_sink.setBufferSize(BufferFrames * FrameBytes);
        m_device = m_sink.start();
    }

    bool works() const override { return m_device && m_sink.error() == QAudio::NoError; }

    qsizetype room() override { return m_sink.bytesFree() / FrameBytes; }

    qsizetype write(const qint16 *samples, qsizetype frames) override
    {
        const qint64 written = m_device->write(reinterpret_cast<const char *>(samples), frames * FrameBytes);
        return std::max<qint64>(written, 0) / FrameBytes;
    }

    void setPaused(bool paused) override
    {
        if (paused)
            m_sink.suspend();
        else
            m_sink.resume();
    }

    bool isDry() override
    {
        return m_sink.state() == QAudio::IdleState || m_sink.state() == QAudio::StoppedState;
    }

private:
    QAudioSink m_sink;
    QIODevice *m_device = nullptr;
};

#ifdef Q_OS_LINUX
/// Without any sound the multimedia library only complains, at length.
bool mayHaveSound()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return qEnvironmentVariableIsSet("PULSE_SERVER") ||
           QFile::exists(runtime + QStringLiteral("/pulse/native")) ||
           !QDir(QStringLiteral("/dev/snd")).entryList({QStringLiteral("pcm*p")}, QDir::System).isEmpty();
}
#else
bool mayHaveSound()
{
    return true;
}
#endif

qint64 systemNanoseconds()
{
    return std::chrono::nanoseconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

} // namespace

SilentOutput::SilentOutput(std::function<qint64()> clock)
    : m_clock(clock ? std::move(clock) : systemNanoseconds), m_passed(m_clock())
{}

void SilentOutput::passTime()
{
    const qint64 now = m_clock();
    if (!m_paused)
        m_waiting = std::max(0.0, m_waiting - double(now - m_passed) * FrameRate / 1e9);
    m_passed = now;
}

qsizetype SilentOutput::room()
{
    passTime();
    return BufferFrames - static_cast<qsizetype>(m_waiting);
}

qsizetype SilentOutput::write(const qint16 *, qsizetype frames)
{
    const qsizetype taken = std::min(frames, room());
    m_waiting += double(taken);
    return taken;
}

void SilentOutput::setPaused(bool paused)
{
    passTime();
    m_paused = paused;
}

bool SilentOutput::isDry()
{
    passTime();
    return m_waiting <= 0;
}

std::unique_ptr<AudioOutput> makeAudioOutput()
{
    if (!mayHaveSound())
        return std::make_unique<SilentOutput>();
    QAudioFormat format;
    format.setSampleRate(static_cast<int>(FrameRate));
    format.setChannelCount(2);
    format.setSampleFormat(QAudioFormat::Int16);
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (!device.isNull()) {
        auto output = std::make_unique<SystemOutput>(device, format);
        if (output->works())
            return output;
    }
    return std::make_unique<SilentOutput>();
}

} // namespace cdrom
