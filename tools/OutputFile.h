#ifndef KIVFISHEYE_TOOLS_OUTPUT_FILE_H
#define KIVFISHEYE_TOOLS_OUTPUT_FILE_H

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace KivFisheyeTools {

/// The ending of a file's name in small letters, with its dot.
std::string EndingOf(const std::string& path);

/// Throws `UsageError` unless the name has one of the endings, which are in small letters.
void CheckEnding(const std::string& path, const std::vector<std::string>& endings);

/// A file that appears under its name only when it is complete. Until then it has a passing name
/// beside its target, and it disappears unless it is moved there. A symbolic link stays, and its
/// target is written.
class OutputFile {
public:
    /// Throws `Failure` when the target can never be written.
    explicit OutputFile(const std::string& path);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    std::FILE* File() const { return m_file; }
    void Write(const std::uint8_t* bytes, std::size_t count);
    void MoveToTarget();

private:
    std::string m_target;
    std::filesystem::path m_path;
    std::FILE* m_file = nullptr;
};

}  // namespace KivFisheyeTools

#endif
