#pragma once

#include "base/LooseThread.h"
#include "engines/cdrom/AudioOutput.h"
#include "engines/cdrom/Drive.h"

namespace cdrom {

/// Plays one track at a time, from a thread of its own, so that nobody waits for drive or sound system. All
/// operations belong to one thread; each returns at once and shows in `state` at once.
class Player
{
public:
    enum class State { Idle, Playing, Paused };

    explicit Player(MakeOutput makeOutput = makeAudioOutput);
    ~Player();
    Player(const Player &) = delete;
    Player &operator=(const Player &) = delete;

    /// From the track's start, whatever is being played.
    void play(std::shared_ptr<Drive> drive, const DiscTrack &track);
    /// Does nothing unless something is playing.
    void pause();
    /// Goes on at the very sample; does nothing unless paused.
    void resume();
    void stop();
    /// Idle when the track has been heard to its end, too.
    State state() const;

private:
    struct Work;
    void change(State from, State to);

    std::shared_ptr<Work> m_work;
    LooseThread m_thread; ///< from the first track on
};

} // namespace cdrom
