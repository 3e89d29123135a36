#pragma once

#include <QtGlobal>
#include <span>

class DropDownList;

/// The rows of the drop-down lists on the format pages. A row pairs a text with the value that goes to the
/// component.
namespace FormatTables {

struct Row
{
    const char16_t *text;
    qint32 value;
};

/// A list with the row that is chosen at first.
struct Table
{
    std::span<const Row> rows;
    int preset;
};

extern const Table BitRates;       ///< kb/s; without 40 and 80
extern const Table Frequencies;    ///< hertz, of MP3 and OGG
extern const Table WavFrequencies; ///< hertz
extern const Table Mp3Channels;    ///< the channel mode; 0 stands for mono
extern const Table Channels;       ///< 1 or 2
extern const Table WavBits;        ///< per sample

/// Fills the list and chooses the preset row.
void fill(DropDownList &list, const Table &table);

/// The value of the chosen row; `otherwise` where none is chosen.
qint32 valueOf(const DropDownList &list, qint32 otherwise);

} // namespace FormatTables
