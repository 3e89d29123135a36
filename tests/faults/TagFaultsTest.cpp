#include "EachFault.h"
#include "base/RunTimeFailure.h"
#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/VorbisEncoder.h"
#include "engines/tagfile/AudioInformation.h"
#include "testkit/Encoding.h"
#include "testkit/Printing.h"

#include <QTemporaryDir>

namespace {

struct Kind
{
    const char *name;
    std::shared_ptr<const codecs::EncoderRecipe> (*recipe)();
};

void PrintTo(const Kind &kind, std::ostream *out)
{
    *out << kind.name;
}

class TagFaults : public ::testing::TestWithParam<Kind>
{};

TEST_P(TagFaults, aSaveIsDoneOrToldAndTheFileIsTheOldOrTheNewOne)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sound.") + QLatin1StringView(GetParam().name));
    const QByteArray old = testkit::encode(*GetParam().recipe(), {}, std::vector<qint16>(20'000, 100));
    int failure = 0;
    const auto save = [&] {
        failure = testkit::failureOf([&] {
            engines::AudioInformation tags;
            tags.setTagTitle(QStringLiteral("Title"));
            tags.setTagAlbum(QString(300, u'x')); // more room than there is
            tags.WriteTags(path);
        });
    };
    const auto putOld = [&] {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(old);
    };
    putOld();
    save();
    ASSERT_EQ(failure, 0);
    const QByteArray saved = contentOf(path);
    ASSERT_NE(saved, old);
    withEachFault(folder.path(), putOld, save, [&](bool failed) {
        EXPECT_EQ(failed, failure != 0);
        EXPECT_TRUE(contentOf(path) == saved || (failed && contentOf(path) == old));
        EXPECT_EQ(namesIn(folder.path()).size(), 1);
    });
}

INSTANTIATE_TEST_SUITE_P(Kinds, TagFaults,
                         ::testing::Values(Kind{"mp3", [] { return codecs::mp3Recipe({}); }},
                                           Kind{"ogg", [] { return codecs::vorbisRecipe({}); }}),
                         [](const auto &info) { return std::string(info.param.name); });

} // namespace
