#pragma once

#include "files/ByteSink.h"

#include <QString>
#include <functional>
#include <memory>

namespace codecs {

/// Interleaved signed 16-bit PCM.
struct PcmFormat
{
    int rate = 44100; ///< hertz
    int channels = 2; ///< 1 or 2

    bool operator==(const PcmFormat &) const = default;
};

/// Encodes one stream of PCM. It knows nothing of files. The same samples give the same bytes whatever their
/// division into calls, and whatever the number of threads that work inside; any number of encoders work at a
/// time. The sink is written to by the calling thread alone.
class Encoder
{
public:
    virtual ~Encoder() = default;

    /// `frames` sample frames, in any amount; a frame is one sample of each channel. Raises a RunTimeFailure
    /// (the sink's, or 5 where the library refuses), after which the stream is lost.
    virtual void encode(const qint16 *samples, qsizetype frames) = 0;
    /// Writes what is left and completes the headers; nothing follows.
    virtual void finish() = 0;

    /// `call` is called every 20 milliseconds while a call waits for threads that work inside. What it raises
    /// ends the waiting call, and the stream is lost.
    virtual void whileWaiting(std::function<void()> call) { Q_UNUSED(call) }
};

/// Settings of an encoder as they were when the recipe was taken, known to be possible. It makes encoders on
/// any thread.
class EncoderRecipe
{
public:
    virtual ~EncoderRecipe() = default;

    /// `input` is what `encode` will get; the encoder resamples and remixes where its output is another.
    /// `output` must outlive the encoder; the first bytes may go there at once. `threads` is the most that
    /// work on the stream at a time; 0 stands for as many as there are cores.
    virtual std::unique_ptr<Encoder> create(const PcmFormat &input, files::ByteSink &output,
                                            int threads = 0) const = 0;
};

/// What the inner objects of the encoder components offer to the engines.
class EncoderSource
{
public:
    virtual ~EncoderSource() = default;

    /// Raises RunTimeFailure 5, with a clear description, for settings that can't be written.
    virtual std::shared_ptr<const EncoderRecipe> recipe() const = 0;
};

} // namespace codecs
