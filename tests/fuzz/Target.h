#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QTemporaryDir>

/// Parsers under arbitrary bytes. A target takes any input: a sanitizer, a time limit or a broken property
/// tells what it found. Every build replays the seeds, and simple damage done to them, as ordinary tests
/// (ReplayTest.cpp); a build with TONELIFT_FUZZ makes a libFuzzer program of each target (Driver.cpp), which
/// `tests/fuzz/run` starts.
namespace fuzz {

struct Target
{
    const char *name;
    void (*run)(const QByteArray &input);
    /// Small inputs that a parser likes, and those that were once its undoing.
    QByteArrayList (*seeds)();
    /// Makes an input that was changed at random pass its checksums again; null where there are none.
    QByteArray (*mended)(QByteArray input) = nullptr;
};

extern const Target Sheets;
extern const Target Images;
extern const Target Settings;
extern const Target Answers;
extern const Target Mp3Tags;
extern const Target OggTags;
extern const Target WaveHeads;
extern const Target Asf;
extern const Target Sources;
extern const Target Names;
extern const Target Addresses;

/// Ends the program with the words where a property is broken.
void require(bool holds, const char *words);

/// Checksums of Ogg pages made anew.
QByteArray withPageChecksums(QByteArray input);

/// A folder in memory, where the system has one, that lives as long as the program.
const QTemporaryDir &folder();
/// A file of that name in the folder, with this content from now on. Its path.
QString fileOf(const QString &name, const QByteArray &content);

} // namespace fuzz
