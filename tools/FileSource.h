#ifndef KIVFISHEYE_TOOLS_FILE_SOURCE_H
#define KIVFISHEYE_TOOLS_FILE_SOURCE_H

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

#include "AvSupport.h"

namespace KivFisheyeTools {

/// Makes FFmpeg's view of a file that it reads or writes through callbacks. FFmpeg never sees the
/// path, which it might take for an address on the network or for the pattern of a series.
using IoCallback = int (*)(void* file, std::uint8_t* bytes, int size);
using SeekCallback = std::int64_t (*)(void* file, std::int64_t offset, int whence);
AvOwner<AVIOContext> OpenIo(std::FILE* file, IoCallback read, IoCallback write, SeekCallback seek);

/// Moves in a file of the system, as FFmpeg asks for.
std::int64_t SeekInFile(void* opaque, std::int64_t offset, int whence);

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

/// A file or pipe that FFmpeg reads.
class FileSource {
public:
    /// Throws `Failure` when it cannot be opened.
    explicit FileSource(const std::string& path);

    AVIOContext* Io() const { return m_io.get(); }

    /// The bytes of a file, or a negative number for a pipe.
    std::int64_t Size() const { return avio_size(m_io.get()); }

private:
    std::unique_ptr<std::FILE, FileCloser> m_file;
    AvOwner<AVIOContext> m_io;
};

}  // namespace KivFisheyeTools

#endif
