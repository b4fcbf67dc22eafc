#include "OutputFile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "Failure.h"
#include "Numbers.h"

namespace KivFisheyeTools {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void FailToWrite(const std::string& path, int error) {
    throw Failure("cannot write " + path + ": " + std::generic_category().message(error));
}

/// Where a write to the path goes: the end of its symbolic links, which need not exist.
std::string TargetOf(const std::string& path) {
    constexpr int kMostLinks = 40;
    fs::path target = path;
    std::error_code error;
    for (int links = 0; fs::is_symlink(target, error); ++links) {
        const fs::path next = fs::read_symlink(target, error);
        if (error || links == kMostLinks) {
            FailToWrite(path, error ? error.value() : ELOOP);
        }
        target = target.parent_path() / next;
    }
    return target.string();
}

/// Refuses what a rename would replace although it cannot be written.
void CheckTarget(const std::string& target) {
    std::error_code ignored;
    if (!fs::exists(target, ignored)) {
        return;
    }
    if (!fs::is_regular_file(target, ignored)) {
        throw Failure("cannot write " + target + ": it is not a regular file");
    }
    if (access(target.c_str(), W_OK) != 0) {
        FailToWrite(target, errno);
    }
}

}  // namespace

std::string EndingOf(const std::string& path) {
    std::string ending = fs::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return ending;
}

void CheckEnding(const std::string& path, const std::vector<std::string>& endings) {
    if (std::find(endings.begin(), endings.end(), EndingOf(path)) == endings.end()) {
        throw UsageError("cannot write " + path + ": it needs a name with the ending " +
                         Listed(endings, "or"));
    }
}

OutputFile::OutputFile(const std::string& path) : m_target(TargetOf(path)) {
    CheckTarget(m_target);
    const fs::path directory = fs::path(m_target).parent_path();
    for (unsigned attempt = 0; m_file == nullptr; ++attempt) {
        m_path =
            directory / (".kivfisheye-" + std::to_string(getpid()) + "-" + std::to_string(attempt));
        m_file = std::fopen(m_path.c_str(), "wbx");
        if (m_file == nullptr && errno != EEXIST) {
            FailToWrite(m_target, errno);
        }
    }
}

OutputFile::~OutputFile() {
    if (m_file != nullptr) {
        std::fclose(m_file);
    }
    std::error_code ignored;
    fs::remove(m_path, ignored);
}

void OutputFile::Write(const std::uint8_t* bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, m_file) != count) {
        FailToWrite(m_target, errno);
    }
}

void OutputFile::MoveToTarget() {
    if (std::fclose(std::exchange(m_file, nullptr)) != 0) {
        FailToWrite(m_target, errno);
    }
    std::error_code error;
    fs::rename(m_path, m_target, error);
    if (error) {
        FailToWrite(m_target, error.value());
    }
}

}  // namespace KivFisheyeTools
