#include "support/Strip.h"

#include <algorithm>

#include "support/CoordinateFrame.h"

Strip::Strip(int width, int halves)
    : m_positions(halves * width),
      m_isDual(halves == 2),
      m_src(CoordinateFrame(m_positions, 1, m_positions * 4, 4)),
      m_panorama(PixelsInOrder(m_positions), PackedRing(m_positions, 1, width, halves, 4), 4) {}

int Strip::MoveToTheLeftAt(float pan) const {
    std::vector<unsigned char> frame(m_src.size(), 0);
    if (m_isDual) {
        m_panorama.ConvertDualTurned<32>(pan, m_src.data(), frame.data());
    } else {
        m_panorama.ConvertTurned<32>(pan, m_src.data(), frame.data());
    }
    const auto first = PlaceIn(frame.data(), 4);
    if (!first.has_value()) {
        const bool isBlack =
            std::all_of(frame.begin(), frame.end(), [](unsigned char byte) { return byte == 0; });
        return isBlack ? kNothingWritten : kNotTurnedEvenly;
    }
    for (int x = 0; x < m_positions; ++x) {
        const auto place = PlaceIn(frame.data() + x * 4, 4);
        if (!place.has_value() || place->column != (first->column + x) % m_positions) {
            return kNotTurnedEvenly;
        }
    }
    return first->column;
}

int Strip::MoveToTheRightAt(float pan) const {
    const int left = MoveToTheLeftAt(pan);
    return left > 0 ? m_positions - left : left;
}

std::vector<int> Strip::PixelsInOrder(int count) {
    std::vector<int> entries;
    for (int x = 0; x < count; ++x) {
        entries.push_back(x * 4);
    }
    return entries;
}
