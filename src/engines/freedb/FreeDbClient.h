#pragma once

#include "components/CDDB.h"
#include "engines/net/HttpExchange.h"

namespace engines {

namespace freedb {
struct DiscEntry;
}

/// The FreeDB client on HTTP. What the service says when it refuses goes to the program's standard error.
class FreeDbClient : public CDDB
{
    Q_OBJECT

public:
    using CDDB::CDDB;

    QString Artist() const override { return m_artist; }
    void setArtist(const QString &artist) override { m_artist = artist; }
    qint32 DiscLength() const override { return m_discLength; }
    void setDiscLength(qint32 seconds) override { m_discLength = seconds; }
    void setNeedLogin(bool need) override { m_proxy.needsLogin = need; }
    void setProxyPassword(const QString &password) override { m_proxy.password = password; }
    void setProxyUser(const QString &user) override { m_proxy.user = user; }
    void setProxyPort(const QString &port) override { m_proxy.port = port; }
    void setProxyServer(const QString &server) override { m_proxy.server = server; }
    void setUseProxy(bool use) override { m_useProxy = use; }
    qint16 TrackCount() const override { return m_trackCount; }
    void setTrackCount(qint16 count) override { m_trackCount = count; }
    void setHostName(const QString &host) override { m_hostName = host; }
    void setTimeOut(const QString &seconds) override { m_timeOut = seconds; }
    QString Titles() const override { return m_titles; }
    void setTitles(const QString &titles) override { m_titles = titles; }
    void setEmail(const QString &address) override { m_email = address; }
    QString Category() const override { return m_category; }
    void setCategory(const QString &category) override { m_category = category; }
    QString Year() const override { return m_year; }
    void setYear(const QString &year) override { m_year = year; }
    QString Comments() const override { return m_comments; }
    void setComments(const QString &comments) override { m_comments = comments; }
    QString Album() const override { return m_album; }
    void setAlbum(const QString &album) override { m_album = album; }
    QString Genre() const override { return m_genre; }
    void setGenre(const QString &genre) override { m_genre = genre; }
    void setTrackOffsets(const QString &offsets) override { m_trackOffsets = offsets; }
    /// Asks every category, since only the id is known, and takes the best entry that it finds. What was
    /// found counts, even where a later category can't be asked any more. Only a find changes the properties.
    qint16 QueryDisc(const QString &discId, const std::stop_token &stop) override;
    qint16 SubmitDisc(const QString &discId, const std::stop_token &stop) override;

private:
    net::Route route() const;
    void take(const freedb::DiscEntry &entry, const QString &category);

    QString m_hostName;
    bool m_useProxy = false;
    net::Route::Proxy m_proxy;
    QString m_timeOut;

    QString m_album;
    QString m_artist;
    QString m_category;
    QString m_genre;
    QString m_year;
    QString m_comments;
    QString m_email;
    QString m_titles;
    QString m_trackOffsets;
    qint32 m_discLength = 0;
    qint16 m_trackCount = 0;
};

} // namespace engines
