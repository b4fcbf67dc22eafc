#include "TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "kivfisheye-test-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) {
        throw std::runtime_error("no temporary folder can be made");
    }
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::set<std::string> TemporaryFolder::Names() const {
    std::set<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_path)) {
        names.insert(entry.path().filename().string());
    }
    return names;
}

std::string ContentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteContent(const std::string& path, const std::string& content) {
    std::ofstream(path, std::ios::binary) << content;
}
