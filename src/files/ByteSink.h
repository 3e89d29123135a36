#pragma once

#include <cstddef>
#include <cstdint>

namespace files {

/// Where the bytes of a file go.
class ByteSink
{
public:
    virtual ~ByteSink() = default;

    /// Writes at the current place. Raises a RunTimeFailure, such as 61 for a full disk.
    virtual void write(const std::uint8_t *bytes, std::size_t count) = 0;
    /// Moves the current place, counted in bytes from the start, within what has been written.
    virtual void seek(std::int64_t position) = 0;
};

} // namespace files
