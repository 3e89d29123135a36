// Measures the codebooks of the VQF format from the decoder of this system and writes them as a source file:
//
//     vqf_tables FILE [DECODER]
//
// Where the system has no such decoder the file says that there are no tables. A decoder with other tables
// than the known ones is an error.
#include "Crc32.h"
#include "Measurement.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <span>
#include <stdexcept>

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
    const auto expect = [](std::uint32_t actual, std::uint32_t known, const char *name) {
        if (actual != known)
            throw std::runtime_error(std::string("the decoder's tables aren't the known ones: ") + name);
    };
    constexpr std::array<std::array<std::uint32_t, 2>, vqf::BlockTypes> main{
        {{0xea9b1e8b, 0xcbbcd022}, {0xf6df51fc, 0x76f012e6}, {0xd33661fb, 0xd92d2470}}};
    constexpr std::array<std::uint32_t, vqf::BlockTypes> bark{0x87990074, 0x6b1b0796, 0x66485a2b};
    constexpr std::array<std::uint32_t, vqf::BlockTypes> widths{0xa8e3a930, 0x62da3016, 0x503bc22e};
    for (int type = 0; type < vqf::BlockTypes; ++type) {
        const vqf::TypeLayout &layout = vqf::Layouts[type];
        for (int book = 0; book < 2; ++book)
            expect(checksum(tables.main[type][book], layout.vectorLength), main[type][book], "spectrum");
        expect(checksum(tables.bark[type], vqf::BarkColumns), bark[type], "envelope");
        expect(checksum(std::span(&tables.bandWidths[type], 1), layout.bands), widths[type], "bands");
    }
    expect(checksum(tables.peaks[0], vqf::PeakVectorLength), 0x6a082362, "first peaks");
    expect(checksum(tables.peaks[1], vqf::PeakVectorLength), 0x7a79739d, "second peaks");
    expect(checksum(tables.lspFirst, vqf::LspOrder), 0x417b3d36, "filter, first stage");
    expect(checksum(tables.lspSecond, vqf::LspOrder), 0x7a7b2683, "filter, second stage");
    expect(checksum(tables.lspPredictor, vqf::LspOrder), 0xfedc5519, "filter, prediction");
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

void writeSource(std::ostream &out, const Tables *tables)
{
    out << "// Measured from the system's decoder while building.\n"
           "#include \"engines/vqf/Tables.h\"\n\nnamespace vqf {\n\n";
    if (tables) {
        out << "static constexpr Tables Measured{\n";
        write(out, tables->main);
        const auto writeNext = [&out](const auto &table) {
            out << ",\n";
            write(out, table);
        };
        writeNext(tables->peaks);
        writeNext(tables->bark);
        writeNext(tables->bandWidths);
        writeNext(tables->lspFirst);
        writeNext(tables->lspSecond);
        writeNext(tables->lspPredictor);
        out << "};\n\n";
    }
    out << "const Tables *measuredTables()\n{\n    return " << (tables ? "&Measured" : "nullptr")
        << ";\n}\n\n} // namespace vqf\n";
}

} // namespace

int main(int argc, char **argv)
{
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: vqf_tables FILE [DECODER]\n";
        return 2;
    }
    const std::string decoder = argc == 3 ? argv[2] : "twinvq";
    try {
        std::ofstream file(argv[1]);
        if (!dsp::DecoderProbe::exists(decoder)) {
            std::cout << "No decoder called " << decoder << ": building without the VQF encoder\n";
            writeSource(file, nullptr);
        } else {
            vqf::FrameProbe probe(decoder);
            Tables tables{};
            measureMainBooks(probe, tables);
            measurePeakBooks(probe, tables);
            measureEnvelopes(probe, tables);
            measureLsp(probe, tables);
            check(tables);
            writeSource(file, &tables);
        }
        if (!file.flush())
            throw std::runtime_error("the file can't be written");
    } catch (const std::exception &failure) {
        std::cerr << "vqf_tables: " << failure.what() << '\n';
        std::remove(argv[1]);
        return 1;
    }
    return 0;
}
