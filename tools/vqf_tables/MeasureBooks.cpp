// The codebooks of the spectrum and of the peaks. Frames that differ in nothing but signs tell the two
// codebooks' shares apart; every entry stands at every place once, so that all values of a column are known
// but for one common factor.
#include "Measurement.h"
#include "engines/dsp/IntegerFit.h"
#include "engines/vqf/Layout.h"

#include <functional>
#include <stdexcept>

namespace vqf {

namespace {

constexpr std::uint8_t Negative = 64;
constexpr int LargestEntry = 33000;

/// What both codebooks contribute at every coefficient of one frame.
struct Shares
{
    FrameProbe::Spectra first, second;
};

using SetIndices = std::function<void(Frame &, std::uint8_t firstSign, std::uint8_t secondSign)>;

Shares sharesOf(FrameProbe &probe, Frame frame, const SetIndices &set)
{
    const auto spectra = [&](std::uint8_t firstSign, std::uint8_t secondSign) {
        set(frame, firstSign, secondSign);
        return probe.spectra(frame);
    };
    const FrameProbe::Spectra both = spectra(0, 0);
    Shares shares{spectra(Negative, 0), spectra(0, Negative)};
    for (int c = 0; c < Channels; ++c) {
        for (int k = 0; k < FrameSize; ++k) {
            shares.first[c][k] = (both[c][k] - shares.first[c][k]) / 2;
            shares.second[c][k] = (both[c][k] - shares.second[c][k]) / 2;
        }
    }
    return shares;
}

/// The entries of both codebooks in one column, first those of the first codebook, from several vectors,
/// which must agree.
class Column
{
public:
    void add(std::span<const double> values)
    {
        const auto integers = dsp::fitIntegers(values, LargestEntry);
        if (!integers || (!m_integers.empty() && m_integers != *integers))
            throw std::runtime_error("a codebook's column has no clear values");
        m_integers = *integers;
    }

    template <typename Book>
    void store(std::array<Book, 2> &books, int element) const
    {
        for (int entry = 0; entry < BookSize; ++entry) {
            books[0][entry][element] = static_cast<std::int16_t>(m_integers[entry]);
            books[1][entry][element] = static_cast<std::int16_t>(m_integers[BookSize + entry]);
        }
    }

private:
    std::vector<int> m_integers;
};

} // namespace

void measureMainBooks(FrameProbe &probe, Tables &tables)
{
    constexpr int Witnesses = 8;
    for (int t = 0; t < BlockTypes; ++t) {
        const auto type = static_cast<BlockType>(t);
        const TypeLayout &layout = Layouts[type];
        const VectorLayout vectors(type);
        // values[vector][element] holds both codebooks' entries.
        std::vector<std::array<std::array<double, 2 * BookSize>, MaxVectorLength>> values(layout.vectors);
        for (int round = 0; round < BookSize; ++round) {
            const auto entry = [round](int vector) {
                return static_cast<std::uint8_t>((vector + round) % 64);
            };
            const Shares shares =
                sharesOf(probe, FrameProbe::testFrame(type, 200),
                         [&](Frame &frame, std::uint8_t firstSign, std::uint8_t secondSign) {
                             for (int vector = 0; vector < layout.signedVectors; ++vector)
                                 frame.main[vector] = {static_cast<std::uint8_t>(entry(vector) | firstSign),
                                                       static_cast<std::uint8_t>(entry(vector) | secondSign)};
                         });
            for (int vector = 0; vector < layout.signedVectors; ++vector) {
                for (int element = 0; element < vectors.length(vector); ++element) {
                    const VectorLayout::Place &place = vectors.place(vector, element);
                    values[vector][element][entry(vector)] = shares.first[place.channel][place.offset];
                    values[vector][element][BookSize + entry(vector)] =
                        shares.second[place.channel][place.offset];
                }
            }
        }
        for (int element = 0; element < layout.vectorLength; ++element) {
            const bool last = element == layout.vectorLength - 1;
            const int usable = last ? layout.longVectors : layout.signedVectors;
            Column column;
            for (int n = 0; n < Witnesses; ++n)
                column.add(values[n * (usable - 1) / (Witnesses - 1)][element]);
            column.store(tables.main[type], element);
        }
    }
}

void measurePeakBooks(FrameProbe &probe, Tables &tables)
{
    const std::vector<int> positions = peakPositions(0);
    Frame frame = FrameProbe::testFrame(Long, 0);
    for (ChannelFields &channel : frame.channel)
        channel.peakGain = PeakGains - 1;
    std::array<std::array<std::array<double, 2 * BookSize>, PeakVectorLength>, PeakVectors> values;
    for (int round = 0; round < BookSize; ++round) {
        const auto entry = [round](int vector) {
            return static_cast<std::uint8_t>((5 * vector + round) % 64);
        };
        const Shares shares =
            sharesOf(probe, frame, [&](Frame &test, std::uint8_t firstSign, std::uint8_t secondSign) {
                for (int vector = 0; vector < PeakVectors; ++vector)
                    test.peaks[vector] = {static_cast<std::uint8_t>(entry(vector) | firstSign),
                                          static_cast<std::uint8_t>(entry(vector) | secondSign)};
            });
        for (int vector = 0; vector < PeakVectors; ++vector) {
            for (int element = 0; element < PeakVectorLength; ++element) {
                const PeakPlace place = peakPlace(vector, element);
                const int k = positions[place.value];
                values[vector][element][entry(vector)] = shares.first[place.channel][k];
                values[vector][element][BookSize + entry(vector)] = shares.second[place.channel][k];
            }
        }
    }
    for (int element = 0; element < PeakVectorLength; ++element) {
        Column column;
        for (int vector = 0; vector < PeakVectors; ++vector)
            column.add(values[vector][element]);
        column.store(tables.peaks, element);
    }
}

} // namespace vqf
