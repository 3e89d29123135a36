#include "demodisc/DemoDisc.h"

#include <array>
#include <cstdio>
#include <fstream>

namespace demodisc {

namespace {

constexpr int PieceCount = 6;
constexpr std::array<const char *, PieceCount> Titles = {"Morning Walk", "Blue Engine", "Paper Boats",
                                                         "Night Signal", "Copper Wire", "The Last Tram"};
constexpr int DataSectors = 400;
constexpr int DataSectorSize = 2048;

std::string time(int sectors)
{
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", sectors / (60 * SectorsPerSecond),
                  sectors / SectorsPerSecond % 60, sectors % SectorsPerSecond);
    return text;
}

void writeSheet(const DiscPlan &plan, const std::filesystem::path &cue, const std::string &bin)
{
    std::ofstream sheet;
    sheet.exceptions(std::ios::failbit | std::ios::badbit);
    sheet.open(cue, std::ios::binary);
    const auto trackLine = [&sheet](std::size_t number, const char *mode) {
        sheet << "  TRACK " << (number < 10 ? "0" : "") << number << ' ' << mode << '\n';
    };
    sheet << "PERFORMER \"" << plan.performer << "\"\nTITLE \"" << plan.title << "\"\nFILE \"" << bin
          << "\" BINARY\n";
    int position = 0;
    for (std::size_t i = 0; i < plan.tracks.size(); ++i) {
        trackLine(i + 1, "AUDIO");
        sheet << "    TITLE \"" << plan.tracks[i].title << "\"\n    PERFORMER \"" << plan.performer
              << "\"\n    FLAGS DCP\n    INDEX 01 " << time(position) << '\n';
        position += plan.tracks[i].sectors;
    }
    if (plan.dataSectors > 0) {
        sheet << "REM SESSION 02\n";
        trackLine(plan.tracks.size() + 1, "MODE1/2048");
        sheet << "    INDEX 01 " << time(position) << '\n';
    }
    sheet.close();
}

/// Little-endian whatever the machine, as on a disc.
std::string bytesOf(const std::vector<std::int16_t> &samples)
{
    std::string bytes;
    bytes.reserve(samples.size() * 2);
    for (const std::int16_t sample : samples) {
        const auto bits = static_cast<std::uint16_t>(sample);
        bytes.push_back(static_cast<char>(bits & 0xff));
        bytes.push_back(static_cast<char>(bits >> 8));
    }
    return bytes;
}

std::string dataSector(int number)
{
    std::string bytes = "Tonelift demo disc, data sector " + std::to_string(number) + '\n';
    bytes.resize(DataSectorSize, static_cast<char>(number & 0x7f));
    return bytes;
}

} // namespace

DiscPlan shortDisc(int tracks)
{
    DiscPlan plan{"Short Pieces", "The Tonelift Players", {}, 0};
    for (int number = 1; number <= tracks; ++number) {
        const int sectors = 8 * SectorsPerSecond + (number - 1) % PieceCount * SectorsPerSecond + 7 * number;
        plan.tracks.push_back({number, sectors, Titles[static_cast<std::size_t>(number - 1) % PieceCount]});
    }
    return plan;
}

DiscPlan longDisc()
{
    DiscPlan plan = shortDisc(10);
    plan.title = "Ten Minutes";
    for (TrackPlan &track : plan.tracks)
        track.sectors = 60 * SectorsPerSecond;
    return plan;
}

DiscPlan withDataTrack(DiscPlan plan)
{
    plan.dataSectors = DataSectors;
    return plan;
}

void write(const DiscPlan &plan, const std::filesystem::path &cue)
{
    std::filesystem::path bin = cue;
    bin.replace_extension(".bin");
    std::ofstream sectors;
    sectors.exceptions(std::ios::failbit | std::ios::badbit);
    sectors.open(bin, std::ios::binary);
    for (const TrackPlan &track : plan.tracks)
        sectors << bytesOf(render(track));
    for (int i = 0; i < plan.dataSectors; ++i)
        sectors << dataSector(i);
    sectors.close();
    writeSheet(plan, cue, bin.filename().string());
}

} // namespace demodisc
