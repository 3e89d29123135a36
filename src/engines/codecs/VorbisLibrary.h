#pragma once

#include "engines/codecs/VorbisEncoder.h"

#include <vorbis/vorbisenc.h>

namespace codecs {

/// What libvorbis makes of settings: sizes of blocks, codebooks, tables.
class VorbisInfo
{
public:
    VorbisInfo() { vorbis_info_init(&m_info); }
    ~VorbisInfo() { vorbis_info_clear(&m_info); }
    VorbisInfo(const VorbisInfo &) = delete;
    VorbisInfo &operator=(const VorbisInfo &) = delete;

    /// False where the library refuses.
    bool setUp(const VorbisSettings &settings);
    vorbis_info *get() { return &m_info; }

private:
    vorbis_info m_info;
};

/// libvorbis' objects of one encoder.
class VorbisAnalysis
{
public:
    /// Raises RunTimeFailure 5 where the library refuses the settings.
    explicit VorbisAnalysis(const VorbisSettings &settings);
    ~VorbisAnalysis();
    VorbisAnalysis(const VorbisAnalysis &) = delete;
    VorbisAnalysis &operator=(const VorbisAnalysis &) = delete;

    /// At least one frame.
    void feed(const qint16 *samples, int frames);
    /// Behind the last frame.
    void end() { vorbis_analysis_wrote(&dsp, 0); }

private:
    VorbisInfo m_info; // outlives the rest

public:
    vorbis_dsp_state dsp;
    vorbis_block block;
};

/// An Ogg stream in the making: the headers, then the packets of sound.
class VorbisFile
{
public:
    /// Writes the headers; they depend on the settings alone.
    VorbisFile(VorbisAnalysis &analysis, files::ByteSink &sink);

    /// The packet's number is given here.
    void add(ogg_packet packet);
    void finish();

private:
    struct ClearStream
    {
        void operator()(ogg_stream_state *stream) const;
    };

    void writePages(int (*next)(ogg_stream_state *, ogg_page *));

    files::ByteSink &m_sink;
    const std::unique_ptr<ogg_stream_state, ClearStream> m_pages;
    ogg_int64_t m_number = 0;
};

} // namespace codecs
