#include "fuzz/Target.h"
#include "platform/Profile.h"

#include <QStringEncoder>

// settings.ini as other programs and hands may leave it.

namespace fuzz {

namespace {

const QString Section = QStringLiteral("Program");
const QString Key = QStringLiteral("Value");

QByteArrayList profiles()
{
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    return {
        "[Program]\nValue=1\nOther = 'x'\n\n; comment\n[Second]\r\nkey=\"\"\r\n",
        "\xef\xbb\xbf[program]\r\nVALUE = a\r\n[Program]\r\nValue=b",
        "Value=outside\n[Program\n[]\n[ Program ]\n=\nValue",
        encoder(QStringLiteral("[Program]\nValue=1\n")),
        "[Program]\nValue=\xe4\xf6\n\n\n\n",
    };
}

void profile(const QByteArray &input)
{
    const QString text = QStringLiteral("it's \"ä\" ; = [x]");
    const QString second = QStringLiteral("Second");
    const QString key = QStringLiteral("key");
    Profile profile(input);
    if (!profile.isFaithful())
        return; // such a file is never written
    const std::optional<QString> other = profile.value(second, key);
    profile.set(Section, Key, text);
    Profile stored(profile.content());
    require(stored.value(Section, Key) == text, "a value reads back as it was stored");
    require(stored.value(second, key) == other, "other values stay");
    stored.set(Section, Key, {});
    require(stored.value(second, key) == other, "other values stay when one goes");
}

} // namespace

const Target Settings = {"Settings", profile, profiles};

} // namespace fuzz
