#ifndef KIVFISHEYE_TESTS_TEMPORARY_FOLDER_H
#define KIVFISHEYE_TESTS_TEMPORARY_FOLDER_H

#include <filesystem>
#include <set>
#include <string>

/// A new folder that is removed with everything in it.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& Path() const { return m_path; }
    std::string File(const std::string& name) const { return (m_path / name).string(); }

    /// The names of all entries, hidden ones too.
    std::set<std::string> Names() const;

private:
    std::filesystem::path m_path;
};

std::string ContentOf(const std::string& path);
void WriteContent(const std::string& path, const std::string& content);

#endif
