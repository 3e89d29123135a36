#include "fuzz/Target.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>
#include <ogg/ogg.h>

namespace fuzz {

void require(bool holds, const char *words)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken: %s\n", words);
    std::abort();
}

QByteArray withPageChecksums(QByteArray input)
{
    constexpr qsizetype HeadBytes = 27;
    for (qsizetype at = input.indexOf("OggS"); at >= 0; at = input.indexOf("OggS", at + 4)) {
        if (input.size() - at < HeadBytes)
            break;
        auto *bytes = reinterpret_cast<unsigned char *>(input.data() + at);
        const qsizetype head = HeadBytes + bytes[26];
        if (input.size() - at < head)
            break;
        qsizetype body = 0;
        for (qsizetype i = HeadBytes; i < head; ++i)
            body += bytes[i];
        if (input.size() - at < head + body)
            break;
        ogg_page page{bytes, long(head), bytes + head, long(body)};
        ogg_page_checksum_set(&page);
    }
    return input;
}

const QTemporaryDir &folder()
{
    static const QString memory = QStringLiteral("/dev/shm");
    static const QTemporaryDir made(QDir(QFileInfo(memory).isWritable() ? memory : QDir::tempPath())
                                        .filePath(QStringLiteral("fuzz-XXXXXX")));
    return made;
}

QString fileOf(const QString &name, const QByteArray &content)
{
    const QString path = folder().filePath(name);
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "the folder for inputs can't be written");
    return path;
}

} // namespace fuzz
