#ifndef KIVFISHEYE_TOOLS_CONTACT_SHEET_H
#define KIVFISHEYE_TOOLS_CONTACT_SHEET_H

#include <string>
#include <vector>

#include "Picture.h"

namespace KivFisheyeTools {

/// Pictures in the cells of a grid, row by row from the top left, with a caption under each. A cell
/// is as wide as the sheet allows and a row as high as its highest picture.
class ContactSheet {
public:
    /// Throws `UsageError` when the columns do not fit into the width.
    ContactSheet(std::uint32_t width, std::uint32_t columns);

    /// Adds an RGB picture of 3 bytes a pixel, made smaller when it does not fit into a cell.
    void Add(const Picture& picture, const std::string& caption);

    Picture Drawn() const;

private:
    struct Cell {
        Picture picture;
        std::string caption;
    };

    std::uint32_t Height() const;
    std::uint32_t RowHeight(std::size_t firstCell) const;
    void DrawCell(const Cell& cell, std::uint32_t left, std::uint32_t top,
                  std::uint32_t pictureSpace, Picture* sheet) const;

    std::uint32_t m_width;
    std::uint32_t m_columns;
    std::uint32_t m_cellWidth = 0;
    std::vector<Cell> m_cells;
};

}  // namespace KivFisheyeTools

#endif
