#pragma once

#include "components/CDRipperX.h"

#include <QFileInfo>
#include <QStringList>
#include <functional>

/// Hears an engine's five signals and writes each down: "prepared", "start a.wav 0-99 #1", "status 14",
/// "finished", "complete". Progress is kept apart.
class SignalLog : public QObject
{
public:
    explicit SignalLog(CDRipperX &engine)
    {
        connect(&engine, &CDRipperX::ExtractionPrepared, this, [this] { add(QStringLiteral("prepared")); });
        connect(&engine, &CDRipperX::ExtractionComplete, this, [this] {
            complete = true;
            add(QStringLiteral("complete"));
        });
        connect(&engine, &CDRipperX::TrackStarted, this,
                [this](const QString &file, qint32 first, qint32 last, qint32 tag) {
                    const QString name = QFileInfo(file).fileName();
                    add(QStringLiteral("start %1 %2-%3 #%4").arg(name).arg(first).arg(last).arg(tag));
                });
        connect(&engine, &CDRipperX::TrackFinished, this, [this] { add(QStringLiteral("finished")); });
        connect(&engine, &CDRipperX::ExtractionStatus, this, [this](qint32 code, qint32 value) {
            if (code == CDRipperX::Progress)
                progress.append(value);
            else
                add(QStringLiteral("status %1").arg(code));
            onStatus(code);
        });
    }

    QStringList take() { return std::exchange(m_log, {}); }

    QList<qint32> progress;
    bool complete = false;
    std::function<void(qint32 code)> onStatus = [](qint32) {};
    std::function<void(const QString &entry)> onEntry = [](const QString &) {};

private:
    void add(const QString &entry)
    {
        m_log.append(entry);
        onEntry(entry);
    }

    QStringList m_log;
};
