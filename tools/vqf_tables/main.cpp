// Measures the codebooks of the VQF format from the decoder of this system and writes them as a source file:
//
//     vqf_tables FILE [DECODER]
//
// Where the system has no such decoder the file says that there are no tables. A decoder with other tables
// than the known ones is an error.
#include "Crc32.h"
#include "Measurement.h"
#include "TableTool.h"

#include <span>

namespace {

using vqf::Tables;

/// Of the first `columns` values of each row.
template <typename Rows>
std::uint32_t checksum(const Rows &rows, int columns)
{
    Crc32 crc;
    for (const auto &row : rows)
        for (int n = 0; n < columns; ++n)
            crc.add(row[n]);
    return crc.value();
}

void check(const Tables &tables)
{
    constexpr std::array<std::array<std::uint32_t, 2>, vqf::BlockTypes> main{
        {{0xea9b1e8b, 0xcbbcd022}, {0xf6df51fc, 0x76f012e6}, {0xd33661fb, 0xd92d2470}}};
    constexpr std::array<std::uint32_t, vqf::BlockTypes> bark{0x87990074, 0x6b1b0796, 0x66485a2b};
    constexpr std::array<std::uint32_t, vqf::BlockTypes> widths{0xa8e3a930, 0x62da3016, 0x503bc22e};
    for (int type = 0; type < vqf::BlockTypes; ++type) {
        const vqf::TypeLayout &layout = vqf::Layouts[type];
        for (int book = 0; book < 2; ++book)
            expectChecksum(checksum(tables.main[type][book], layout.vectorLength), main[type][book],
                           "spectrum");
        expectChecksum(checksum(tables.bark[type], vqf::BarkColumns), bark[type], "envelope");
        expectChecksum(checksum(std::span(&tables.bandWidths[type], 1), layout.bands), widths[type], "bands");
    }
    expectChecksum(checksum(tables.peaks[0], vqf::PeakVectorLength), 0x6a082362, "first peaks");
    expectChecksum(checksum(tables.peaks[1], vqf::PeakVectorLength), 0x7a79739d, "second peaks");
    expectChecksum(checksum(tables.lspFirst, vqf::LspOrder), 0x417b3d36, "filter, first stage");
    expectChecksum(checksum(tables.lspSecond, vqf::LspOrder), 0x7a7b2683, "filter, second stage");
    expectChecksum(checksum(tables.lspPredictor, vqf::LspOrder), 0xfedc5519, "filter, prediction");
}

void write(std::ostream &out, std::int16_t value)
{
    out << value;
}

template <typename Value, std::size_t Size>
void write(std::ostream &out, const std::array<Value, Size> &values)
{
    out << "{{";
    for (std::size_t n = 0; n < Size; ++n) {
        out << (n == 0 ? "" : ",") << (n % 16 == 15 ? "\n" : "");
        write(out, values[n]);
    }
    out << "}}";
}

void writeTables(std::ostream &out, const Tables &tables)
{
    out << "static constexpr Tables Measured{\n";
    write(out, tables.main);
    const auto writeNext = [&out](const auto &table) {
        out << ",\n";
        write(out, table);
    };
    writeNext(tables.peaks);
    writeNext(tables.bark);
    writeNext(tables.bandWidths);
    writeNext(tables.lspFirst);
    writeNext(tables.lspSecond);
    writeNext(tables.lspPredictor);
    out << "};\n\n";
}

} // namespace

int main(int argc, char **argv)
{
    return runTableTool(argc, argv, {"vqf_tables", "VQF", "vqf", "twinvq"},
                        [](const std::string &decoder, std::ostream &out) {
                            vqf::FrameProbe probe(decoder);
                            Tables tables{};
                            measureMainBooks(probe, tables);
                            measurePeakBooks(probe, tables);
                            measureEnvelopes(probe, tables);
                            measureLsp(probe, tables);
                            check(tables);
                            writeTables(out, tables);
                            return std::string("Measured");
                        });
}
