#include "engines/tagfile/AudioInformation.h"

#include "base/Log.h"
#include "base/RegularFile.h"
#include "base/RunTimeFailure.h"
#include "base/Task.h"
#include "engines/tagfile/AudioKind.h"
#include "engines/tagfile/GenreNames.h"
#include "engines/tagfile/Mp3Tags.h"
#include "engines/tagfile/OggTags.h"
#include "files/FileAttributes.h"
#include "files/WholeFile.h"

#include <QFile>
#include <QFileInfo>

namespace engines {

namespace {

/// The way a kind of file keeps its tags.
struct TagFormat
{
    TagFields (*read)(QIODevice &file);
    TagEdit (*edit)(QIODevice &file, const TagFields &fields);
};

TagFormat formatOf(QIODevice &file)
{
    switch (audioKind(file)) {
    case AudioKind::Mp3:
        return {readMp3Tags, editMp3Tags};
    case AudioKind::OggVorbis:
        return {readOggTags, editOggTags};
    default:
        throw RunTimeFailure(RunTimeFailure::InvalidCall);
    }
}

/// Tells the one who waits how far the writing is, and ends it when that is asked for.
class WatchedSink final : public files::ByteSink
{
public:
    WatchedSink(files::ByteSink &sink, TagWriting &watched) : m_sink(sink), m_watched(watched) {}

    void write(const std::uint8_t *bytes, std::size_t count) override
    {
        endIfStopped();
        m_sink.write(bytes, count);
        m_watched.written += static_cast<qint64>(count);
    }
    std::int64_t takeOver(int descriptor, std::int64_t begin, std::int64_t count) override
    {
        endIfStopped();
        const std::int64_t taken = m_sink.takeOver(descriptor, begin, count);
        m_watched.written += taken;
        return taken;
    }
    void seek(std::int64_t position) override { m_sink.seek(position); }

private:
    void endIfStopped() const
    {
        if (m_watched.stop.stop_requested())
            throw TaskCancelled();
    }

    files::ByteSink &m_sink;
    TagWriting &m_watched;
};

TagFields readFields(const QString &path)
{
    QFile file;
    openRegularFile(file, path, QIODevice::ReadOnly);
    return formatOf(file).read(file);
}

/// Whether a file just written holds the fields; one that can't be understood doesn't.
bool readsBack(const QString &path, const TagFields &fields)
{
    try {
        return readFields(path) == fields;
    } catch (const RunTimeFailure &) {
        return false;
    }
}

void writeFields(const QString &path, const TagFields &fields, TagWriting &writing)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    QFile file;
    openRegularFile(file, target, QIODevice::ReadOnly);
    if (!files::isWritable(target))
        throw RunTimeFailure(RunTimeFailure::PermissionDenied);
    const TagFormat format = formatOf(file);
    const TagEdit writeEdited = format.edit(file, fields);
    if (!writeEdited)
        return;
    files::WholeFile copy(target);
    writing.expected = file.size();
    WatchedSink sink(copy, writing);
    writeEdited(sink);
    copy.flush();
    if (!readsBack(copy.temporaryPath(), fields))
        throw RunTimeFailure(RunTimeFailure::DeviceIoError, QStringLiteral("The tags didn't read back"));
    copy.commit();
}

AudioKind kindOf(const QString &path)
{
    try {
        QFile file;
        openRegularFile(file, path, QIODevice::ReadOnly);
        return audioKind(file);
    } catch (const RunTimeFailure &) {
        return AudioKind::NoAudio;
    }
}

} // namespace

void AudioInformation::ReadTags(const QString &path)
{
    m_fields = traced(logTags, path, [&] { return readFields(path); });
}

void AudioInformation::WriteTags(const QString &path, TagWriting *watched)
{
    TagWriting nobody;
    traced(logTags, path, [&] { writeFields(path, m_fields.writable(), watched ? *watched : nobody); });
}

QString AudioInformation::GenreName(qint16 index) const
{
    if (index < 0 || index >= GenreCount)
        throw RunTimeFailure(RunTimeFailure::InvalidCall);
    return GenreNames[index].toString();
}

bool AudioInformation::IsMP3File(const QString &path) const
{
    return kindOf(path) == AudioKind::Mp3;
}

bool AudioInformation::IsOGGFile(const QString &path) const
{
    return kindOf(path) == AudioKind::OggVorbis;
}

bool AudioInformation::IsAudioFile(const QString &path) const
{
    return kindOf(path) != AudioKind::NoAudio;
}

} // namespace engines
