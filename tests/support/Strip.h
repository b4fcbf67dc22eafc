#ifndef KIVFISHEYE_TESTS_STRIP_H
#define KIVFISHEYE_TESTS_STRIP_H

#include <vector>

#include "support/HandMadeTable.h"

/// A panorama of one row, or of one row in each of two halves, whose ring shows the pixels of a
/// source of one row in their order.
class Strip {
public:
    static Strip Full(int width) { return Strip(width, 1); }
    static Strip Dual(int width) { return Strip(width, 2); }

    static constexpr int kNothingWritten = -1;
    static constexpr int kNotTurnedEvenly = -2;

    /// By how many positions of the ring the picture moves to the left.
    int MoveToTheLeftAt(float pan) const;
    int MoveToTheRightAt(float pan) const;

private:
    Strip(int width, int halves);

    static std::vector<int> PixelsInOrder(int count);

    int m_positions;
    bool m_isDual;
    std::vector<unsigned char> m_src;
    HandMadeTable m_panorama;
};

#endif
