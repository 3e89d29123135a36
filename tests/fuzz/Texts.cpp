#include "engines/freedb/Service.h"
#include "fuzz/Target.h"
#include "metadata/EmailAddress.h"
#include "naming/FileNames.h"

#include <algorithm>

// What a service answers, and what people type.

namespace fuzz {

namespace {

using namespace engines::freedb;

QByteArrayList answers()
{
    return {
        "210 rock 830abf0a Disc entry follows\r\n# xmcd\r\n#\r\n# Track frame "
        "offsets:\r\n#\t150\r\n#\t18901\r\n"
        "# Disc length: 2756 seconds\r\nDISCID=830abf0a\r\nDTITLE=Artist / "
        "Album\r\nDYEAR=1998\r\nDGENRE=Rock\r\n"
        "TTITLE0=One\r\nTTITLE0= and more\r\nTTITLE1=Two\\nlines\\\\\r\nEXTD=A comment\\tof two\r\nEXTT0=\r\n"
        "PLAYORDER=\r\n.\r\n",
        "401 rock 830abf0a No such CD entry in database\r\n",
        "500 Command syntax error\r\n",
        "210 x\nDTITLE= / \nTTITLE98=\xe4\xf6\nTTITLE99=x\nTTITLE4294967296=y\n.\n",
        "210 x\nDTITLE=Artist /\n.\n",
        "210 x\nDTITLE= / Artist / Album\n.\n",
        "210 x\nDTITLE=" + QByteArray(3000, ' ') + "x\nTTITLE0=\\\n.\n",
    };
}

void answer(const QByteArray &input)
{
    const std::optional<Reply> reply = parseReply(input);
    const std::optional<DiscEntry> entry = parseEntry(reply ? reply->data : input);
    if (!entry)
        return;
    isNotice(*entry, QStringLiteral("freedb.example"));
    worthOf(*entry, QStringLiteral("830abf0a"));
    const QStringList offsets(entry->titles.size(), QStringLiteral("150"));
    const QByteArray text = entryText({*entry, QStringLiteral("830abf0a"), offsets, {}});
    for (const QByteArray &line : text.split('\n'))
        require(line.size() < LongestLine, "no line is too long for the service");
    const std::optional<DiscEntry> again = parseEntry(text);
    require(again.has_value(), "an entry is found again");
    // A lone title stands for the artist as well.
    require(again->album == entry->album && (again->artist == entry->artist || entry->artist.isEmpty()),
            "a disc's title reads back");
    require(again->titles == entry->titles, "titles read back");
    require(again->comments == entry->comments, "comments read back");
}

QByteArrayList titles()
{
    return {"AC/DC: Live?",        " \"a\\b|c\" ", "..", ".", "\xf0\x9f\x8e\xb5/\xcc\x81",
            QByteArray("a\0b", 3), "CON"};
}

void name(const QByteArray &input)
{
    const QString title = QString::fromUtf8(input);
    for (const QString &made : {MakeTrackFileName(title, QStringLiteral(".mp3")), MakeSafeFileName(title)})
        for (const QChar character : made)
            require(character != u'/' && character != u'\\' && !character.isNull(),
                    "a name holds no separator and no NUL");
}

QByteArrayList addresses()
{
    return {"user@example.com",
            "a.b-c_d@sub.example.co.uk",
            "@",
            "a@b",
            "a b@example.com",
            "a@@example.com",
            "a@.com"};
}

void address(const QByteArray &input)
{
    const QString text = QString::fromUtf8(input);
    if (IsValidEmail(text))
        require(std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u' ' && c <= u'~'; }),
                "a valid address can't end a line of a request");
}

} // namespace

const Target Answers = {"Answers", answer, answers};
const Target Names = {"Names", name, titles};
const Target Addresses = {"Addresses", address, addresses};

} // namespace fuzz
