#pragma once

#include "engines/audiofile/AvFile.h"
#include "engines/audiofile/FrameConverter.h"

#include <QString>
#include <optional>
#include <stop_token>

namespace audiofile {

/// Decodes a file of any of the four formats, recognised by what it holds. What encoders added in front and
/// behind is cut off again where the file tells how much it was. Faulty places are passed over. Whatever
/// a file says, its head costs no more than about a second of work, and a reading no more than some
/// megabytes. Any one thread at a time.
class AudioSource
{
public:
    /// Failure 53 or 75 for a file that can't be read, 70 for one that is protected, 5 for one in which
    /// there's no sound of these formats. A stop that is requested ends any reading as a fault of the device
    /// would.
    explicit AudioSource(const QString &path, std::stop_token stop = {});

    const codecs::PcmFormat &format() const { return m_format; }
    /// To the nearest one, but no sound is so short that it had none; 0 for no sound at all.
    int seconds() const { return m_seconds; }
    /// A line for people.
    const QString &description() const { return m_description; }

    /// The next samples, interleaved; none at the end. Failure 57 for a fault of the device, 5 for a file
    /// that asks for too much.
    std::vector<qint16> read();
    /// At the end: whether the file held less than it should, or places that couldn't be read.
    bool isDamaged() const { return m_faulty || !m_complete; }

private:
    struct Close
    {
        void operator()(AVFormatContext *format) const { avformat_close_input(&format); }
    };

    void openContainer();
    void openDecoder();
    void findLength();
    bool decodeMore();
    bool takeFrame();
    bool sendPacket();
    void end();
    void cutTail();
    bool hasAllItSpeaksOf() const;

    AvFile m_file;
    std::unique_ptr<AVFormatContext, Close> m_container;
    int m_stream = -1;
    codecs::AvCodec m_decoder;
    codecs::AvPacket m_packet;
    codecs::AvFrame m_frame; ///< what was decoded last
    int m_taken = 0;         ///< so many of its samples were converted
    codecs::PcmFormat m_format;
    int m_seconds = 0;
    QString m_description;
    std::optional<FrameConverter> m_converter;
    std::vector<qint16> m_decoded; ///< and not yet given away
    qint64 m_framesGiven = 0;
    qint64 m_packetTime = 0;        ///< of all packets, in the stream's unit
    std::optional<qint64> m_length; ///< in frames, where the file tells it and the decoder doesn't keep to it
    qint64 m_skip = 0;              ///< so many frames more of the beginning aren't sound
    int m_heldFrames = 0;           ///< so many are kept back until the end is known
    bool m_draining = false;        ///< the decoder gives what it has left
    bool m_ended = false;
    bool m_faulty = false;
    bool m_complete = true;
    int m_faultsInARow = 0;
};

} // namespace audiofile
