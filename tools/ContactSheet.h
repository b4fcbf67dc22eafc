#ifndef KIVFISHEYE_TOOLS_CONTACT_SHEET_H
#define KIVFISHEYE_TOOLS_CONTACT_SHEET_H

#include <string>
#include <vector>

#include "Picture.h"

namespace KivFisheyeTools {

/// Pictures in rows of cells from the top left, with a caption under each. A cell is as wide as the
/// sheet allows and a row as high as its highest picture.
class ContactSheet {
public:
    /// `columns` is how many cells each row has, and the last number that of all further rows.
    /// Throws `UsageError` when they do not fit into the width.
    ContactSheet(std::uint32_t width, std::vector<std::uint32_t> columns);

    /// Adds an RGB picture of 3 bytes a pixel, made smaller when it does not fit into a cell.
    void Add(const Picture& picture, const std::string& caption);

    Picture Drawn() const;

private:
    struct Cell {
        Picture picture;
        std::string caption;
    };

    struct Row {
        std::uint32_t columns;
        std::uint32_t cellWidth;
        std::uint32_t pictureHeight;
        std::vector<Cell> cells;
    };

    void AddRow();
    std::uint32_t Height() const;
    static void DrawCell(const Cell& cell, const Row& row, std::uint32_t left, std::uint32_t top,
                         Picture* sheet);

    std::uint32_t m_width;
    std::vector<std::uint32_t> m_columns;
    std::vector<Row> m_rows;
};

}  // namespace KivFisheyeTools

#endif
