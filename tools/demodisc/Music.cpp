#include "demodisc/DemoDisc.h"

#include <algorithm>
#include <array>

// All sums here use +, -, * and / alone, which give the same bits on every machine; the library's sine does
// not, and the build forbids fused operations for this folder.

namespace demodisc {

namespace {

constexpr double Rate = 44100;
constexpr int TableSize = 2048;
constexpr std::array<double, 12> Semitones = {1.0,
                                              1.0594630943592953,
                                              1.122462048309373,
                                              1.189207115002721,
                                              1.2599210498948732,
                                              1.3348398541700344,
                                              1.4142135623730951,
                                              1.4983070768766815,
                                              1.5874010519681994,
                                              1.681792830507429,
                                              1.7817974362806785,
                                              1.8877486253633868};

/// What makes one piece differ from the next.
struct Style
{
    int beatsPerMinute;
    int key; ///< of the bass, as a MIDI note
    bool minor;
    std::array<double, 5> lead; ///< strengths of the first harmonics
    std::array<double, 5> pad;
    std::array<int, 4> chords; ///< steps of the scale, one a bar
    int drums;                 ///< 0 none, 1 a light hat, 2 the whole kit
};

constexpr std::array<Style, 6> Styles = {{
    {96, 36, false, {1, .3, .2, .1, .05}, {1, 0, .1, 0, 0}, {0, 5, 3, 4}, 1},
    {132, 33, true, {1, .7, .5, .4, .3}, {1, .5, .3, .2, .1}, {0, 3, 0, 4}, 2},
    {72, 41, false, {1, 0, 0, .2, 0}, {1, .2, 0, 0, 0}, {0, 4, 5, 3}, 0},
    {110, 38, true, {1, 0, .33, 0, .2}, {1, 0, .3, 0, .1}, {0, 5, 2, 6}, 2},
    {150, 43, false, {1, .9, .8, .7, .6}, {1, .4, .2, .1, 0}, {0, 3, 4, 0}, 2},
    {84, 34, true, {1, .1, .4, .1, .2}, {1, .3, .3, .1, .1}, {0, 2, 5, 4}, 1},
}};

/// Sine of `turns` whole turns, by its series; good to nine digits.
double sine(double turns)
{
    turns -= static_cast<double>(static_cast<std::int64_t>(turns));
    double x = turns * 6.283185307179586;
    if (x > 3.141592653589793)
        x -= 6.283185307179586;
    double term = x;
    double sum = x;
    for (int i = 1; i < 12; ++i) {
        term *= -x * x / ((2 * i) * (2 * i + 1));
        sum += term;
    }
    return sum;
}

double frequency(int note)
{
    double hertz = 8.175798915643707 * Semitones[static_cast<std::size_t>(note % 12)];
    for (int octave = note / 12; octave > 0; --octave)
        hertz *= 2;
    return hertz;
}

using Table = std::array<float, TableSize>;

Table tableOf(const std::array<double, 5> &harmonics)
{
    Table table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        double sum = 0;
        for (std::size_t h = 0; h < harmonics.size(); ++h)
            sum += harmonics[h] * sine(static_cast<double>((i * (h + 1)) % TableSize) / TableSize);
        table[i] = static_cast<float>(sum);
    }
    return table;
}

class Mixer
{
public:
    explicit Mixer(std::size_t frames) : left(frames), right(frames) {}

    void add(std::size_t frame, double value, double pan)
    {
        left[frame] += static_cast<float>(value * (1 - pan));
        right[frame] += static_cast<float>(value * pan);
    }

    std::vector<float> left;
    std::vector<float> right;
};

/// A note that fades; `pan` runs from 0, left, to 1, right.
struct Note
{
    std::size_t start;
    std::size_t frames;
    int note;
    double level;
    double pan;
};

void play(Mixer &mixer, const Table &table, const Note &note)
{
    const double step = frequency(note.note) * TableSize / Rate;
    const std::size_t end = std::min(note.start + note.frames, mixer.left.size());
    const double fade = note.level / static_cast<double>(note.frames);
    double phase = 0;
    for (std::size_t i = note.start; i < end; ++i) {
        const auto whole = static_cast<std::size_t>(phase);
        const double part = phase - static_cast<double>(whole);
        const double here = table[whole % TableSize];
        const double next = table[(whole + 1) % TableSize];
        const auto age = static_cast<double>(i - note.start);
        const double attack = age < 200 ? age / 200 : 1;
        mixer.add(i, (here + (next - here) * part) * attack * (note.level - fade * age), note.pan);
        phase += step;
        if (phase >= TableSize)
            phase -= TableSize;
    }
}

/// A hit of noise: the hat when short, the snare when longer.
void hit(Mixer &mixer, std::size_t start, std::size_t frames, double level, double pan, std::uint32_t &noise)
{
    const std::size_t end = std::min(start + frames, mixer.left.size());
    for (std::size_t i = start; i < end; ++i) {
        noise = noise * 1664525u + 1013904223u;
        const double left = static_cast<double>(end - i) / static_cast<double>(frames);
        mixer.add(i, (static_cast<double>(noise >> 8) / 8388608.0 - 1) * level * left * left * left, pan);
    }
}

void kick(Mixer &mixer, std::size_t start)
{
    constexpr std::size_t Frames = 6000;
    const std::size_t end = std::min(start + Frames, mixer.left.size());
    double phase = 0;
    double step = 140 / Rate;
    double level = 0.5;
    for (std::size_t i = start; i < end; ++i) {
        mixer.add(i, sine(phase) * level, 0.5);
        phase += step;
        step *= 0.9997;
        level *= 0.9994;
    }
}

/// The note of a step of the scale above the key.
int scaleNote(const Style &style, int step)
{
    constexpr std::array<int, 7> Major = {0, 2, 4, 5, 7, 9, 11};
    constexpr std::array<int, 7> Minor = {0, 2, 3, 5, 7, 8, 10};
    const auto degree = static_cast<std::size_t>(step % 7);
    return style.key + step / 7 * 12 + (style.minor ? Minor[degree] : Major[degree]);
}

void playBeat(Mixer &mixer, const Style &style, const Table &lead, const Table &pad, int beat,
              std::size_t start, std::size_t frames, std::uint32_t &noise)
{
    const int chord = style.chords[static_cast<std::size_t>(beat / 4 % 4)];
    if (beat % 4 == 0)
        for (int third = 0; third < 3; ++third)
            play(mixer, pad,
                 {start, frames * 4, scaleNote(style, chord + 14 + 2 * third), 0.09, 0.2 + 0.3 * third});
    play(mixer, pad, {start, frames, scaleNote(style, chord), 0.3, 0.5});
    for (std::size_t half = 0; half < 2; ++half) {
        noise = noise * 1664525u + 1013904223u;
        const int step = chord + 21 + static_cast<int>(noise >> 24) % 5;
        play(mixer, lead,
             {start + half * frames / 2, frames * 2 / 3, scaleNote(style, step), 0.12,
              beat % 2 == 0 ? 0.3 : 0.7});
        if (style.drums > 0)
            hit(mixer, start + half * frames / 2, 1500, 0.2, 0.65, noise);
    }
    if (style.drums > 1 && beat % 2 == 0)
        kick(mixer, start);
    if (style.drums > 1 && beat % 2 == 1)
        hit(mixer, start, 5000, 0.4, 0.45, noise);
}

std::int16_t toSample(float value)
{
    const float scaled = value * 32767.0f;
    const float rounded = scaled < 0 ? scaled - 0.5f : scaled + 0.5f;
    return static_cast<std::int16_t>(std::clamp(rounded, -32768.0f, 32767.0f));
}

} // namespace

std::vector<std::int16_t> render(const TrackPlan &plan)
{
    const auto frames = static_cast<std::size_t>(plan.sectors) * FramesPerSector;
    const int round = (plan.number - 1) / static_cast<int>(Styles.size());
    Style style = Styles[static_cast<std::size_t>(plan.number - 1) % Styles.size()];
    style.beatsPerMinute += 7 * round;
    style.key += 2 * round;

    Mixer mixer(frames);
    const Table lead = tableOf(style.lead);
    const Table pad = tableOf(style.pad);
    const auto beatFrames = static_cast<std::size_t>(Rate * 60 / style.beatsPerMinute);
    const std::size_t lead_in = std::min<std::size_t>(frames / 10, 17640);
    const std::size_t end = frames - lead_in;
    auto noise = static_cast<std::uint32_t>(plan.number) * 2654435761u;
    int beat = 0;
    for (std::size_t start = lead_in; start + beatFrames <= end; start += beatFrames)
        playBeat(mixer, style, lead, pad, beat++, start, beatFrames, noise);

    const std::size_t silence = lead_in + beatFrames * static_cast<std::size_t>(beat / 2);
    const std::size_t loud = frames / 4 * 3;
    std::vector<std::int16_t> samples(frames * 2);
    for (std::size_t i = lead_in; i < end; ++i) {
        if (i >= silence && i < silence + beatFrames)
            continue;
        const float gain = i < loud ? 1.5f : 5.0f;
        samples[2 * i] = toSample(mixer.left[i] * gain);
        samples[2 * i + 1] = toSample(mixer.right[i] * gain);
    }
    return samples;
}

} // namespace demodisc
