#include "engines/audiofile/WmaProfiles.h"

#include <algorithm>
#include <array>

namespace audiofile {

namespace {

constexpr std::array<codecs::WmaSettings, WmaProfileCount> Profiles = {{
    {11025, 1, 10},  {44100, 2, 64}, {16000, 1, 16},  {8000, 1, 6},    {22050, 1, 16},  // 1 to 5
    {11025, 1, 10},  {16000, 1, 16}, {22050, 1, 20},  {32000, 2, 32},  {32000, 2, 40},  // 6 to 10
    {44100, 2, 48},  {44100, 2, 64}, {44100, 2, 96},  {44100, 2, 128}, {44100, 2, 96},  // 11 to 15
    {44100, 2, 128}, {8000, 1, 6},   {22050, 1, 20},  {22050, 2, 20},  {32000, 2, 32},  // 16 to 20
    {44100, 2, 48},  {44100, 2, 64}, {44100, 2, 96},  {44100, 2, 128}, {22050, 2, 32},  // 21 to 25
    {22050, 2, 22},  {32000, 2, 32}, {22050, 2, 22},  {11025, 1, 10},  {44100, 2, 64},  // 26 to 30
    {16000, 1, 16},  {11025, 1, 8},  {16000, 1, 16},  {32000, 1, 20},  {32000, 2, 32},  // 31 to 35
    {44100, 2, 48},  {44100, 2, 96}, {44100, 2, 64},  {44100, 2, 128}, {44100, 2, 48},  // 36 to 40
    {44100, 2, 64},  {22050, 1, 20}, {22050, 2, 22},  {44100, 2, 32},  {44100, 2, 48},  // 41 to 45
    {44100, 2, 64},  {44100, 2, 96}, {44100, 2, 128}, {44100, 2, 64},  {44100, 2, 128}, // 46 to 50
    {44100, 2, 160},                                                                    // 51 to 51
}};

} // namespace

codecs::WmaSettings wmaProfile(int number)
{
    return Profiles.at(static_cast<std::size_t>(number - 1));
}

codecs::WmaSettings writableWmaProfile(int number)
{
    codecs::WmaSettings settings = wmaProfile(number);
    settings.bitRate = std::max(settings.bitRate, codecs::LowestWritableWmaBitRate);
    return settings;
}

} // namespace audiofile
