#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Compact discs of made-up music, for trying the program and for its tests. The same plan gives the same
/// bytes on every machine.
namespace demodisc {

inline constexpr int FramesPerSector = 588;
inline constexpr int SectorsPerSecond = 75;

/// One piece of music. Numbers beyond the first six repeat the pieces a little faster and higher.
struct TrackPlan
{
    int number = 1;  ///< which piece, from 1
    int sectors = 0; ///< its length
    std::string title;
};

struct DiscPlan
{
    std::string title;
    std::string performer;
    std::vector<TrackPlan> tracks;
    int dataSectors = 0; ///< of a data track in a second session; 0: there is none
};

/// Six pieces of 8 to 13 seconds, or any number of pieces.
DiscPlan shortDisc(int tracks = 6);
/// Ten pieces of a minute each.
DiscPlan longDisc();
/// The same disc with a data track in a second session.
DiscPlan withDataTrack(DiscPlan plan);

/// The samples of a track at 44100 Hz, left and right in turn. Each piece begins and ends in digital silence,
/// holds a beat of it, drums, chords, and near its end a passage that reaches full scale.
std::vector<std::int16_t> render(const TrackPlan &plan);

/// Writes the sheet `cue` and, beside it, the file of all sectors with the ending ".bin".
/// Raises std::system_error or std::ios_base::failure.
void write(const DiscPlan &plan, const std::filesystem::path &cue);

} // namespace demodisc
