#pragma once

#include "engines/codecs/Encoder.h"

#include <memory>
#include <vector>

struct AVFrame;
struct SwrContext;

namespace audiofile {

/// Brings decoded frames of any sample format, channels and rate to one PCM format. All may change from frame
/// to frame, as in files that were joined. Numbers of more than 16 bits are rounded, more than two channels
/// are mixed down; 16-bit sound of the right format passes untouched.
class FrameConverter
{
public:
    explicit FrameConverter(const codecs::PcmFormat &output) : m_output(output) {}

    /// Appends to `samples` what comes of a stretch of the frame, which begins at its sample number `from`,
    /// and gives the number behind it. A stretch is short enough to be no burden, whatever its rate.
    int convert(const AVFrame &frame, int from, std::vector<qint16> &samples);
    /// Appends what a change of rate still holds back.
    void finish(std::vector<qint16> &samples);

private:
    struct Free
    {
        void operator()(SwrContext *context) const;
    };

    void setUp(const AVFrame &frame);
    void pass(const std::uint8_t *const *planes, int frames, std::vector<qint16> &samples);

    const codecs::PcmFormat m_output;
    std::unique_ptr<SwrContext, Free> m_context;
    int m_sampleFormat = -1;
    int m_channels = 0;
    int m_rate = 0;
};

} // namespace audiofile
