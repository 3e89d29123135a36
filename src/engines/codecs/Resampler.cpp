#include "engines/codecs/Resampler.h"

#include "engines/codecs/AvHandles.h"

namespace codecs {

void chooseResampler(SwrContext *context, int fromRate, int toRate)
{
    // The better one works in blocks of its input, of which a single one may be minutes long at such rates.
    constexpr int MostTimes = 32;
    if (toRate / fromRate < MostTimes)
        av_opt_set(context, "resampler", "soxr", 0);
    av_opt_set_sample_fmt(context, "internal_sample_fmt", AV_SAMPLE_FMT_FLTP, 0);
}

} // namespace codecs
