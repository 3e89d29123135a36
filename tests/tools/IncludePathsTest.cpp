// Each library's include path shows the folders that it knows and no others. This program knows "disc" alone.
#include <gtest/gtest.h>

namespace {

TEST(IncludePathsTest, aWindowFindsWhatItKnowsAndNoEngineNoOtherWindowAndNoQtDesktop)
{
#if __has_include("disc/TrackList.h") && __has_include("naming/Paths.h")
    const bool seesWhatItKnows = true;
#else
    const bool seesWhatItKnows = false;
#endif
    EXPECT_TRUE(seesWhatItKnows);

#if __has_include("engines/codecs/Encoder.h") || __has_include("rip/frmExtract.h") ||                        \
                                                               __has_include("platform/qt/QtDesktop.h")
    const bool seesMore = true;
#else
    const bool seesMore = false;
#endif
    EXPECT_FALSE(seesMore);

#if __has_include("../../src/engines/codecs/Encoder.h") &&                                                   \
                  __has_include("../../src/rip/frmExtract.h") &&                                             \
                                __has_include("../../src/platform/qt/QtDesktop.h")
    const bool thereIsMore = true;
#else
    const bool thereIsMore = false;
#endif
    EXPECT_TRUE(thereIsMore);
}

} // namespace
