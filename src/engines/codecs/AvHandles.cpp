#include "engines/codecs/AvHandles.h"

#include "base/RunTimeFailure.h"

namespace codecs {

int checkAv(int result, const char *what)
{
    if (result >= 0)
        return result;
    char words[AV_ERROR_MAX_STRING_SIZE] = {};
    av_strerror(result, words, sizeof words);
    throw RunTimeFailure(RunTimeFailure::InvalidCall,
                         QStringLiteral("%1: %2").arg(QLatin1String(what), QString::fromUtf8(words)));
}

} // namespace codecs
