#include "TableTool.h"

#include "engines/dsp/DecoderProbe.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <stdexcept>

void expectChecksum(std::uint32_t actual, std::uint32_t known, const std::string &table)
{
    if (actual != known)
        throw std::runtime_error("the decoder's tables aren't the known ones: " + table);
}

int runTableTool(int argc, char **argv, const TableTool &tool,
                 const std::function<std::string(const std::string &decoder, std::ostream &out)> &write)
{
    if (argc < 2 || argc > 3) {
        std::cerr << "usage: " << tool.name << " FILE [DECODER]\n";
        return 2;
    }
    const std::string decoder = argc == 3 ? argv[2] : tool.decoder;
    try {
        std::ofstream file(argv[1]);
        file << "// Measured from the system's decoder while building.\n#include \"engines/" << tool.engine
             << "/Tables.h\"\n\nnamespace " << tool.engine << " {\n\n";
        std::string tables = "nullptr";
        if (dsp::DecoderProbe::exists(decoder))
            tables = '&' + write(decoder, file);
        else
            std::cout << "No decoder called " << decoder << ": building without the " << tool.format
                      << " encoder\n";
        file << "const Tables *measuredTables()\n{\n    return " << tables << ";\n}\n\n} // namespace "
             << tool.engine << '\n';
        if (!file.flush())
            throw std::runtime_error("the file can't be written");
    } catch (const std::exception &failure) {
        std::cerr << tool.name << ": " << failure.what() << '\n';
        std::remove(argv[1]);
        return 1;
    }
    return 0;
}
