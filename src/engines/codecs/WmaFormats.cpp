#include "engines/codecs/WmaFormats.h"

#include "engines/wma/Tables.h"

#include <algorithm>

namespace codecs {

bool wmaIsAvailable()
{
    return wma::measuredTables() != nullptr;
}

bool wmaFormatWritable(const WmaSettings &settings)
{
    const auto &kinds = wma::StreamKinds;
    return wmaIsAvailable() && std::find(std::begin(kinds), std::end(kinds), settings) != std::end(kinds);
}

bool wmaBitRateWritable(int bitRate, int channels)
{
    return std::any_of(std::begin(WmaRates), std::end(WmaRates), [=](int rate) {
        return wmaFormatWritable({rate, channels, bitRate});
    });
}

} // namespace codecs
