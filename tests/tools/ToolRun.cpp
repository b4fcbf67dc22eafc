#include "ToolRun.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <stdexcept>

namespace {

constexpr int kCannotStart = 127;

void Redirect(const std::string& path, int descriptor) {
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (file < 0 || dup2(file, descriptor) < 0) {
        _exit(kCannotStart);
    }
    close(file);
}

void Meet(const ToolConditions& conditions) {
    if (conditions.fileBytes > 0) {
        const rlimit limit{conditions.fileBytes, conditions.fileBytes};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    const bool isSuperuser = geteuid() == 0;
    if (conditions.bindsSuperuser && isSuperuser &&
        prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE, 0, 0, 0) != 0) {
        _exit(kCannotStart);
    }
    std::signal(SIGHUP, conditions.ignoresHangup ? SIG_IGN : SIG_DFL);
    for (const std::string& variable : conditions.environment) {
        const std::size_t equals = variable.find('=');
        setenv(variable.substr(0, equals).c_str(), variable.substr(equals + 1).c_str(), 1);
    }
    if (conditions.errors >= 0 && dup2(conditions.errors, STDERR_FILENO) < 0) {
        _exit(kCannotStart);
    }
}

[[noreturn]] void BecomeTool(const TemporaryFolder& folder, const TemporaryFolder& streams,
                             const std::vector<std::string>& arguments,
                             const ToolConditions& conditions) {
    std::vector<std::string> words = {KIVFISHEYE_TOOL};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    Redirect(streams.File("output"), STDOUT_FILENO);
    Redirect(streams.File("errors"), STDERR_FILENO);
    Meet(conditions);
    if (chdir(folder.Path().c_str()) == 0) {
        execv(KIVFISHEYE_TOOL, pointers.data());
    }
    _exit(kCannotStart);
}

}  // namespace

ToolProcess::ToolProcess(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                         const ToolConditions& conditions)
    : m_child(fork()) {
    if (m_child == 0) {
        BecomeTool(folder, m_streams, arguments, conditions);
    }
    if (m_child < 0) {
        throw std::runtime_error("the tool cannot be started");
    }
}

void ToolProcess::Send(int signal) const {
    kill(m_child, signal);
}

ToolRun ToolProcess::Wait() const {
    int status = 0;
    if (waitpid(m_child, &status, 0) != m_child) {
        throw std::runtime_error("the tool cannot be waited for");
    }
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ContentOf(m_streams.File("output")),
            ContentOf(m_streams.File("errors"))};
}

ToolRun RunTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                const ToolConditions& conditions) {
    return ToolProcess(folder, arguments, conditions).Wait();
}
