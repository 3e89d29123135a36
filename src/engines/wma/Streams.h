#pragma once

namespace wma {

/// A combination that streams are written in.
struct StreamKind
{
    int rate = 44100;
    int channels = 2;
    int kilobits = 128; ///< per second

    bool operator==(const StreamKind &) const = default;
};

/// All of them.
inline constexpr StreamKind StreamKinds[] = {
    {8000, 1, 5},   {8000, 1, 6},    {8000, 1, 8},    {8000, 2, 12},  {11025, 1, 8},   {11025, 1, 10},
    {16000, 1, 10}, {16000, 1, 12},  {16000, 1, 16},  {16000, 2, 16}, {16000, 2, 20},  {22050, 1, 16},
    {22050, 1, 20}, {22050, 2, 20},  {22050, 2, 22},  {22050, 2, 32}, {32000, 1, 20},  {32000, 1, 32},
    {32000, 2, 32}, {32000, 2, 40},  {32000, 2, 48},  {44100, 1, 32}, {44100, 1, 48},  {44100, 2, 32},
    {44100, 2, 48}, {44100, 2, 64},  {44100, 2, 80},  {44100, 2, 96}, {44100, 2, 128}, {44100, 2, 160},
    {48000, 2, 96}, {48000, 2, 128}, {48000, 2, 160},
};

} // namespace wma
