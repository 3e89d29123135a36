#include "fuzz/Target.h"

#include <QCoreApplication>
#include <QFile>
#include <cstdint>
#include <cstring>

// What libFuzzer calls, for the one target that the build names.

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *bytes, std::size_t size, std::size_t most);

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    // Seeds go where the script keeps the inputs of the target.
    const QString corpus = qEnvironmentVariable("FUZZ_SEEDS");
    const QByteArrayList seeds = fuzz::TONELIFT_FUZZ_TARGET.seeds();
    for (qsizetype i = 0; i < seeds.size() && !corpus.isEmpty(); ++i) {
        QFile file(QStringLiteral("%1/seed%2").arg(corpus).arg(i));
        if (file.open(QIODevice::WriteOnly))
            file.write(seeds[i]);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::TONELIFT_FUZZ_TARGET.run(QByteArray(reinterpret_cast<const char *>(bytes), qsizetype(size)));
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *bytes, std::size_t size, std::size_t most,
                                               unsigned)
{
    const std::size_t changed = LLVMFuzzerMutate(bytes, size, most);
    if (fuzz::TONELIFT_FUZZ_TARGET.mended) {
        const QByteArray mended = fuzz::TONELIFT_FUZZ_TARGET.mended(
            QByteArray(reinterpret_cast<const char *>(bytes), qsizetype(changed)));
        std::memcpy(bytes, mended.constData(), changed);
    }
    return changed;
}
