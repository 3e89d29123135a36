#include "engines/codecs/WmaFormats.h"

#include <algorithm>

namespace codecs {

namespace {

/// All combinations of the format.
constexpr WmaSettings Formats[] = {
    {8000, 2, 12},  {8000, 1, 5},    {8000, 1, 6},    {8000, 1, 8}, //
    {11025, 1, 8},  {11025, 1, 10},                                 //
    {16000, 2, 16}, {16000, 2, 20},  {16000, 1, 10},  {16000, 1, 12},  {16000, 1, 16}, {22050, 2, 20},
    {22050, 2, 22}, {22050, 2, 32},  {22050, 1, 16},  {22050, 1, 20},  {32000, 2, 32}, {32000, 2, 40},
    {32000, 2, 48}, {32000, 1, 20},  {32000, 1, 32},  {44100, 2, 32},  {44100, 2, 48}, {44100, 2, 64},
    {44100, 2, 80}, {44100, 2, 96},  {44100, 2, 128}, {44100, 2, 160}, {44100, 1, 32}, {44100, 1, 48}, //
    {48000, 2, 96}, {48000, 2, 128}, {48000, 2, 160},
};

} // namespace

bool wmaFormatExists(const WmaSettings &settings)
{
    return std::find(std::begin(Formats), std::end(Formats), settings) != std::end(Formats);
}

bool wmaFormatWritable(const WmaSettings &settings)
{
    return wmaFormatExists(settings) && settings.bitRate >= LowestWritableWmaBitRate;
}

bool wmaBitRateWritable(int bitRate, int channels)
{
    return std::any_of(std::begin(Formats), std::end(Formats), [=](const WmaSettings &format) {
        return format.bitRate == bitRate && format.channels == channels && wmaFormatWritable(format);
    });
}

} // namespace codecs
