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
    /// Takes over bytes of an open file as the system can: shared with it, or holes as holes. As `write`, but
    /// tells how many it took; where it can't, none.
    virtual std::int64_t takeOver(int /*descriptor*/, std::int64_t /*begin*/, std::int64_t /*count*/)
    {
        return 0;
    }
    /// Moves the current place, counted in bytes from the start, within what has been written.
    virtual void seek(std::int64_t position) = 0;
};

} // namespace files
