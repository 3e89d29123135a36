#pragma once

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

/// What the programs have in common that measure a format's code tables while the program is built.
struct TableTool
{
    std::string name;    ///< of the program
    std::string format;  ///< of sound, for people
    std::string engine;  ///< folder and namespace
    std::string decoder; ///< the library's, where the command line names no other
};

/// Raises std::runtime_error for tables that aren't the known ones.
void expectChecksum(std::uint32_t actual, std::uint32_t known, const std::string &table);

/// The program: NAME FILE [DECODER]. `write` measures and writes the definition of the engine's tables and
/// gives their name; it may raise. Without such a decoder the file says that there are no tables. Gives the
/// exit code.
int runTableTool(int argc, char **argv, const TableTool &tool,
                 const std::function<std::string(const std::string &decoder, std::ostream &out)> &write);
