#pragma once

#include "components/NCTAudioFile.h"
#include "engines/audiofile/Mp3Options.h"
#include "engines/audiofile/OutputFormat.h"
#include "engines/audiofile/ReadAhead.h"
#include "files/WholeFile.h"

namespace audiofile {

/// Files that are read are opened and decoded ahead in a thread, which is left behind where it hangs. Files
/// that are written take their name when `CloseFile` finishes them; one that met a failure, or that
/// `DropFile`, another `OpenWrite` or the end of the object overtakes, is dropped. One that takes the place
/// of an older file is read back before. All failures are RunTimeFailures, for want of memory (7), too, and
/// leave a trace in the log. All calls come from one thread, whose events without user input go on while
/// `CloseFile` waits for the encoders and the disk.
class AudioFile final : public NCTAudioFile
{
public:
    explicit AudioFile(QObject *parent = nullptr);

    void OpenRead(const QString &path) override;
    void CloseFile() override;
    void DropFile() override { m_target.reset(); }
    void OpenWrite(const QString &path) override;
    void WriteSamples(const QList<qint16> &samples) override;
    QList<qint16> ReadSamples(qint32 count) override;
    qint32 DurationSeconds() const override;
    qint32 SamplesPerSecond() const override;
    QString FormatString() const override;
    qint32 Status() const override { return m_status; }
    qint32 ChannelCount() const override;
    qint32 SampleRate() const override;
    void SetWAVFormat(qint32 rate, qint32 channels, qint32 bitsPerSample) override;
    void SetInputFormat(qint32 rate, qint32 channels) override;
    void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate) override;
    void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum) override;
    void SetOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum, qint32 maximum,
                      qint16 quality) override;
    void SelectWMAProfile(qint32 profile) override;
    /// Nothing to do: all that can be written is on offer always.
    void setExtendedFormats(bool) override {}
    void setWhileReading(std::function<bool()> goOn) override { m_goOn = std::move(goOn); }
    NCTMP3Options &MP3Options() override { return m_mp3; }
    bool CheckOGGFormat(qint32 rate, qint32 channels, qint32 bitRate, qint32 minimum,
                        qint32 maximum) const override;

private:
    /// A file in the making. The encoder comes once the input's format is known.
    struct Target
    {
        Target(const QString &target, std::shared_ptr<const codecs::EncoderRecipe> format)
            : path(target), file(target), recipe(std::move(format))
        {}
        codecs::Encoder &encoderOf(const codecs::PcmFormat &input);
        void finish(const codecs::PcmFormat &input);

        const QString path;
        files::WholeFile file;
        const std::shared_ptr<const codecs::EncoderRecipe> recipe;
        std::unique_ptr<codecs::Encoder> encoder;
        qint64 frames = 0; ///< that it was given
    };

    void setOutput(const OutputFormat &format);
    codecs::PcmFormat sourceFormat() const;

    Mp3Options m_mp3;
    OutputFormat m_output;
    std::optional<QString> m_sourceText; ///< while it's the source that is described
    qint32 m_status = 0;
    QString m_sourcePath;
    std::function<bool()> m_goOn;
    std::unique_ptr<ReadAhead> m_source;
    std::unique_ptr<Target> m_target;
    codecs::PcmFormat m_input;
};

} // namespace audiofile
