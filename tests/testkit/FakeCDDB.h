#pragma once

#include "base/Numbers.h"
#include "base/RunTimeFailure.h"
#include "components/CDDB.h"
#include "testkit/CallLog.h"

#include <functional>
#include <future>

/// A FreeDB client whose service is the test. Every write and both calls go into the log: "CDDB.TimeOut =
/// 30", "CDDB.QueryDisc(0a0b0c03)".
class FakeCDDB : public CDDB
{
public:
    struct Entry
    {
        QString album, artist, category, genre, year, comments, titles;
        qint32 discLength = 0;
        qint16 trackCount = 0;
    };

    explicit FakeCDDB(CallLog &log) : m_log(log) {}

    qint16 status = 0;            ///< what both calls give
    Entry entry;                  ///< the properties that can be read
    std::function<void()> onCall; ///< runs inside either call, beside the window; may raise a failure
    std::function<void()> onStop; ///< runs inside either call, which then waits to be stopped
    QString failing;              ///< the property whose writing fails, say "HostName"
    QString failingRead;          ///< the property whose reading fails

    QString Artist() const override { return read("Artist", entry.artist); }
    void setArtist(const QString &artist) override { write("Artist", artist, &entry.artist); }
    qint32 DiscLength() const override { return read("DiscLength", entry.discLength); }
    void setDiscLength(qint32 seconds) override
    {
        write("DiscLength", QString::number(seconds));
        entry.discLength = seconds;
    }
    void setNeedLogin(bool need) override { write("NeedLogin", yesNoText(need)); }
    void setProxyPassword(const QString &password) override { write("ProxyPassword", password); }
    void setProxyUser(const QString &user) override { write("ProxyUser", user); }
    void setProxyPort(const QString &port) override { write("ProxyPort", port); }
    void setProxyServer(const QString &server) override { write("ProxyServer", server); }
    void setUseProxy(bool use) override { write("UseProxy", yesNoText(use)); }
    qint16 TrackCount() const override { return read("TrackCount", entry.trackCount); }
    void setTrackCount(qint16 count) override
    {
        write("TrackCount", QString::number(count));
        entry.trackCount = count;
    }
    void setHostName(const QString &host) override { write("HostName", host); }
    void setTimeOut(const QString &seconds) override { write("TimeOut", seconds); }
    QString Titles() const override { return read("Titles", entry.titles); }
    void setTitles(const QString &titles) override { write("Titles", titles, &entry.titles); }
    void setEmail(const QString &address) override { write("Email", address); }
    QString Category() const override { return read("Category", entry.category); }
    void setCategory(const QString &category) override { write("Category", category, &entry.category); }
    QString Year() const override { return read("Year", entry.year); }
    void setYear(const QString &year) override { write("Year", year, &entry.year); }
    QString Comments() const override { return read("Comments", entry.comments); }
    void setComments(const QString &comments) override { write("Comments", comments, &entry.comments); }
    QString Album() const override { return read("Album", entry.album); }
    void setAlbum(const QString &album) override { write("Album", album, &entry.album); }
    QString Genre() const override { return read("Genre", entry.genre); }
    void setGenre(const QString &genre) override { write("Genre", genre, &entry.genre); }
    void setTrackOffsets(const QString &offsets) override { write("TrackOffsets", offsets); }
    qint16 QueryDisc(const QString &discId, const std::stop_token &stop) override
    {
        return call("QueryDisc", discId, stop);
    }
    qint16 SubmitDisc(const QString &discId, const std::stop_token &stop) override
    {
        return call("SubmitDisc", discId, stop);
    }

private:
    template <typename Value>
    Value read(const char *name, const Value &value) const
    {
        if (failingRead == QLatin1StringView(name))
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
        return value;
    }
    void write(const char *name, const QString &value, QString *kept = nullptr)
    {
        m_log.add(QStringLiteral("CDDB.%1 = %2").arg(QLatin1StringView(name), value));
        if (failing == QLatin1StringView(name))
            throw RunTimeFailure(RunTimeFailure::InvalidCall);
        if (kept)
            *kept = value;
    }
    qint16 call(const char *name, const QString &discId, const std::stop_token &stop)
    {
        m_log.add(QStringLiteral("CDDB.%1(%2)").arg(QLatin1StringView(name), discId));
        if (onCall)
            onCall();
        if (onStop) {
            std::promise<void> stopped;
            const std::stop_callback callback(stop, [&] { stopped.set_value(); });
            onStop();
            stopped.get_future().wait();
            return NoConnection;
        }
        return status;
    }

    CallLog &m_log;
};
