#include "support/GuardedBuffer.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr unsigned char kSurrounding = 0xA7;

bool IsAllSurrounding(const unsigned char* first, const unsigned char* last) {
    return std::all_of(first, last, [](unsigned char byte) { return byte == kSurrounding; });
}

}  // namespace

GuardedBuffer::GuardedBuffer(std::size_t bytes, Side side, unsigned char fill) : m_size(bytes) {
    const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    m_usableBytes = (std::max(bytes, std::size_t{1}) + page - 1) / page * page;
    m_mappedBytes = m_usableBytes + 2 * page;
    void* const mapping =
        mmap(nullptr, m_mappedBytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) {
        throw std::bad_alloc();
    }
    m_mapping = static_cast<unsigned char*>(mapping);
    m_usable = m_mapping + page;
    if (mprotect(m_usable, m_usableBytes, PROT_READ | PROT_WRITE) != 0) {
        munmap(m_mapping, m_mappedBytes);
        throw std::bad_alloc();
    }
    m_data = side == Side::EndsAtGuard ? m_usable + m_usableBytes - bytes : m_usable;
    std::memset(m_usable, kSurrounding, m_usableBytes);
    std::memset(m_data, fill, bytes);
}

GuardedBuffer::~GuardedBuffer() {
    munmap(m_mapping, m_mappedBytes);
}

void GuardedBuffer::MakeReadOnly() {
    if (mprotect(m_usable, m_usableBytes, PROT_READ) != 0) {
        throw std::bad_alloc();
    }
}

bool GuardedBuffer::IsSurroundingUntouched() const {
    return IsAllSurrounding(m_usable, m_data) &&
           IsAllSurrounding(m_data + m_size, m_usable + m_usableBytes);
}
