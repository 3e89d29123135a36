#include "converter/FormatTables.h"

#include "controls/DropDownList.h"

namespace FormatTables {

namespace {

constexpr Row BitRateRows[] = {
    {u"8 KBits", 8},     {u"16 KBits", 16},   {u"24 KBits", 24},   {u"32 KBits", 32},   {u"48 KBits", 48},
    {u"56 KBits", 56},   {u"64 KBits", 64},   {u"96 KBits", 96},   {u"112 KBits", 112}, {u"128 KBits", 128},
    {u"160 KBits", 160}, {u"192 KBits", 192}, {u"224 KBits", 224}, {u"256 KBits", 256}, {u"320 KBits", 320},
};

constexpr Row FrequencyRows[] = {
    {u"8,000 Hz", 8000},   {u"11,025 Hz", 11025}, {u"12,000 Hz", 12000},
    {u"16,000 Hz", 16000}, {u"22,050 Hz", 22050}, {u"24,000 Hz", 24000},
    {u"32,000 Hz", 32000}, {u"44,100 Hz", 44100}, {u"48,000 Hz", 48000},
};

constexpr Row WavFrequencyRows[] = {
    {u"6,000 Hz", 6000},   {u"8,000 Hz", 8000},   {u"11,025 Hz", 11025}, {u"12,000 Hz", 12000},
    {u"16,000 Hz", 16000}, {u"22,050 Hz", 22050}, {u"24,000 Hz", 24000}, {u"32,000 Hz", 32000},
    {u"44,100 Hz", 44100}, {u"48,000 Hz", 48000}, {u"88,200 Hz", 88200}, {u"96,000 Hz", 96000},
};

constexpr Row Mp3ChannelRows[] = {
    {u"Mono", 0}, {u"Stereo", 1}, {u"Joint Stereo", 2}, {u"Forced Joint Stereo", 3}, {u"Dual Channel", 4},
};

constexpr Row ChannelRows[] = {{u"Mono", 1}, {u"Stereo", 2}};

constexpr Row WavBitRows[] = {
    {u"2 Bits", 2}, {u"3 Bits", 3}, {u"4 Bits", 4}, {u"5 Bits", 5}, {u"8 Bits", 8}, {u"16 Bits", 16},
};

} // namespace

const Table BitRates = {BitRateRows, 9};
const Table Frequencies = {FrequencyRows, 7};
const Table WavFrequencies = {WavFrequencyRows, 8};
const Table Mp3Channels = {Mp3ChannelRows, 1};
const Table Channels = {ChannelRows, 1};
const Table WavBits = {WavBitRows, 5};

void fill(DropDownList &list, const Table &table)
{
    for (const Row &row : table.rows)
        list.addEntry(QString::fromUtf16(row.text), row.value);
    list.setListIndex(table.preset);
}

qint32 valueOf(const DropDownList &list, qint32 otherwise)
{
    return list.listIndex() < 0 ? otherwise : list.chosenNumber();
}

} // namespace FormatTables
