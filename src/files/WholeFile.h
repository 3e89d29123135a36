#pragma once

#include "files/ByteSink.h"
#include "files/Descriptor.h"

#include <QString>
#include <vector>

namespace files {

/// The file that a path leads to behind all symbolic links, whether it exists or not. Failure 75 where they
/// lead round in a circle.
QString behindLinks(const QString &path);

/// Who may read a file: whom the system, or the older file of that name, gives leave, or nobody but its
/// owner.
enum class Access { AsUsual, OwnerOnly };

/// A file that appears whole or not at all: until its end a file that stood under that name stays as it was,
/// and for ever where that end isn't reached.
///
/// Where the file system can, the new file has no name until then, so that it is gone with its process
/// whatever ends that; elsewhere it has a temporary name beside its target, and the next one to be written
/// in that folder removes what a killed process left. A file that is replaced gives its owner, permissions
/// and attributes to the new one. A symbolic link stays one, and the file behind it is replaced; of several
/// hard links only the one named is.
///
/// Any one thread at a time. Everything raises the failures of `failureOf`.
class WholeFile final : public ByteSink
{
public:
    /// Failure 75 also where anything but a file stands in the target's place, and for too long a name.
    explicit WholeFile(const QString &path, Access access = Access::AsUsual);
    /// Removes what was written unless it was committed.
    ~WholeFile() override;
    WholeFile(const WholeFile &) = delete;
    WholeFile &operator=(const WholeFile &) = delete;

    void write(const std::uint8_t *bytes, std::size_t count) override;
    std::int64_t takeOver(int descriptor, std::int64_t begin, std::int64_t count) override;
    void seek(std::int64_t position) override;

    /// Bytes in the file so far.
    std::int64_t size() const { return m_size; }
    /// Where others in this process can read what was flushed.
    QString temporaryPath() const;
    /// Brings all bytes to the disk.
    void flush();
    /// Flushes, and gives the file its name, on the disk as well.
    void commit();

private:
    void openNamed(mode_t mode);
    void writeBuffer();
    void writeThrough(const std::uint8_t *bytes, std::size_t count);
    void takeName();

    QString m_path;
    QString m_part; ///< its temporary name; empty while it has none
    Descriptor m_file;
    std::vector<std::uint8_t> m_buffer; ///< what comes at m_position
    std::int64_t m_position = 0;        ///< as far as the system has it
    std::int64_t m_size = 0;
    bool m_flushed = false;
};

} // namespace files
