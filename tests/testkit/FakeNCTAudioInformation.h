#pragma once

#include "base/RunTimeFailure.h"
#include "components/NCTAudioInformation.h"
#include "engines/tagfile/GenreNames.h"
#include "testkit/CallLog.h"

#include <QMap>
#include <functional>

/// The tag component over files that exist only in `files`. Each call but `GenreName` goes into the log:
/// "AInfo.ReadTags(path)", "AInfo.TagYear" when it is asked, "AInfo.TagYear = 1999" when it is set.
class FakeNCTAudioInformation : public NCTAudioInformation
{
public:
    enum class Kind { NoAudio, Mp3, Ogg, OtherAudio };

    struct File
    {
        Kind kind = Kind::Mp3;
        QString album = {}, artist = {}, title = {}, comment = {};
        qint32 year = 0;
        qint16 genre = 0;
        qint16 track = 0;
        bool writable = true;
    };

    explicit FakeNCTAudioInformation(CallLog &log) : m_log(log) {}

    std::function<void(TagWriting &)> onWrite; ///< runs inside a writing that is watched
    QMap<QString, File> files;                 ///< by path; a path that isn't here can't be read or written

    void ReadTags(const QString &path) override
    {
        add(QStringLiteral("ReadTags(%1)").arg(path));
        if (!files.contains(path))
            throw RunTimeFailure(RunTimeFailure::FileNotFound);
        const qint16 track = m_tags.track;
        m_tags = files[path];
        m_tags.track = track;
    }
    void WriteTags(const QString &path, TagWriting *watched = nullptr) override
    {
        add(QStringLiteral("WriteTags(%1)").arg(path));
        if (onWrite && watched)
            onWrite(*watched);
        if (!files.contains(path))
            throw RunTimeFailure(RunTimeFailure::FileNotFound);
        File &file = files[path];
        if (!file.writable)
            throw RunTimeFailure(RunTimeFailure::PermissionDenied);
        const Kind kind = file.kind;
        file = m_tags;
        file.kind = kind;
        file.writable = true;
    }
    QString GenreName(qint16 index) const override
    {
        if (index < 0 || index >= GenreCount)
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
        return GenreNames[index].toString();
    }

    QString TagAlbum() const override { return asked("TagAlbum", m_tags.album); }
    void setTagAlbum(const QString &album) override { set("TagAlbum", m_tags.album, album); }
    QString TagArtist() const override { return asked("TagArtist", m_tags.artist); }
    void setTagArtist(const QString &artist) override { set("TagArtist", m_tags.artist, artist); }
    QString TagComment() const override { return asked("TagComment", m_tags.comment); }
    void setTagComment(const QString &comment) override { set("TagComment", m_tags.comment, comment); }
    qint16 TagGenre() const override { return asked("TagGenre", m_tags.genre); }
    void setTagGenre(qint16 index) override { set("TagGenre", m_tags.genre, index); }
    QString TagTitle() const override { return asked("TagTitle", m_tags.title); }
    void setTagTitle(const QString &title) override { set("TagTitle", m_tags.title, title); }
    qint32 TagYear() const override { return asked("TagYear", m_tags.year); }
    void setTagYear(qint32 year) override { set("TagYear", m_tags.year, year); }
    void setTagTrack(qint16 track) override { set("TagTrack", m_tags.track, track); }

    bool IsMP3File(const QString &path) const override { return isKind("IsMP3File", path, {Kind::Mp3}); }
    bool IsOGGFile(const QString &path) const override { return isKind("IsOGGFile", path, {Kind::Ogg}); }
    bool IsAudioFile(const QString &path) const override
    {
        return isKind("IsAudioFile", path, {Kind::Mp3, Kind::Ogg, Kind::OtherAudio});
    }

private:
    static QString textOf(const QString &text) { return text; }
    static QString textOf(qint32 number) { return QString::number(number); }

    void add(const QString &call) const { m_log.add(QStringLiteral("AInfo.") + call); }
    template <typename Value>
    Value asked(const char *name, const Value &value) const
    {
        add(QLatin1StringView(name));
        return value;
    }
    template <typename Value>
    void set(const char *name, Value &member, const Value &value)
    {
        add(QStringLiteral("%1 = %2").arg(QLatin1StringView(name), textOf(value)));
        member = value;
    }
    bool isKind(const char *name, const QString &path, const QList<Kind> &kinds) const
    {
        add(QStringLiteral("%1(%2)").arg(QLatin1StringView(name), path));
        return files.contains(path) && kinds.contains(files[path].kind);
    }

    CallLog &m_log;
    File m_tags;
};
