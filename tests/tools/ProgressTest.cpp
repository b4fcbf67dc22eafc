#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <future>

#include "Picture.h"
#include "ToolRun.h"

namespace {

/// A terminal that remembers what is written on it.
class Terminal {
public:
    Terminal() : m_screen(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
        grantpt(m_screen);
        unlockpt(m_screen);
        m_line = open(ptsname(m_screen), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }

    ~Terminal() {
        close(m_line);
        close(m_screen);
    }

    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// The descriptor for programs.
    int Line() const { return m_line; }

    /// All that was written until a text came, or until nothing came for so long.
    const std::string& WrittenUntil(const std::string& text, int milliseconds) {
        pollfd waiting{m_screen, POLLIN, 0};
        while (m_written.find(text) == std::string::npos && poll(&waiting, 1, milliseconds) > 0) {
            std::array<char, 256> bytes{};
            const ssize_t count = read(m_screen, bytes.data(), bytes.size());
            if (count <= 0) {
                break;
            }
            m_written.append(bytes.data(), static_cast<std::size_t>(count));
        }
        return m_written;
    }

private:
    int m_screen;
    int m_line;
    std::string m_written;
};

std::size_t CountOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

}  // namespace

TEST(Progress, ShowsAStageThatTakesLong) {
    constexpr int kPatience = 30000;
    const TemporaryFolder folder;
    KivFisheyeTools::WritePicture(folder.File("input.png"), KivFisheyeTools::Picture(64, 64, 3));
    const std::string content = ContentOf(folder.File("input.png"));
    ASSERT_EQ(mkfifo(folder.File("slow").c_str(), 0600), 0);
    Terminal terminal;
    ToolConditions conditions;
    conditions.errors = terminal.Line();
    // The tool waits for the first byte until its line has been seen.
    auto run = std::async(std::launch::async, [&] {
        return RunTool(folder,
                       {"dewarp", "slow", "output.png", "--mount", "table", "--view", "full"},
                       conditions);
    });
    const std::string shown = terminal.WrittenUntil("reading slow", kPatience);
    const int pipe = open(folder.File("slow").c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(write(pipe, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    close(pipe);
    EXPECT_EQ(run.get().status, 0);

    EXPECT_NE(shown.find("reading slow"), std::string::npos) << shown;
    const std::string wipe = "\r\033[K";
    const std::string last = wipe + "writing output.png" + wipe;
    const std::string& all = terminal.WrittenUntil(last, 1000);
    EXPECT_EQ(CountOf("reading slow", all), 1U) << all;
    EXPECT_EQ(all.substr(all.size() - std::min(all.size(), last.size())), last);
}
