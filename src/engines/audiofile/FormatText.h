#pragma once

#include "engines/audiofile/OutputFormat.h"

#include <QString>

struct AVCodecParameters;
struct AVFormatContext;

namespace audiofile {

/// Lines for people, all in one style: format, rate, channels, bit rate and mode. Empty for an output that
/// can't be written.
QString outputText(const OutputFormat &format);
QString sourceText(const AVFormatContext &container, const AVCodecParameters &sound);

} // namespace audiofile
