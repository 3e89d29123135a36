#include "engines/audiofile/OutputFormat.h"

#include "engines/audiofile/WmaProfiles.h"
#include "engines/codecs/Recipe.h"
#include "engines/codecs/WmaEncoder.h"

namespace audiofile {

namespace {

struct MakeRecipe
{
    using Recipe = std::shared_ptr<const codecs::EncoderRecipe>;

    Recipe operator()(std::monostate) const { codecs::refuse(QStringLiteral("No output format was set")); }
    Recipe operator()(const codecs::Mp3Settings &settings) const { return codecs::mp3Recipe(settings); }
    Recipe operator()(const codecs::WavSettings &settings) const { return codecs::wavRecipe(settings); }
    Recipe operator()(const codecs::VorbisSettings &settings) const { return codecs::vorbisRecipe(settings); }
    Recipe operator()(WmaProfileNumber profile) const
    {
        return codecs::wmaRecipe(wmaProfile(profile.number));
    }
};

} // namespace

std::shared_ptr<const codecs::EncoderRecipe> recipeOf(const OutputFormat &format)
{
    return std::visit(MakeRecipe(), format);
}

} // namespace audiofile
