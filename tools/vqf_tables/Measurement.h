#pragma once

#include "FrameProbe.h"
#include "engines/vqf/Tables.h"

namespace vqf {

// Each measures a part of the tables from a decoder, in this order; a std::runtime_error says what doesn't
// fit.
void measureMainBooks(FrameProbe &probe, Tables &tables);
void measurePeakBooks(FrameProbe &probe, Tables &tables);
void measureEnvelopes(FrameProbe &probe, Tables &tables);
void measureLsp(FrameProbe &probe, Tables &tables);

} // namespace vqf
