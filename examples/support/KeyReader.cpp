#include "KeyReader.h"

#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace {

constexpr std::array<int, 3> kStops{SIGINT, SIGTERM, SIGHUP};
constexpr unsigned char kEscape = 0x1B;
constexpr unsigned char kCtrlC = 0x03;
constexpr unsigned char kCtrlD = 0x04;

volatile std::sig_atomic_t isStopped = 0;

/// The key of a sequence: what stands between its start and its last character, and that one.
std::optional<Key> KeyOf(const std::string& parameters, unsigned char last) {
    switch (last) {
        case 'A':
            return Key{Key::Kind::Up};
        case 'B':
            return Key{Key::Kind::Down};
        case 'C':
            return Key{Key::Kind::Right};
        case 'D':
            return Key{Key::Kind::Left};
        default:
            break;
    }
    int column = 0;
    int row = 0;
    // The left button, without keys held; a small letter tells of its release.
    if (last == 'M' && std::sscanf(parameters.c_str(), "<0;%5d;%5d", &column, &row) == 2) {
        return Key{Key::Kind::Click, 0, column - 1, row - 1};
    }
    return std::nullopt;
}

}  // namespace

// The signals wait but while the program waits too: so none can come between a look at `isStopped`
// and the waiting.
KeyReader::KeyReader() {
    isStopped = 0;
    sigset_t stops;
    sigemptyset(&stops);
    struct sigaction action {};
    action.sa_handler = [](int) { isStopped = 1; };
    for (std::size_t i = 0; i < kStops.size(); ++i) {
        sigaddset(&stops, kStops[i]);
        sigaction(kStops[i], &action, &m_actionsBefore[i]);
    }
    sigprocmask(SIG_BLOCK, &stops, &m_maskBefore);
}

KeyReader::~KeyReader() {
    // In this order, so that signals which still wait do no more than the first one did.
    sigprocmask(SIG_SETMASK, &m_maskBefore, nullptr);
    for (std::size_t i = 0; i < kStops.size(); ++i) {
        sigaction(kStops[i], &m_actionsBefore[i], nullptr);
    }
}

/// None at the end of the input.
std::optional<unsigned char> KeyReader::NextByte() {
    if (m_at == m_end) {
        pollfd input{STDIN_FILENO, POLLIN, 0};
        if (ppoll(&input, 1, nullptr, &m_maskBefore) < 0 || isStopped != 0) {
            return std::nullopt;
        }
        const ssize_t count = read(STDIN_FILENO, m_bytes.data(), m_bytes.size());
        if (count <= 0) {
            return std::nullopt;
        }
        m_at = 0;
        m_end = static_cast<std::size_t>(count);
    }
    return m_bytes[m_at++];
}

/// The rest of a sequence. A key that only began like one, as Escape does, is left out.
std::optional<Key> KeyReader::AfterEscape() {
    const auto isLast = [](unsigned char byte) { return byte >= 0x40 && byte <= 0x7E; };
    const auto isBefore = [](unsigned char byte) { return byte >= 0x20 && byte <= 0x3F; };
    auto byte = NextByte();
    if (byte && (*byte == '[' || *byte == 'O')) {
        std::string parameters;
        for (byte = NextByte(); byte && isBefore(*byte); byte = NextByte()) {
            parameters.push_back(static_cast<char>(*byte));
        }
        if (byte && isLast(*byte)) {
            return KeyOf(parameters, *byte);
        }
    }
    if (byte) {
        --m_at;
    }
    return std::nullopt;
}

Key KeyReader::Next() {
    for (;;) {
        const auto byte = NextByte();
        if (!byte || byte == kCtrlC || byte == kCtrlD) {
            return {Key::Kind::End};
        }
        if (byte != kEscape) {
            return {Key::Kind::Character, static_cast<char>(*byte)};
        }
        if (const auto key = AfterEscape()) {
            return *key;
        }
    }
}
