#include "fuzz/Target.h"
#include "platform/ProfileFile.h"

#include <QFile>

// settings.ini as other programs and hands may leave it.

namespace fuzz {

namespace {

const QString Section = QStringLiteral("Program");
const QString Key = QStringLiteral("Value");

QByteArrayList profiles()
{
    return {
        "[Program]\nValue=1\nOther = 'x'\n\n; comment\n[Second]\r\nkey=\"\"\r\n",
        "\xef\xbb\xbf[program]\r\nVALUE = a\r\n[Program]\r\nValue=b",
        "Value=outside\n[Program\n[]\n[ Program ]\n=\nValue",
        QByteArray("\xff\xfe[\0P\0r\0o\0g\0r\0a\0m\0]\0\n\0V\0a\0l\0u\0e\0=\0"
                   "1\0\n\0",
                   42),
        "[Program]\nValue=\xe4\xf6\n\n\n\n",
    };
}

void profile(const QByteArray &input)
{
    const QString file = fileOf(QStringLiteral("settings.ini"), input);
    const QString text = QStringLiteral("it's \"ä\" ; = [x]");
    ProfileFile::value(Section, Key, {}, file);
    const QString other = ProfileFile::value(QStringLiteral("Second"), QStringLiteral("key"), {}, file);
    if (!ProfileFile::setValue(Section, Key, text, file)) {
        QFile untouched(file);
        require(untouched.open(QIODevice::ReadOnly) && untouched.readAll() == input,
                "a refused file stays as it was");
        return;
    }
    require(ProfileFile::value(Section, Key, {}, file) == text, "a value reads back as it was stored");
    require(ProfileFile::value(QStringLiteral("Second"), QStringLiteral("key"), {}, file) == other,
            "other values stay");
    require(ProfileFile::setValue(Section, Key, {}, file), "a value that could be stored can be removed");
}

} // namespace

const Target Settings = {"Settings", profile, profiles};

} // namespace fuzz
