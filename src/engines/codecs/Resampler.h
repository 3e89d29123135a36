#pragma once

struct SwrContext;

namespace codecs {

/// Lets libswresample work in floating point, with one rounding at the end, and by the resampler that is fit
/// for the change. To be called before it is initialized.
void chooseResampler(SwrContext *context, int fromRate, int toRate);

} // namespace codecs
