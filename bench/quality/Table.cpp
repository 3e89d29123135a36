#include "quality/Table.h"

#include <algorithm>
#include <cstdio>

namespace quality {

namespace {

void print(const std::string &name, const std::vector<Quality> &qualities)
{
    std::printf("%-18s", name.c_str());
    for (const Quality &of : qualities)
        std::printf("  %6.1f %6.2f %6.2f", of.snr, of.noiseToMask, of.tonal);
    std::printf("  %+6.2f\n", qualities.front().noiseToMask - qualities.back().noiseToMask);
    std::fflush(stdout);
}

} // namespace

Table::Table(const std::vector<std::string> &encoders)
{
    std::printf("%-18s", "");
    for (const std::string &encoder : encoders)
        std::printf("  %20s", encoder.c_str());
    std::printf("\n%-18s", "");
    for (std::size_t n = 0; n < encoders.size(); ++n)
        std::printf("  %6s %6s %6s", "SNR", "NMR", "tonal");
    std::printf("  %6s\n", "NMR +-");
}

void Table::addRow(const std::string &sound, const std::string &group, const std::vector<Quality> &qualities)
{
    print(sound, qualities);
    auto sum = std::find_if(m_sums.begin(), m_sums.end(), [&](const Sum &of) { return of.group == group; });
    if (sum == m_sums.end())
        sum = m_sums.insert(sum, {group, std::vector<Quality>(qualities.size()), 0});
    for (std::size_t n = 0; n < qualities.size(); ++n)
        sum->qualities[n] += qualities[n];
    ++sum->count;
}

void Table::printMeans() const
{
    for (const Sum &sum : m_sums) {
        std::vector<Quality> means;
        for (const Quality &of : sum.qualities)
            means.push_back(of / sum.count);
        print("mean, " + sum.group, means);
    }
}

} // namespace quality
