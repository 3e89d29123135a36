#pragma once

#include <QFile>
#include <QString>
#include <cstddef>
#include <cstdint>

namespace engines {

/// Where encoded bytes go.
class ByteSink
{
public:
    virtual ~ByteSink() = default;

    /// Writes at the current place. Raises a RunTimeFailure, such as 61 for a full disk.
    virtual void write(const std::uint8_t *bytes, std::size_t count) = 0;
    /// Moves the current place, counted in bytes from the start, within what has been written.
    virtual void seek(std::int64_t position) = 0;
};

/// A file that appears whole or not at all: it is written under a temporary name beside its target and takes
/// the target's name at the end. Until then, and for ever where that end isn't reached, a file that stood
/// under that name stays as it was. Any one thread at a time.
class OutputFile : public ByteSink
{
public:
    /// Creates the temporary file. Failure 76 for a missing folder, 70 for a forbidden one, 61 for a full
    /// disk, 75 for the rest (a folder in the target's place, too long a name).
    explicit OutputFile(const QString &path);
    /// Removes the temporary file unless it was committed.
    ~OutputFile() override;
    OutputFile(const OutputFile &) = delete;
    OutputFile &operator=(const OutputFile &) = delete;

    void write(const std::uint8_t *bytes, std::size_t count) override;
    void seek(std::int64_t position) override;

    /// Bytes in the file so far.
    std::int64_t size() const { return m_size; }
    /// Where the file lies until then.
    QString temporaryPath() const { return m_file.fileName(); }
    /// Hands all bytes to the system, so that others who open the temporary file find them.
    void flush();
    /// Flushes to the disk, closes and renames. Raises the failures of writing.
    void commit();

private:
    [[noreturn]] void fail(int systemError) const;

    QString m_path;
    QFile m_file;
    std::int64_t m_size = 0;
    bool m_committed = false;
};

} // namespace engines
