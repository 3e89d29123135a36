#include "engines/audiofile/AsfProtection.h"

#include <QByteArrayView>
#include <QtEndian>
#include <algorithm>

namespace audiofile {

namespace {

/// What an object is, as in the file.
using Kind = QByteArrayView;
constexpr Kind Header("\x30\x26\xb2\x75\x8e\x66\xcf\x11\xa6\xd9\x00\xaa\x00\x62\xce\x6c", 16);
constexpr Kind HeaderExtension("\xb5\x03\xbf\x5f\x2e\xa9\xcf\x11\x8e\xe3\x00\xc0\x0c\x20\x53\x65", 16);
constexpr Kind StreamProperties("\x91\x07\xdc\xb7\xb7\xa9\xcf\x11\x8e\xe6\x00\xc0\x0c\x20\x53\x65", 16);
constexpr Kind Encryptions[] = {
    {"\xfb\xb3\x11\x22\x23\xbd\xd2\x11\xb4\xb7\x00\xa0\xc9\x55\xfc\x6e", 16}, // content
    {"\x14\xe6\x8a\x29\x22\x26\x17\x4c\xb9\x35\xda\xe0\x7e\xe9\x28\x9c", 16}, // extended
    {"\x33\x85\x05\x43\x81\x69\xe6\x49\x9b\x74\xad\x12\xcb\x86\xd5\x8c", 16}, // advanced
};

constexpr qint64 HeadBytes = 24; ///< of an object: what it is, and its size with these
constexpr qint64 MostHeaderBytes = 16 << 20;

struct Object
{
    Kind kind;
    QByteArrayView content;
};

/// Takes the first object off; one without a kind where there is none.
Object takeObject(QByteArrayView &bytes)
{
    if (bytes.size() < HeadBytes)
        return {};
    const Kind kind = bytes.first(Header.size());
    const auto size = qFromLittleEndian<quint64>(bytes.data() + 16);
    if (size < quint64(HeadBytes))
        return {};
    const qsizetype whole = qsizetype(std::min(size, quint64(bytes.size())));
    const QByteArrayView content = bytes.sliced(HeadBytes, whole - HeadBytes);
    bytes = bytes.sliced(whole);
    return {kind, content};
}

enum class Place { Header, Extension };

bool tellsEncryption(QByteArrayView objects, Place place)
{
    constexpr qsizetype StreamFlags = 48;
    constexpr qsizetype ExtensionObjects = 22;
    for (;;) {
        const auto [kind, content] = takeObject(objects);
        if (kind.isEmpty())
            return false;
        if (std::find(std::begin(Encryptions), std::end(Encryptions), kind) != std::end(Encryptions))
            return true;
        if (kind == StreamProperties && content.size() >= StreamFlags + 2 &&
            (qFromLittleEndian<quint16>(content.data() + StreamFlags) & 0x8000) != 0)
            return true;
        if (place == Place::Header && kind == HeaderExtension && content.size() > ExtensionObjects &&
            tellsEncryption(content.sliced(ExtensionObjects), Place::Extension))
            return true;
    }
}

} // namespace

bool isProtectedAsf(QIODevice &file)
{
    constexpr qsizetype CountBytes = 6; // of the header's own
    const qint64 place = file.pos();
    const QByteArray head = file.read(HeadBytes + CountBytes);
    QByteArray objects;
    QByteArrayView bytes = head;
    if (takeObject(bytes).kind == Header) {
        const auto size = qFromLittleEndian<quint64>(head.constData() + Header.size());
        objects = file.read(qint64(std::min(size, quint64(MostHeaderBytes))));
    }
    file.seek(place);
    return tellsEncryption(objects, Place::Header);
}

} // namespace audiofile
