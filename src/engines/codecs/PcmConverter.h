#pragma once

#include "engines/codecs/Encoder.h"

#include <memory>
#include <span>
#include <vector>

struct SwrContext;

namespace codecs {

/// Changes the rate and the number of channels of a stream. The sound keeps its place and its length: of n
/// frames come n * output rate / input rate, rounded. Mono goes to both channels; two channels go to their
/// mean. One stream per object, any one thread at a time.
class PcmConverter
{
public:
    PcmConverter(const PcmFormat &input, const PcmFormat &output);

    /// What is ready; valid until the next call.
    std::span<const qint16> convert(const qint16 *samples, int frames);
    /// The rest.
    std::span<const qint16> finish();

private:
    struct Free
    {
        void operator()(SwrContext *context) const;
    };

    int pass(const qint16 *samples, int frames);

    const PcmFormat m_input;
    const PcmFormat m_output;
    std::unique_ptr<SwrContext, Free> m_context;
    std::vector<qint16> m_converted;
    qint64 m_framesIn = 0;
    qint64 m_framesOut = 0;
};

} // namespace codecs
