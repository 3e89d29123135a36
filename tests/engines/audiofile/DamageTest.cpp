#include "Files.h"
#include "Pump.h"
#include "engines/audiofile/AudioSource.h"
#include "engines/codecs/VorbisEncoder.h"
#include "engines/codecs/WmaEncoder.h"
#include "testkit/Signals.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::Literals::StringLiterals;
using testkit::encode;
using testkit::failureOf;

class DamageTest : public ::testing::Test
{
protected:
    bool isDamaged(const QByteArray &file) const
    {
        audiofile::AudioSource source(folder.put(u"file"_s, file));
        while (!source.read().empty())
            continue;
        return source.isDamaged();
    }

    static QByteArray withHole(QByteArray file, qsizetype bytes, char with = 0)
    {
        for (qsizetype i = 0; i < bytes; ++i)
            file[file.size() / 2 + i] = char(with * (i * 31 + i / 7));
        return file;
    }

    const Folder folder;
    const std::vector<qint16> sound = testkit::music(44100, 2, 10 * 44100);
    const QByteArray mp3 = encode(*codecs::mp3Recipe({}), {}, sound);
    const QByteArray wav = encode(*codecs::wavRecipe(), {}, sound);
    const QByteArray wma = encode(*codecs::wmaRecipe({}), {}, sound);
    const QByteArray ogg = encode(*codecs::vorbisRecipe({}), {}, sound);
};

TEST_F(DamageTest, wholeFilesAreNotDamaged)
{
    codecs::Mp3Settings variable;
    variable.variable = true;
    variable.maxBitRate = 320;
    codecs::Mp3Settings bare;
    bare.bitRate = 32; // no room for it in a frame
    const codecs::PcmFormat other{22050, 1};
    const auto lower = testkit::chord(22050, 1, 30'000);
    const QByteArray tag = QByteArray("TAG").leftJustified(128, '\0');
    const std::pair<const char *, QByteArray> files[] = {
        {"MP3", mp3},
        {"MP3 of variable rate", encode(*codecs::mp3Recipe(variable), {}, sound)},
        {"MP3 without a tag of its length", encode(*codecs::mp3Recipe(bare), {}, sound)},
        {"MP3 with tags", QByteArray("ID3\3\0\0\0\0\1\0", 10) + QByteArray(128, '\0') + mp3 + tag},
        {"WAV", wav},
        {"ADPCM", encode(*codecs::wavRecipe({{44100, 2}, 4}), {}, sound)},
        {"WMA", wma},
        {"OGG", ogg},
        {"joined OGG",
         ogg + remadeOgg(encode(*codecs::vorbisRecipe({other, 64, 0, 0, {}}), other, lower), 4096, 7)},
        {"OGG on one page",
         remadeOgg(encode(*codecs::vorbisRecipe({}), {}, {sound.begin(), sound.begin() + 8000}), 65'000)},
        {"OGG with a tag behind it", ogg + tag},
        {"a short WAV", encode(*codecs::wavRecipe(), {}, {1, 2})},
        {"an empty WAV", encode(*codecs::wavRecipe(), {}, {})},
        {"an empty OGG", encode(*codecs::vorbisRecipe({}), {}, {})},
    };
    for (const auto &[what, file] : files)
        EXPECT_FALSE(isDamaged(file)) << what;
}

TEST_F(DamageTest, whatIsCutOffOrSpoiledIsSeen)
{
    for (const QByteArray &file : {mp3, wav, wma, ogg}) {
        SCOPED_TRACE(file.mid(1, 2).toHex().toStdString());
        EXPECT_TRUE(isDamaged(file.left(file.size() / 10)));
        EXPECT_TRUE(isDamaged(file.left(file.size() / 2)));
        EXPECT_TRUE(isDamaged(file.left(file.size() - 3000)));
        EXPECT_TRUE(isDamaged(file.left(file.size() / 2) + file.mid(file.size() / 2 + 5000)));
        // In plain samples nothing tells.
        EXPECT_EQ(isDamaged(withHole(file, 700)), file != wav);
        EXPECT_EQ(isDamaged(withHole(file, 20'000)), file != wav);
        EXPECT_EQ(isDamaged(withHole(file, 20'000, 1)), file != wav);
    }
    EXPECT_TRUE(isDamaged(wav.left(44 + 4096 * 10)));
    // A page that is lost, and one that is spoiled, in the first of two streams.
    const qsizetype page = ogg.indexOf("OggS", ogg.size() / 2);
    const qsizetype next = ogg.indexOf("OggS", page + 4);
    const QByteArray second = remadeOgg(ogg, 4096, 7);
    EXPECT_TRUE(isDamaged(ogg.left(page) + ogg.mid(next) + second));
    EXPECT_TRUE(isDamaged(ogg.left(page + 100) + 'x' + ogg.mid(page + 101) + second));
}

/// The file with another object in its header.
QByteArray withObject(QByteArray wma, const QByteArray &object)
{
    constexpr int SizePlace = 16;
    constexpr int CountPlace = 24;
    constexpr int FirstObject = 30;
    qToLittleEndian(qFromLittleEndian<quint64>(wma.constData() + SizePlace) + quint64(object.size()),
                    wma.data() + SizePlace);
    qToLittleEndian(qFromLittleEndian<quint32>(wma.constData() + CountPlace) + 1, wma.data() + CountPlace);
    return wma.insert(FirstObject, object);
}

QByteArray asfObject(const char *kind, const QByteArray &content)
{
    return QByteArray::fromHex(kind) + bytesOf(quint64(content.size() + 24)) + content;
}

TEST_F(DamageTest, protectedFilesAreRefused)
{
    const QByteArray keys(40, 'k');
    const QByteArray advanced = asfObject("338505438169e6499b74ad12cb86d58c", keys);
    const auto extension = [](const QByteArray &objects) {
        return asfObject("b503bf5f2ea9cf118ee300c00c205365",
                         QByteArray(18, '\0') + bytesOf(quint32(objects.size())) + objects);
    };
    QByteArray marked = wma;
    const qsizetype stream = wma.indexOf(QByteArray::fromHex("9107dcb7b7a9cf118ee600c00c205365"));
    ASSERT_GT(stream, 0);
    marked[stream + 24 + 49] = char(0x80);
    const QByteArray content = withObject(wma, asfObject("fbb3112223bdd211b4b700a0c955fc6e", keys));
    const std::pair<QByteArray, int> files[] = {
        {wma, 0},
        {content, RunTimeFailure::PermissionDenied},
        {QByteArray("ID3\3\0\0\0\0\0\0", 10) + content, RunTimeFailure::PermissionDenied},
        {withObject(wma, asfObject("14e68a292226174cb935dae07ee9289c", keys)),
         RunTimeFailure::PermissionDenied},
        {withObject(wma, extension(advanced)), RunTimeFailure::PermissionDenied},
        {marked, RunTimeFailure::PermissionDenied},
        // A signature protects nothing, nor does what a later object says of itself.
        {withObject(wma, asfObject("fcb3112223bdd211b4b700a0c955fc6e", keys)), 0},
        {withObject(wma, extension(asfObject("74d40618dfca0945a4ba9aabcb96aae8", advanced))), 0}};
    for (const auto &[file, failure] : files) {
        const QString path = folder.put(u"file.wma"_s, file);
        EXPECT_EQ(failureOf([&] { audiofile::AudioSource source(path); }), failure) << file.size();
    }
}

} // namespace
