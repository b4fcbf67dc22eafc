#include "ProgramRun.h"

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace {

/// A file without a name that takes one of the program's streams.
class StreamFile {
public:
    StreamFile() : m_file(std::tmpfile()) {
        if (m_file == nullptr) {
            throw std::runtime_error("there is no room for a temporary file");
        }
    }
    ~StreamFile() { std::fclose(m_file); }
    StreamFile(const StreamFile&) = delete;
    StreamFile& operator=(const StreamFile&) = delete;

    int Descriptor() const { return fileno(m_file); }

    std::string Content() const {
        std::rewind(m_file);
        std::string content;
        for (int byte = std::fgetc(m_file); byte != EOF; byte = std::fgetc(m_file)) {
            content.push_back(static_cast<char>(byte));
        }
        return content;
    }

private:
    std::FILE* m_file;
};

/// Starts the program with its streams going to the two files.
pid_t Start(const std::string& path, std::vector<std::string>& arguments, const StreamFile& output,
            const StreamFile& errors) {
    std::string name = path;
    std::vector<char*> words = {name.data()};
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);

    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_adddup2(&streams, output.Descriptor(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&streams, errors.Descriptor(), STDERR_FILENO);
    pid_t child = 0;
    const int error = posix_spawn(&child, path.c_str(), &streams, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    if (error != 0) {
        throw std::runtime_error(path + " cannot be started");
    }
    return child;
}

double Seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

}  // namespace

ProgramRun RunProgram(const std::string& path, std::vector<std::string> arguments) {
    const StreamFile output;
    const StreamFile errors;
    const pid_t child = Start(path, arguments, output, errors);
    int status = 0;
    rusage usage{};
    if (wait4(child, &status, 0, &usage) != child) {
        throw std::runtime_error(path + " cannot be waited for");
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output.Content(), errors.Content(),
            Seconds(usage.ru_utime) + Seconds(usage.ru_stime)};
}
