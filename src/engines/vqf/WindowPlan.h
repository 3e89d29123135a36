#pragma once

#include "engines/dsp/AttackDetector.h"
#include "engines/vqf/WindowTrial.h"

#include <deque>

namespace vqf {

/// Whether a frame in window `next` may follow one in window `window`: the slopes between them must be the
/// same. That leaves no single long frame between others, and no single medium one between short ones.
bool follows(int window, int next);

/// Chooses the windows, looking ahead: the cheapest succession of those that may follow each other.
class WindowPlan
{
public:
    WindowPlan();

    /// Takes the next FrameSize samples of left and right, in 16-bit units, and what the windows of the frame
    /// between those before and these would cost. The first frame has silence before it.
    void push(const float *left, const float *right, const WindowCosts &costs);
    /// The window of the next frame, the first one of those pushed that has none yet. The more frames behind
    /// it have been pushed, the better.
    int next();

private:
    struct Block
    {
        std::array<float, 16> attacks{}; ///< of its segments, the channels' larger ones
        double energy = 0;
        double changes = 0; ///< energy of the difference from sample to sample
    };

    bool isSilent() const;
    bool hasSharpAttack() const;

    std::array<dsp::AttackDetector, Channels> m_detectors;
    Block m_last, m_new;
    std::deque<WindowCosts> m_costs; ///< of the frames to come
    int m_window;                    ///< of the frame before
};

} // namespace vqf
