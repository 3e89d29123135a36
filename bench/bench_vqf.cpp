// How well and how fast VQF files are written, beside MP3 files of the same bit rate: signal-to-noise ratio
// and noise-to-mask ratio of what the system's decoders make of them.
//
//     bench_vqf [NAME]...     those sounds alone
#include "engines/codecs/Mp3Encoder.h"
#include "engines/vqf/VqfEncoder.h"
#include "quality/Coding.h"
#include "quality/Material.h"
#include "quality/Table.h"

#include <algorithm>
#include <cstdio>

int main(int argc, char **argv)
{
    if (!vqf::isAvailable()) {
        std::puts("This build has no VQF encoder.");
        return 1;
    }
    codecs::Mp3Settings settings;
    settings.bitRate = 96;
    settings.channelMode = codecs::Mp3Settings::JointStereo;
    const auto mp3Recipe = codecs::mp3Recipe(settings);
    const auto oneThread = vqf::vqfRecipe(1), twoThreads = vqf::vqfRecipe(2);
    quality::Meter meter;
    quality::Table table({"VQF 96", "MP3 96 CBR"});
    double seconds = 0, processor = 0, one = 0, two = 0, mp3 = 0;
    for (const quality::Material &material : quality::material()) {
        if (argc > 1 && std::find(argv + 1, argv + argc, material.name) == argv + argc)
            continue;
        const quality::Encoded vqfFile = quality::encode(*oneThread, material.samples);
        const quality::Encoded again = quality::encode(*twoThreads, material.samples);
        const quality::Encoded mp3File = quality::encode(*mp3Recipe, material.samples);
        if (again.file != vqfFile.file)
            std::puts("two threads give other bytes than one");
        seconds += static_cast<double>(material.samples.size()) / 2 / 44100;
        processor += vqfFile.processorSeconds;
        one += vqfFile.seconds;
        two += again.seconds;
        mp3 += mp3File.seconds;
        // VQF files need no search for their delay: there is none.
        table.addRow(
            material.name, material.tuned ? "tuned by" : "others",
            {meter.measure(material.samples, quality::decode(vqfFile.file, QStringLiteral(".vqf")), 0),
             measure(meter, material.samples, mp3File.file, QStringLiteral(".mp3"))});
    }
    table.printMeans();
    std::printf("processor time: VQF %.1f times real time\n", seconds / processor);
    std::printf("times real time: VQF %.1f on one thread, %.1f on two; MP3 %.1f\n", seconds / one,
                seconds / two, seconds / mp3);
}
