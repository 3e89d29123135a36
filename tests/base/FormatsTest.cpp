#include "base/Formats.h"

#include "base/RunTimeFailure.h"

#include <gtest/gtest.h>
#include <set>

namespace {

TEST(Formats, numbersThatAreNoFormatAreFailureNine)
{
    for (const qint32 number : {-1, 5, 1000})
        EXPECT_THROW(Formats::ofJob(number), RunTimeFailure) << number;
    // What the converter doesn't know isn't found by the number that stands for that.
    for (const qint16 code : {-1, int(ConvertNone), 5}) {
        try {
            Formats::ofConverter(code);
            ADD_FAILURE() << code;
        } catch (const RunTimeFailure &failure) {
            EXPECT_EQ(failure.number(), 9);
        }
    }
}

TEST(Formats, eachIsFoundByItsNumbersAndByItsEnding)
{
    std::set<QString> names;
    for (const Format &format : Formats::all()) {
        names.insert(format.name);
        EXPECT_EQ(&Formats::ofJob(format.encType), &format);
        if (format.convertCode != ConvertNone) {
            EXPECT_EQ(&Formats::ofConverter(format.convertCode), &format);
        }
        EXPECT_EQ(Formats::ofFile(QStringLiteral("/a/b") + format.extension.toUpper()), &format);
        EXPECT_TRUE(Formats::ofFile(QStringLiteral("b") + format.rippedExtension));
    }
    EXPECT_EQ(names.size(), Formats::all().size());
    EXPECT_EQ(Formats::ofFile(QStringLiteral("mp3")), nullptr);
}

} // namespace
