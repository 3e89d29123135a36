#pragma once

#include <QtGlobal>
#include <functional>
#include <memory>

namespace cdrom {

/// Where a disc's sound goes: frames of two 16-bit samples, 44100 a second. One thread.
class AudioOutput
{
public:
    virtual ~AudioOutput() = default;

    /// How many frames it takes now.
    virtual qsizetype room() = 0;
    /// Takes at most so many frames, and gives how many it took.
    virtual qsizetype write(const qint16 *samples, qsizetype frames) = 0;
    /// While paused nothing is heard, and nothing that was taken is lost.
    virtual void setPaused(bool paused) = 0;
    /// Whether sound can still be heard: devices go away.
    virtual bool works() const { return true; }
    /// Whether all that it took was heard.
    virtual bool isDry() = 0;
};

using MakeOutput = std::function<std::unique_ptr<AudioOutput>()>;

/// Keeps time and is silent.
class SilentOutput : public AudioOutput
{
public:
    /// Asks that clock for the time in nanoseconds, or the system's.
    explicit SilentOutput(std::function<qint64()> clock = {});

    qsizetype room() override;
    qsizetype write(const qint16 *samples, qsizetype frames) override;
    void setPaused(bool paused) override;
    bool isDry() override;

private:
    void passTime();

    const std::function<qint64()> m_clock;
    qint64 m_passed;      ///< by the clock, and counted
    double m_waiting = 0; ///< frames taken and not yet "heard"
    bool m_paused = false;
};

/// The system's sound output, or a silent one where there is none. To be called on a thread that handles
/// events now and then.
std::unique_ptr<AudioOutput> makeAudioOutput();

} // namespace cdrom
