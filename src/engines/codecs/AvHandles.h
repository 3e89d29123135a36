#pragma once

#include <QString>
#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/channel_layout.h>
#include <libavutil/opt.h>
}

namespace codecs {

struct AvFree
{
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
};

using AvCodec = std::unique_ptr<AVCodecContext, AvFree>;
using AvFrame = std::unique_ptr<AVFrame, AvFree>;
using AvPacket = std::unique_ptr<AVPacket, AvFree>;

/// Raises RunTimeFailure 5 for a negative result of a libav call: `what`, a colon, the library's words.
int checkAv(int result, const char *what);

} // namespace codecs
