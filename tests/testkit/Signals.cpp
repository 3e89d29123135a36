#include "testkit/Signals.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace testkit {

std::vector<qint16> music(int rate, int channels, qsizetype frames)
{
    constexpr double Notes[] = {220.0, 277.18, 329.63, 246.94, 293.66, 369.99, 196.0, 261.63};
    std::vector<qint16> samples;
    samples.reserve(static_cast<std::size_t>(frames * channels));
    quint32 hiss = 1;
    for (qsizetype i = 0; i < frames; ++i) {
        const double seconds = double(i) / rate;
        const auto beat = static_cast<std::size_t>(seconds * 4);
        const double inBeat = seconds * 4 - double(beat);
        hiss = hiss * 1664525 + 1013904223;
        const double noise = (double(hiss >> 16) / 32768 - 1) * std::exp(-12 * inBeat);
        for (int c = 0; c < channels; ++c) {
            const double note = Notes[(beat + static_cast<std::size_t>(3 * c)) % 8];
            double value = 0.1 * noise;
            for (int overtone = 1; overtone <= 5 && overtone * note < 0.4 * rate; ++overtone)
                value += 0.3 / overtone / overtone * std::exp(-overtone * inBeat) *
                         std::sin(2 * std::numbers::pi * overtone * note * seconds + c);
            samples.push_back(static_cast<qint16>(std::lrint(value * 32000)));
        }
    }
    return samples;
}

std::vector<qint16> chord(int rate, int channels, qsizetype frames)
{
    std::vector<qint16> samples;
    samples.reserve(static_cast<std::size_t>(frames * channels));
    for (qsizetype i = 0; i < frames; ++i) {
        double value = 0;
        for (const double tone : {220.0, 523.25, 1318.51})
            value += 8000 * std::sin(2 * std::numbers::pi * tone * double(i) / rate);
        // The ends fade, since an abrupt one has overtones that a lower rate can't hold.
        const double fade = std::min({1.0, double(i) / rate * 20, double(frames - 1 - i) / rate * 20});
        samples.insert(samples.end(), static_cast<std::size_t>(channels),
                       static_cast<qint16>(std::lrint(value * fade)));
    }
    return samples;
}

double signalToNoise(const std::vector<qint16> &sound, const std::vector<qint16> &other)
{
    double signal = 1e-9;
    double noise = 1e-9;
    for (std::size_t i = 0; i < std::min(sound.size(), other.size()); ++i) {
        const double difference = double(sound[i]) - other[i];
        signal += double(sound[i]) * sound[i];
        noise += difference * difference;
    }
    return 10 * std::log10(signal / noise);
}

} // namespace testkit
