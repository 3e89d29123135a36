#include "quality/Material.h"

#include "demodisc/DemoDisc.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace quality {

namespace {

constexpr double Rate = 44100;
constexpr double Tau = 2 * std::numbers::pi;
/// Root mean square in 16-bit units, 78 dB under full scale.
constexpr double HissLevel = 4;

class Noise
{
public:
    explicit Noise(std::uint32_t seed) : m_state(seed) {}

    double uniform() // -1 to 1
    {
        m_state = m_state * 1664525 + 1013904223;
        return static_cast<std::int32_t>(m_state) / 2147483648.0;
    }

private:
    std::uint32_t m_state;
};

struct Stereo
{
    explicit Stereo(double seconds) : left(static_cast<std::size_t>(seconds * Rate)), right(left.size()) {}

    void add(const Stereo &other, double gain)
    {
        for (std::size_t n = 0; n < std::min(left.size(), other.left.size()); ++n) {
            left[n] += gain * other.left[n];
            right[n] += gain * other.right[n];
        }
    }

    /// `sound` gets the seconds since its start.
    void add(double start, double seconds, double pan, const std::function<double(double)> &sound)
    {
        const auto first = static_cast<std::size_t>(start * Rate);
        const auto end = std::min(left.size(), first + static_cast<std::size_t>(seconds * Rate));
        for (std::size_t n = first; n < end; ++n) {
            const double value = sound(static_cast<double>(n - first) / Rate);
            left[n] += value * (1 - pan);
            right[n] += value * pan;
        }
    }

    std::vector<std::int16_t> scaled(double peak) const { return sampled(peak, 0); }

    /// With the noise that microphones and amplifiers leave in a recording.
    std::vector<std::int16_t> recorded(double peak) const { return sampled(peak, HissLevel); }

    std::vector<double> left, right;

private:
    std::vector<std::int16_t> sampled(double peak, double hissLevel) const
    {
        Noise hiss(777);
        double loudest = 1e-9;
        for (std::size_t n = 0; n < left.size(); ++n)
            loudest = std::max({loudest, std::abs(left[n]), std::abs(right[n])});
        std::vector<std::int16_t> samples;
        for (std::size_t n = 0; n < left.size(); ++n)
            for (const double value : {left[n], right[n]})
                samples.push_back(static_cast<std::int16_t>(
                    std::lround(value / loudest * peak + std::sqrt(3.0) * hissLevel * hiss.uniform())));
        return samples;
    }
};

double note(int semitones)
{
    return 220 * std::pow(2, semitones / 12.0);
}

Stereo pads(double seconds)
{
    Stereo out(seconds);
    const std::array<std::array<int, 4>, 4> chords{
        {{0, 4, 7, 12}, {-3, 0, 4, 9}, {-7, -3, 0, 5}, {-5, -1, 2, 7}}};
    for (int bar = 0; bar * 2.0 < seconds; ++bar) {
        for (int voice = 0; voice < 4; ++voice) {
            const double base = note(chords[bar % 4][voice]);
            for (int partial = 1; partial <= 9; ++partial) {
                const double phase = voice * 1.3 + partial * 0.7;
                out.add(bar * 2.0, 2.2, 0.3 + 0.13 * voice, [=](double t) {
                    const double level = std::min(1.0, t / 0.3) * std::min(1.0, (2.2 - t) / 0.3);
                    return level / partial / partial *
                           std::sin(Tau * base * partial * t + 0.8 * partial * std::sin(Tau * 5.2 * t) / 5.2 +
                                    phase);
                });
            }
        }
    }
    return out;
}

Stereo plucks(double seconds)
{
    Stereo out(seconds);
    Noise random(7);
    for (int n = 0; n * 0.17 < seconds; ++n) {
        const double pitch = note(std::array{0, 3, 7, 10, 12, 15, 19, 22}[(n * 5) % 8] - 12 * (n % 3 == 0));
        std::vector<double> line(static_cast<std::size_t>(Rate / pitch));
        for (double &value : line)
            value = random.uniform();
        std::size_t place = 0;
        const double pan = 0.1 + 0.2 * (n % 5);
        out.add(n * 0.17, 1.2, pan, [&](double) {
            const std::size_t next = (place + 1) % line.size();
            const double value = line[place];
            line[place] = 0.497 * (line[place] + line[next]);
            place = next;
            return value;
        });
    }
    return out;
}

Stereo drums(double seconds)
{
    Stereo out(seconds);
    Noise random(3);
    for (int step = 0; step * 0.125 < seconds; ++step) {
        const double start = step * 0.125;
        if (step % 8 == 0 || step % 8 == 5)
            out.add(start, 0.4, 0.5, [](double t) {
                return 1.2 * std::exp(-9 * t) * std::sin(Tau * (50 * t + 8 * (1 - std::exp(-30 * t))));
            });
        if (step % 8 == 4)
            out.add(start, 0.3, 0.55, [&](double t) {
                return std::exp(-14 * t) * random.uniform() +
                       0.5 * std::exp(-20 * t) * std::sin(Tau * 190 * t);
            });
        double last = 0;
        out.add(start, 0.12, 0.35, [&](double t) {
            const double now = random.uniform();
            const double high = now - last;
            last = now;
            return (step % 4 == 2 ? 0.35 : 0.2) * std::exp(-(step % 4 == 2 ? 25 : 70) * t) * high;
        });
    }
    return out;
}

/// Voiced and unvoiced syllables: pulses or noise through resonators.
Stereo speech(double seconds)
{
    Stereo out(seconds);
    Noise random(11);
    const std::array<std::array<double, 3>, 4> vowels{
        {{730, 1090, 2440}, {270, 2290, 3010}, {570, 840, 2410}, {530, 1840, 2480}}};
    for (int syllable = 0; syllable * 0.24 < seconds; ++syllable) {
        if (syllable % 7 == 6)
            continue;
        const bool voiced = syllable % 3 != 1;
        const auto &formants = vowels[syllable % 4];
        std::array<std::array<double, 2>, 3> state{};
        double phase = 0;
        out.add(syllable * 0.24, voiced ? 0.22 : 0.1, 0.5, [&](double t) {
            const double length = voiced ? 0.22 : 0.1;
            phase += (115 + 25 * std::sin(syllable * 1.7 + 6 * t)) / Rate;
            double source = 0.05 * random.uniform();
            if (voiced && phase >= 1) {
                phase -= 1;
                source += 1;
            }
            if (!voiced)
                source = 0.4 * random.uniform();
            double sum = 0;
            for (std::size_t f = 0; f < 3; ++f) {
                const double hertz = voiced ? formants[f] : 2500 + 2200.0 * static_cast<double>(f);
                const double r = std::exp(-std::numbers::pi * (voiced ? 90 : 900) / Rate);
                const double value =
                    source + 2 * r * std::cos(Tau * hertz / Rate) * state[f][0] - r * r * state[f][1];
                state[f] = {value, state[f][0]};
                sum += value * (1 - r) * (f == 0 ? 1 : 0.5);
            }
            return sum * std::min(1.0, t / 0.01) * std::min(1.0, (length - t) / 0.03);
        });
    }
    return out;
}

Stereo dense(double seconds)
{
    Stereo out(seconds);
    Noise random(23);
    for (int voice = 0; voice < 24; ++voice) {
        const double base = note(voice * 7 % 31 - 12) * (1 + 0.003 * random.uniform());
        const double pan = 0.5 + 0.5 * random.uniform();
        const double beat = 0.9 + 0.4 * random.uniform();
        out.add(0, seconds, pan, [=](double t) {
            double sum = 0; // a bright saw with a moving loudness
            for (int partial = 1; partial * base < 15000 && partial <= 20; ++partial)
                sum += std::sin(Tau * base * partial * t + voice) / partial;
            return sum * (0.6 + 0.4 * std::sin(Tau * beat * t + voice));
        });
    }
    double lastLeft = 0, lastRight = 0;
    for (std::size_t n = 0; n < out.left.size(); ++n) {
        out.left[n] += lastLeft = 0.7 * lastLeft + 0.8 * random.uniform();
        out.right[n] += lastRight = 0.7 * lastRight + 0.8 * random.uniform();
    }
    return out;
}

Stereo clicks(double seconds)
{
    Stereo out(seconds);
    Noise random(5);
    for (int n = 0; n * 0.31 < seconds; ++n)
        out.add(n * 0.31, 0.02, 0.1 + 0.4 * (n % 3), [&](double t) {
            return std::exp(-700 * t) * (n % 2 ? random.uniform() : std::sin(Tau * 2500 * t));
        });
    return out;
}

Stereo bells(double seconds)
{
    Stereo out(seconds);
    const std::array<double, 6> ratios{0.56, 0.92, 1.19, 2.0, 2.74, 4.07};
    for (int n = 0; n * 0.6 < seconds; ++n) {
        const double base = note(std::array{12, 16, 19, 24, 21}[n % 5]);
        for (std::size_t p = 0; p < ratios.size(); ++p)
            out.add(n * 0.6, 2.5, 0.25 + 0.1 * (n % 6), [=](double t) {
                return std::exp(-(1.5 + static_cast<double>(p)) * t) * std::sin(Tau * base * ratios[p] * t) /
                       (1 + static_cast<double>(p));
            });
    }
    return out;
}

Stereo hiss(double seconds)
{
    Stereo out(seconds);
    Noise random(99);
    for (std::size_t n = 0; n < out.left.size(); ++n) {
        out.left[n] = random.uniform();
        out.right[n] = random.uniform();
    }
    return out;
}

/// Echoes that grow denser, different on both sides.
void addReverb(Stereo &sound)
{
    for (const auto &[delay, gain] : {std::pair{1499, 0.5}, {2203, 0.42}, {3511, 0.35}, {4999, 0.3}}) {
        for (std::size_t n = static_cast<std::size_t>(delay); n < sound.left.size(); ++n) {
            const double left = sound.left[n - static_cast<std::size_t>(delay)];
            sound.left[n] += gain * sound.right[n - static_cast<std::size_t>(delay)] * 0.6;
            sound.right[n] += gain * left * 0.6;
        }
    }
}

} // namespace

std::vector<Material> material(double seconds)
{
    std::vector<Material> all;
    all.push_back({"pads", true, pads(seconds).recorded(20000)});
    all.push_back({"plucks", true, plucks(seconds).recorded(24000)});
    all.push_back({"drums", true, drums(seconds).recorded(29000)});
    all.push_back({"speech", true, speech(seconds).recorded(22000)});
    Stereo mix = pads(seconds);
    mix.add(plucks(seconds), 1.2);
    mix.add(drums(seconds), 1.5);
    mix.add(speech(seconds), 4);
    all.push_back({"mix", true, mix.recorded(29000)});
    all.push_back({"dense", true, dense(seconds).recorded(28000)});
    all.push_back({"clicks in silence", true, clicks(seconds).scaled(25000)});
    Stereo bellsOverNoise = bells(seconds);
    bellsOverNoise.add(hiss(seconds), 0.02);
    all.push_back({"bells over noise", false, bellsOverNoise.recorded(22000)});
    Stereo band = plucks(seconds);
    band.add(drums(seconds), 1.0);
    band.add(pads(seconds), 0.5);
    addReverb(band);
    all.push_back({"band with reverb", false, band.recorded(28000)});
    Stereo talk = bells(seconds);
    talk.add(speech(seconds), 6);
    all.push_back({"talk over bells", false, talk.recorded(24000)});
    for (int number = 1; number <= 6; ++number)
        all.push_back(
            {"disc piece " + std::to_string(number), false,
             demodisc::render({number, static_cast<int>(seconds * demodisc::SectorsPerSecond), {}})});
    return all;
}

} // namespace quality
