#include "fuzz/Target.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using fuzz::Target;

/// Damage of the kinds that files meet: cut off, bytes changed, a stretch repeated, moved or lost.
QByteArray damaged(QByteArray input, std::mt19937 &random)
{
    const auto upTo = [&](qsizetype most) { return most > 0 ? qsizetype(random() % std::size_t(most)) : 0; };
    for (auto changes = 1 + upTo(4); changes > 0 && !input.isEmpty(); --changes) {
        const qsizetype at = upTo(input.size());
        const qsizetype count = 1 + upTo(std::min<qsizetype>(64, input.size() - at));
        switch (random() % 6) {
        case 0:
            input.truncate(at);
            break;
        case 1:
            input.remove(at, count);
            break;
        case 2:
            input.insert(at, input.mid(at, count));
            break;
        case 3:
            input.insert(upTo(input.size()), input.mid(at, count));
            break;
        case 4:
            input[at] = static_cast<char>("\0\xff\x7f\x80\n\"="[random() % 7]);
            break;
        default:
            input[at] = static_cast<char>(random());
        }
    }
    return input;
}

class Replay : public ::testing::TestWithParam<const Target *>
{};

TEST_P(Replay, seedsAndTheirDamagedCopiesDoNoHarm)
{
    const Target &target = *GetParam();
    constexpr int CopiesOfEach = 60;
    std::mt19937 random(20260);
    target.run({});
    const QByteArrayList seeds = target.seeds();
    ASSERT_FALSE(seeds.isEmpty());
    for (const QByteArray &seed : seeds) {
        target.run(seed);
        for (int i = 0; i < CopiesOfEach; ++i) {
            const QByteArray copy = damaged(seed, random);
            target.run(target.mended ? target.mended(copy) : copy);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, Replay,
                         ::testing::Values(&fuzz::Sheets, &fuzz::Images, &fuzz::Settings, &fuzz::Answers,
                                           &fuzz::Mp3Tags, &fuzz::OggTags, &fuzz::WaveHeads, &fuzz::Asf,
                                           &fuzz::Sources, &fuzz::Names, &fuzz::Addresses),
                         [](const auto &info) { return std::string(info.param->name); });

} // namespace
