// What the joints of streams that were encoded in pieces cost, beside the same streams in one piece: size,
// and the noise-to-mask ratio of the whole and of the stretches around the joints.
//
//     bench_joints [NAME]...     those sounds alone
#include "engines/codecs/Mp3Encoder.h"
#include "engines/codecs/Recipe.h"
#include "engines/codecs/VorbisPieces.h"
#include "quality/Coding.h"
#include "quality/Material.h"

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

using namespace codecs;
using quality::DecodedPcm;
using quality::Pcm;

constexpr long Reach = 4096; ///< frames on each side of a joint
constexpr std::size_t SoundFrames = 61 * 44100;
constexpr int OnePiece = 1000; ///< seconds

struct Coding
{
    const char *name;
    QString ending;
    std::function<std::shared_ptr<const PieceCodec>(int pieceSeconds)> pieces;
};

std::vector<Coding> codings()
{
    const auto mp3 = [](const Mp3Settings &settings) {
        return [settings](int seconds) { return mp3Pieces(settings, seconds); };
    };
    const auto ogg = [](const VorbisSettings &settings) {
        return [settings](int seconds) {
            return std::make_shared<VorbisPieces>(settings, VorbisGrid(settings, seconds));
        };
    };
    Mp3Settings variable;
    variable.variable = true;
    variable.variableQuality = 4;
    VorbisSettings quality;
    quality.quality = 300;
    const auto mp3Ending = QStringLiteral(".mp3"), oggEnding = QStringLiteral(".ogg");
    return {{"mp3 128", mp3Ending, mp3({})},
            {"mp3 vbr 4", mp3Ending, mp3(variable)},
            {"ogg 128", oggEnding, ogg({})},
            {"ogg q 3", oggEnding, ogg(quality)}};
}

Pcm repeated(const Pcm &sound)
{
    Pcm whole;
    while (whole.size() < 2 * SoundFrames)
        whole.insert(whole.end(), sound.begin(), sound.end());
    whole.resize(2 * SoundFrames);
    return whole;
}

/// The stretches around all joints, one behind the other.
template <typename Samples>
Samples around(const Samples &samples, const std::vector<long> &joints)
{
    Samples stretches;
    for (const long joint : joints)
        stretches.insert(stretches.end(), samples.begin() + 2 * (joint - Reach),
                         samples.begin() + 2 * (joint + Reach));
    return stretches;
}

void compare(const quality::Material &material, const Coding &coding)
{
    quality::Meter meter;
    const Pcm sound = repeated(material.samples);
    const auto file = [&](int seconds) {
        return quality::encode(*makeRecipe({}, coding.pieces(seconds)), sound);
    };
    const quality::Encoded one = file(OnePiece), many = file(PieceSeconds);
    const DecodedPcm oneDecoded = quality::decode(one.file, coding.ending);
    const DecodedPcm manyDecoded = quality::decode(many.file, coding.ending);
    std::vector<long> joints;
    const long length = static_cast<long>(coding.pieces(PieceSeconds)->plan().length);
    for (long joint = length; joint + length / 2 < static_cast<long>(SoundFrames); joint += length)
        joints.push_back(joint);
    const auto at = [&](const DecodedPcm &decoded, const std::vector<long> &places) {
        return meter.measure(around(sound, places), around(decoded, places), 0).noiseToMask;
    };
    double worst = -100;
    for (const long joint : joints)
        worst = std::max(worst, at(manyDecoded, {joint}) - at(oneDecoded, {joint}));
    std::printf(
        "%-18s %-10s %+7.2f %8.2f %8.2f %8.2f %8.2f %8.2f %8.2f\n", material.name.c_str(), coding.name,
        100.0 * static_cast<double>(many.file.size() - one.file.size()) /
            static_cast<double>(one.file.size()),
        meter.measure(sound, oneDecoded, 0).noiseToMask, meter.measure(sound, manyDecoded, 0).noiseToMask,
        at(oneDecoded, joints), at(manyDecoded, joints), worst, many.processorSeconds / one.processorSeconds);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    std::printf("%-18s %-10s %7s %17s %17s %8s %8s\n%-18s %-10s %7s %8s %8s %8s %8s %8s %8s\n", "", "",
                "size", "whole, dB", "at joints, dB", "worst", "cpu", "", "", "%", "one", "pieces", "one",
                "pieces", "joint", "ratio");
    for (const quality::Material &material : quality::material()) {
        if (argc > 1 && std::find(argv + 1, argv + argc, material.name) == argv + argc)
            continue;
        for (const Coding &coding : codings())
            compare(material, coding);
    }
}
