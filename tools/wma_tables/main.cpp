// Measures the code tables of Windows Media Audio 2 from the decoder of this system and writes them as a
// source file:
//
//     wma_tables FILE [DECODER]
//
// Where the system has no such decoder the file says that there are no tables. A decoder with other tables
// than the known ones is an error.
#include "Crc32.h"
#include "Measurement.h"
#include "TableTool.h"

extern "C" {
#include <libavutil/log.h>
}

namespace {

using namespace wma;

void add(Crc32 &crc, const Code &code)
{
    crc.add(std::uint32_t(code.length));
    crc.add(code.bits);
}

std::uint32_t checksum(const MeasuredCoefficients &table)
{
    Crc32 crc;
    crc.add(static_cast<std::uint32_t>(table.symbols.size() + 2));
    for (const Code &code : {table.escape, table.end}) {
        add(crc, code);
        crc.add(std::uint64_t(0)); // neither run nor level
    }
    auto symbol = table.symbols.begin();
    for (std::size_t level = 1; level <= table.runs.size(); ++level)
        for (std::uint32_t run = 0; run < table.runs[level - 1]; ++run) {
            add(crc, *symbol++);
            crc.add(run);
            crc.add(static_cast<std::uint32_t>(level));
        }
    return crc.value();
}

template <typename Codes>
std::uint32_t checksum(const Codes &codes)
{
    Crc32 crc;
    for (const Code &code : codes)
        add(crc, code);
    return crc.value();
}

std::uint32_t checksum(const std::vector<MeasuredBands> &bands)
{
    Crc32 crc;
    for (const MeasuredBands &list : bands) {
        crc.add(static_cast<std::uint32_t>(list.rate));
        crc.add(static_cast<std::uint32_t>(list.blockSize));
        crc.add(static_cast<std::uint32_t>(list.widths.size()));
        crc.add(static_cast<std::uint32_t>(list.bands));
        for (const std::uint16_t width : list.widths)
            crc.add(std::uint32_t(width));
    }
    return crc.value();
}

void check(const Measured &measured)
{
    constexpr std::array<std::array<std::uint32_t, 2>, TablePairs> coefficients{
        {{0x6ef6bef7, 0x8dab21af}, {0xcd57e4ef, 0xc7a7f74e}, {0xc5768559, 0x6fe48c0b}}};
    for (int pair = 0; pair < TablePairs; ++pair)
        for (int second = 0; second < 2; ++second)
            expectChecksum(checksum(measured.coefficients[pair][second]), coefficients[pair][second],
                           "coefficients");
    expectChecksum(checksum(measured.exponents), 0xb40817b6, "exponents");
    expectChecksum(checksum(measured.bands), 0xe562e9b6, "bands");
    expectChecksum(checksum(measured.noiseLevels), 0x5e27d3d3, "noise levels");
}

void write(std::ostream &out, std::uint16_t value)
{
    out << value;
}

void write(std::ostream &out, const Code &code)
{
    out << "{0x" << std::hex << code.bits << std::dec << "," << int(code.length) << "}";
}

template <typename Values>
void writeList(std::ostream &out, const Values &values)
{
    out << "{";
    for (std::size_t n = 0; n < values.size(); ++n) {
        out << (n == 0 ? "" : ",") << (n % 12 == 11 ? "\n" : "");
        write(out, values[n]);
    }
    out << "}";
}

template <typename Values>
void writeArray(std::ostream &out, const char *type, const std::string &name, const Values &values)
{
    out << "static constexpr " << type << " " << name << "[] = ";
    writeList(out, values);
    out << ";\n";
}

void writeTables(std::ostream &out, const Measured &measured)
{
    for (int pair = 0; pair < TablePairs; ++pair)
        for (int second = 0; second < 2; ++second) {
            const std::string number = std::to_string(2 * pair + second);
            writeArray(out, "std::uint16_t", "Runs" + number, measured.coefficients[pair][second].runs);
            writeArray(out, "Code", "Symbols" + number, measured.coefficients[pair][second].symbols);
        }
    for (std::size_t n = 0; n < measured.bands.size(); ++n)
        writeArray(out, "std::uint16_t", "Widths" + std::to_string(n), measured.bands[n].widths);
    out << "static constexpr BandList Bands[] = {\n";
    for (std::size_t n = 0; n < measured.bands.size(); ++n) {
        const MeasuredBands &list = measured.bands[n];
        out << "{" << list.rate << "," << list.blockSize << "," << list.bands << ",Widths" << n << "},\n";
    }
    out << "};\nstatic constexpr Tables MeasuredTables{\n{{";
    for (int pair = 0; pair < TablePairs; ++pair) {
        out << (pair == 0 ? "{{" : ",\n{{");
        for (int second = 0; second < 2; ++second) {
            const int number = 2 * pair + second;
            out << (second == 0 ? "{" : ",{");
            write(out, measured.coefficients[pair][second].escape);
            out << ",";
            write(out, measured.coefficients[pair][second].end);
            out << ",Runs" << number << ",Symbols" << number << "}";
        }
        out << "}}";
    }
    out << "}},\n{";
    writeList(out, measured.exponents);
    out << "},\n{";
    writeList(out, measured.noiseLevels);
    out << "},\nBands};\n\n";
}

} // namespace

int main(int argc, char **argv)
{
    av_log_set_level(AV_LOG_QUIET); // most of the frames are wrong on purpose
    return runTableTool(argc, argv, {"wma_tables", "WMA", "wma", "wmav2"},
                        [](const std::string &decoder, std::ostream &out) {
                            Measured measured;
                            measureCoefficients(decoder, measured);
                            measureExponents(decoder, measured);
                            measureBands(decoder, measured);
                            measureNoiseLevels(decoder, measured);
                            check(measured);
                            writeTables(out, measured);
                            return std::string("MeasuredTables");
                        });
}
