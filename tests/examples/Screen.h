#ifndef KIVFISHEYE_TESTS_SCREEN_H
#define KIVFISHEYE_TESTS_SCREEN_H

#include <cstddef>
#include <set>
#include <string>
#include <vector>

#include "TestPicture.h"

/// What a terminal shows after all that was written on it. It knows what the examples use, and
/// keeps a list of all else.
class Screen {
public:
    struct Cell {
        std::string glyph = " ";
        Color front{};
        Color back{};
    };

    Screen(int columns, int rows);

    void Write(const std::string& bytes);

    const Cell& At(int column, int row) const;
    std::string Row(int row) const;
    /// Whether a mode such as 25, the cursor, is on.
    bool HasMode(int mode) const { return m_modes.count(mode) != 0; }
    /// What was written that no terminal of this size understands.
    const std::vector<std::string>& Surprises() const { return m_surprises; }

    /// Expects half blocks in these colours, two pixels in a cell, from a column of the first row.
    void ExpectPicture(const Picture& picture, int column) const;

private:
    std::size_t SizeOfNext(const std::string& bytes) const;
    void Take(const std::string& token);
    void TakeSequence(const std::vector<int>& numbers, bool isPrivate, char last);
    void SetColors(const std::vector<int>& numbers);
    void Put(const std::string& glyph);
    Cell& Place(int column, int row);

    int m_columns;
    int m_rows;
    int m_column = 0;
    int m_row = 0;
    std::vector<Cell> m_cells;
    Cell m_pen;
    std::set<int> m_modes{25};
    std::string m_incomplete;
    std::vector<std::string> m_surprises;
};

#endif
