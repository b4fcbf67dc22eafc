#include "ContactSheet.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "Color.h"
#include "Failure.h"
#include "StrokeFont.h"

namespace KivFisheyeTools {

namespace {

constexpr std::uint32_t kMargin = 24;
constexpr std::uint32_t kCaptionHeight = 28;
constexpr std::uint32_t kNarrowestCell = 16;
constexpr double kTextUnit = 1.9;
constexpr double kTextPen = 0.85;
constexpr double kTextBaseline = 8.0;

constexpr Color kBackground{0.96, 0.96, 0.95};
constexpr Color kText{0.13, 0.17, 0.24};

void SetPixel(std::uint8_t* pixel, const Color& color) {
    pixel[0] = static_cast<std::uint8_t>(std::lround(color.red * 255.0));
    pixel[1] = static_cast<std::uint8_t>(std::lround(color.green * 255.0));
    pixel[2] = static_cast<std::uint8_t>(std::lround(color.blue * 255.0));
}

void FillWithBackground(Picture* sheet) {
    for (std::uint32_t row = 0; row < sheet->height; ++row) {
        for (std::uint32_t column = 0; column < sheet->width; ++column) {
            SetPixel(sheet->Row(row) + std::size_t{3} * column, kBackground);
        }
    }
}

/// Draws the caption into the strip of `width` by `kCaptionHeight`, centred.
void DrawCaption(const std::string& caption, std::uint32_t left, std::uint32_t top,
                 std::uint32_t width, Picture* sheet) {
    const StrokeText text(caption);
    if (caption.empty()) {
        return;
    }
    const double unit = std::min(kTextUnit, (width - 2.0 * kTextPen) / text.Width());
    const double textLeft = (width - text.Width() * unit) / 2.0;
    for (std::uint32_t row = 0; row < kCaptionHeight; ++row) {
        const double y = (kCaptionHeight - kTextBaseline - (row + 0.5)) / unit;
        for (std::uint32_t column = 0; column < width; ++column) {
            const double distance = unit * text.DistanceTo((column + 0.5 - textLeft) / unit, y);
            const double coverage = std::clamp(kTextPen + 0.5 - distance, 0.0, 1.0);
            SetPixel(sheet->Row(top + row) + std::size_t{3} * (left + column),
                     Blended(kBackground, kText, coverage));
        }
    }
}

}  // namespace

ContactSheet::ContactSheet(std::uint32_t width, std::uint32_t columns)
    : m_width(width), m_columns(columns) {
    const std::uint64_t margins = std::uint64_t{kMargin} * (std::uint64_t{columns} + 1);
    if (width < margins + std::uint64_t{kNarrowestCell} * columns) {
        throw UsageError("a sheet of width " + std::to_string(width) + " is too narrow for " +
                         std::to_string(columns) + " columns");
    }
    m_cellWidth = static_cast<std::uint32_t>((width - margins) / columns);
}

void ContactSheet::Add(const Picture& picture, const std::string& caption) {
    const std::uint32_t longest = std::max(picture.width, picture.height);
    if (longest <= m_cellWidth) {
        m_cells.push_back({picture, caption});
        return;
    }
    const auto shortened = [&](std::uint32_t side) {
        return std::max<std::uint32_t>(
            1, static_cast<std::uint32_t>(std::lround(1.0 * side * m_cellWidth / longest)));
    };
    m_cells.push_back(
        {Resized(picture, shortened(picture.width), shortened(picture.height)), caption});
}

std::uint32_t ContactSheet::RowHeight(std::size_t firstCell) const {
    std::uint32_t height = 0;
    for (std::size_t i = firstCell; i < std::min(m_cells.size(), firstCell + m_columns); ++i) {
        height = std::max(height, m_cells[i].picture.height);
    }
    return height;
}

std::uint32_t ContactSheet::Height() const {
    std::uint64_t height = kMargin;
    for (std::size_t first = 0; first < m_cells.size(); first += m_columns) {
        height += RowHeight(first) + kCaptionHeight + kMargin;
    }
    CheckPictureSize(m_width, height);
    return static_cast<std::uint32_t>(height);
}

Picture ContactSheet::Drawn() const {
    Picture sheet(m_width, Height(), 3);
    FillWithBackground(&sheet);
    std::uint32_t top = kMargin;
    for (std::size_t first = 0; first < m_cells.size(); first += m_columns) {
        const std::uint32_t rowHeight = RowHeight(first);
        for (std::uint32_t column = 0; column < m_columns && first + column < m_cells.size();
             ++column) {
            const std::uint32_t left = kMargin + column * (m_cellWidth + kMargin);
            DrawCell(m_cells[first + column], left, top, rowHeight, &sheet);
        }
        top += rowHeight + kCaptionHeight + kMargin;
    }
    return sheet;
}

void ContactSheet::DrawCell(const Cell& cell, std::uint32_t left, std::uint32_t top,
                            std::uint32_t pictureSpace, Picture* sheet) const {
    const std::uint32_t pictureLeft = left + (m_cellWidth - cell.picture.width) / 2;
    const std::uint32_t pictureTop = top + (pictureSpace - cell.picture.height) / 2;
    for (std::uint32_t row = 0; row < cell.picture.height; ++row) {
        std::memcpy(sheet->Row(pictureTop + row) + std::size_t{3} * pictureLeft,
                    cell.picture.Row(row), std::size_t{3} * cell.picture.width);
    }
    DrawCaption(cell.caption, left, top + pictureSpace, m_cellWidth, sheet);
}

}  // namespace KivFisheyeTools
