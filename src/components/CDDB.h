#pragma once

#include <QObject>
#include <QString>
#include <QStringList>
#include <stop_token>

/// The FreeDB client: a bag of properties and two calls, each the whole exchange with the service. A call
/// blocks for about `TimeOut` seconds at most, never calls back, and reports every failure as a status code.
/// It may run in any thread while nobody else uses the client; a stop ends it soon, as without a connection.
/// The read properties stay as they are between the end of a call and the next one. The number behind each
/// operation is its dispatch id.
class CDDB : public QObject
{
    Q_OBJECT

public:
    enum QueryStatus { Found = 0, NotFound = 1 };
    enum SubmitStatus { Accepted = 0, Refused = 1 };
    enum FailureStatus { NoConnection = 2, OtherFailure = 3 }; ///< of both calls

    /// The service's categories, in the order in which they are asked and shown.
    inline static const QStringList Categories = {
        QStringLiteral("blues"), QStringLiteral("classical"), QStringLiteral("country"),
        QStringLiteral("data"),  QStringLiteral("folk"),      QStringLiteral("jazz"),
        QStringLiteral("misc"),  QStringLiteral("newage"),    QStringLiteral("reggae"),
        QStringLiteral("rock"),  QStringLiteral("soundtrack")};

    using QObject::QObject;

    virtual QString Artist() const = 0;                         // 1
    virtual void setArtist(const QString &artist) = 0;          // 1
    virtual qint32 DiscLength() const = 0;                      // 2, seconds
    virtual void setDiscLength(qint32 seconds) = 0;             // 2
    virtual void setNeedLogin(bool need) = 0;                   // 3
    virtual void setProxyPassword(const QString &password) = 0; // 4
    virtual void setProxyUser(const QString &user) = 0;         // 5
    virtual void setProxyPort(const QString &port) = 0;         // 6, decimal text, may be empty
    virtual void setProxyServer(const QString &server) = 0;     // 7
    virtual void setUseProxy(bool use) = 0;                     // 8
    virtual qint16 TrackCount() const = 0;                      // 9
    virtual void setTrackCount(qint16 count) = 0;               // 9
    virtual void setHostName(const QString &host) = 0;          // 10, "name" or "name:port"
    virtual void setTimeOut(const QString &seconds) = 0;        // 11, decimal text, may be empty
    virtual QString Titles() const = 0;                         // 12, joined by "|"
    virtual void setTitles(const QString &titles) = 0;          // 12
    virtual void setEmail(const QString &address) = 0;          // 13
    virtual QString Category() const = 0;                       // 14
    virtual void setCategory(const QString &category) = 0;      // 14
    virtual QString Year() const = 0;                           // 15
    virtual void setYear(const QString &year) = 0;              // 15
    virtual QString Comments() const = 0;                       // 16
    virtual void setComments(const QString &comments) = 0;      // 16
    virtual QString Album() const = 0;                          // 17
    virtual void setAlbum(const QString &album) = 0;            // 17
    virtual QString Genre() const = 0;                          // 18, a name
    virtual void setGenre(const QString &genre) = 0;            // 18
    virtual void setTrackOffsets(const QString &offsets) = 0;   // 19, start frames joined by "|"
    virtual qint16 QueryDisc(const QString &discId, const std::stop_token &stop) = 0;  // 20
    virtual qint16 SubmitDisc(const QString &discId, const std::stop_token &stop) = 0; // 21
};
