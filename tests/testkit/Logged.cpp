#include "testkit/Logged.h"

#include <QMap>
#include <mutex>

namespace {

struct Kept
{
    std::mutex mutex;
    QMap<QByteArray, QStringList> messages;
};

Kept &kept()
{
    static Kept kept;
    return kept;
}

} // namespace

QStringList takeLogged(const char *category)
{
    const std::lock_guard lock(kept().mutex);
    return kept().messages.take(category);
}

void keepLogged(const char *category, const QString &message)
{
    const std::lock_guard lock(kept().mutex);
    kept().messages[category] += message;
}
