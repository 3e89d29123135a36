#include "FrameProbe.h"
#include "TestFrame.h"
#include "engines/wma/StreamFormat.h"

#include <cmath>
#include <random>
#include <stdexcept>

namespace wma {

namespace {

constexpr int Rate = 44100;
constexpr int LongestCode = 24;
constexpr int Bands = 25; ///< of a full block

/// The one coefficient that isn't zero.
struct Found
{
    int place;
    int level; ///< with its sign
};

/// Measures one table of coefficients. The first of a pair serves mono streams, the second the side channel.
class TableProbe
{
public:
    TableProbe(const std::string &decoder, int bitRate, bool second)
        : m_second(second), m_probe(decoder, Rate, second ? 2 : 1, bitRate, CodedExponents)
    {}

    MeasuredCoefficients measure()
    {
        findEnd();
        findEscape();
        findSymbols();
        return m_measured;
    }

private:
    /// All up to the coefficients, with equal exponents.
    dsp::BitWriter head() const
    {
        dsp::BitWriter writer;
        if (m_second)
            writer.put(1, 1); // mid and side
        writer.put(1, m_second ? 2 : 1);
        writer.put(TestGain - 1, 7);
        writer.put(0, Bands);
        return writer;
    }

    std::vector<Found> coefficients(dsp::BitWriter frame)
    {
        std::vector<Found> found;
        const auto spectrum = m_probe.spectrum(std::move(frame));
        if (!spectrum)
            return {{-1, 0}, {-1, 0}};
        for (int k = 0; k < int(spectrum->size()); ++k)
            if (const double level = spectrum->at(k) / TestLevel; std::abs(level) > 0.1)
                found.push_back({k, static_cast<int>(std::lround(level))});
        return found;
    }

    /// What comes after the word doesn't matter behind the end.
    void findEnd()
    {
        std::mt19937 random(1);
        const auto isEnd = [&](const Code &code) {
            for (int tail = 0; tail < 6; ++tail) {
                dsp::BitWriter frame = head();
                put(frame, code);
                frame.put(random(), 32);
                frame.put(random(), 32);
                if (!coefficients(std::move(frame)).empty())
                    return false;
            }
            return true;
        };
        m_measured.end = firstCode(isEnd);
    }

    void findEscape()
    {
        constexpr int Level = 0x155, LevelBits = 9, Run = 5, RunBits = 11;
        const auto isEscape = [&](const Code &code) {
            dsp::BitWriter frame = head();
            put(frame, code);
            frame.put(Level, LevelBits);
            frame.put(Run, RunBits);
            frame.put(1, 1);
            put(frame, m_measured.end);
            const std::vector<Found> found = coefficients(std::move(frame));
            return found.size() == 1 && found[0].place == Run && found[0].level == Level;
        };
        m_measured.escape = firstCode(isEscape);
    }

    /// The shortest word of this kind.
    template <typename Is>
    static Code firstCode(const Is &is)
    {
        for (std::uint8_t length = 1; length <= 14; ++length)
            for (std::uint32_t bits = 0; bits < 1U << length; ++bits)
                if (is(Code{bits, length}))
                    return {bits, length};
        throw std::runtime_error("a table of coefficients lacks its end or escape code");
    }

    void findSymbols()
    {
        std::vector<std::vector<Code>> levels;
        const auto same = [](const Code &a, const Code &b) {
            return a.bits == b.bits && a.length == b.length;
        };
        walkCode(LongestCode, [&](const Code &code) {
            if (same(code, m_measured.end) || same(code, m_measured.escape))
                return true;
            const std::vector<Found> up = signedSymbol(code, 1);
            if (up.size() != 1 || up[0].level <= 0)
                return false;
            const std::vector<Found> down = signedSymbol(code, 0);
            if (down.size() != 1 || down[0].place != up[0].place || down[0].level != -up[0].level)
                return false;
            levels.resize(std::max<std::size_t>(levels.size(), up[0].level));
            std::vector<Code> &runs = levels[up[0].level - 1];
            runs.resize(std::max<std::size_t>(runs.size(), up[0].place + 1));
            runs[up[0].place] = code;
            return true;
        });
        for (const std::vector<Code> &runs : levels) {
            m_measured.runs.push_back(static_cast<std::uint16_t>(runs.size()));
            m_measured.symbols.insert(m_measured.symbols.end(), runs.begin(), runs.end());
        }
        std::vector<Code> all = m_measured.symbols;
        all.push_back(m_measured.escape);
        all.push_back(m_measured.end);
        if (kraftSum(all) != 1)
            throw std::runtime_error("the code of coefficients isn't complete");
    }

    std::vector<Found> signedSymbol(const Code &code, unsigned sign)
    {
        dsp::BitWriter frame = head();
        put(frame, code);
        frame.put(sign, 1);
        put(frame, m_measured.end);
        return coefficients(std::move(frame));
    }

    bool m_second;
    FrameProbe m_probe;
    MeasuredCoefficients m_measured;
};

} // namespace

void measureCoefficients(const std::string &decoder, Measured &measured)
{
    constexpr std::array<std::array<int, 2>, TablePairs> bitRates{
        {{30000, 37000}, {40000, 50000}, {64000, 96000}}};
    for (int pair = 0; pair < TablePairs; ++pair)
        for (int second = 0; second < 2; ++second)
            measured.coefficients[pair][second] =
                TableProbe(decoder, bitRates[pair][second], second == 1).measure();
}

} // namespace wma
