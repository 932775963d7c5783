#pragma once

#include "platform/FileSystem.h"

#include <cstddef>
#include <cstdint>

namespace KrCore::Platform {

/// An open file: bytes at a position, nothing buffered. One thread at a time.
class FileStream {
public:
    enum class Mode {
        Read,   ///< An existing file.
        Edit,   ///< To read and to write; made when missing.
        Create, ///< The same, and emptied.
        Append, ///< To read, and to write at the end; made when missing.
    };

    FileStream() = default;
    ~FileStream() { close(); }
    FileStream(const FileStream&) = delete;
    FileStream& operator=(const FileStream&) = delete;

    /// The stream is closed. A folder or a device is refused.
    FileFault open(PathUnits path, Mode mode);
    bool isOpen() const { return handle_ != closed; }
    FileFault close();

    /// Reads up to `count` bytes at the position and moves on. Returns how many, 0 at the end of
    /// the file, -1 when the system fails.
    std::int64_t read(char* bytes, std::size_t count);
    /// Writes the bytes at the position, or says why not; `written` tells how many went out.
    FileFault write(const char* bytes, std::size_t count, std::size_t& written);
    /// From the beginning of the file; may lie behind its end.
    bool seek(std::int64_t position);
    /// -1 when the system fails.
    std::int64_t size() const;
    /// The position stays.
    FileFault setSize(std::int64_t byteCount);

private:
    static constexpr std::intptr_t closed = -1;

    std::intptr_t handle_ = closed;
    bool appends_ = false;
};

} // namespace KrCore::Platform
