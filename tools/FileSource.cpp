#include "FileSource.h"

#include <sys/stat.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace KivFisheyeTools {

namespace {

std::FILE* OpenToRead(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) {
        throw Failure("cannot open " + path + ": " + std::generic_category().message(errno));
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        std::fclose(file);
        throw Failure(path + " is a directory, not a picture");
    }
    return file;
}

int ReadFromFile(void* opaque, std::uint8_t* bytes, int size) {
    auto* file = static_cast<std::FILE*>(opaque);
    const std::size_t count = std::fread(bytes, 1, static_cast<std::size_t>(size), file);
    if (count > 0) {
        return static_cast<int>(count);
    }
    return std::ferror(file) != 0 ? AVERROR(EIO) : AVERROR_EOF;
}

}  // namespace

AvOwner<AVIOContext> OpenIo(std::FILE* file, IoCallback read, IoCallback write, SeekCallback seek) {
    constexpr int kBufferSize = 1 << 16;
    auto* buffer = static_cast<unsigned char*>(av_malloc(kBufferSize));
    if (buffer == nullptr) {
        throw std::bad_alloc();
    }
    AvOwner<AVIOContext> io(
        avio_alloc_context(buffer, kBufferSize, write != nullptr ? 1 : 0, file, read, write, seek));
    if (io == nullptr) {
        av_free(buffer);
        throw std::bad_alloc();
    }
    return io;
}

std::int64_t SeekInFile(void* opaque, std::int64_t offset, int whence) {
    auto* file = static_cast<std::FILE*>(opaque);
    if (whence == AVSEEK_SIZE) {
        struct stat status {};
        return fstat(fileno(file), &status) == 0 ? status.st_size : AVERROR(errno);
    }
    if (fseeko(file, offset, whence & ~AVSEEK_FORCE) != 0) {
        return AVERROR(errno);
    }
    return ftello(file);
}

FileSource::FileSource(const std::string& path) : m_file(OpenToRead(path)) {
    std::error_code ignored;
    const bool isFile = std::filesystem::is_regular_file(path, ignored);
    m_io = OpenIo(m_file.get(), ReadFromFile, nullptr, isFile ? SeekInFile : nullptr);
}

}  // namespace KivFisheyeTools
