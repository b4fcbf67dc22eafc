#include "ContactSheet.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

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

std::uint64_t MarginsOf(std::uint32_t columns) {
    return std::uint64_t{kMargin} * (std::uint64_t{columns} + 1);
}

void FillWithBackground(Picture* sheet) {
    for (std::uint32_t row = 0; row < sheet->height; ++row) {
        for (std::uint32_t column = 0; column < sheet->width; ++column) {
            StoreColor(kBackground, sheet->Row(row) + std::size_t{3} * column);
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
            StoreColor(Blended(kBackground, kText, coverage),
                       sheet->Row(top + row) + std::size_t{3} * (left + column));
        }
    }
}

}  // namespace

ContactSheet::ContactSheet(std::uint32_t width, std::vector<std::uint32_t> columns)
    : m_width(width), m_columns(std::move(columns)) {
    for (const std::uint32_t count : m_columns) {
        if (width < MarginsOf(count) + std::uint64_t{kNarrowestCell} * count) {
            throw UsageError("a sheet of width " + std::to_string(width) + " is too narrow for " +
                             std::to_string(count) + " columns");
        }
    }
}

void ContactSheet::Add(const Picture& picture, const std::string& caption) {
    if (m_rows.empty() || m_rows.back().cells.size() == m_rows.back().columns) {
        AddRow();
    }
    Row& row = m_rows.back();
    const std::uint32_t longest = std::max(picture.width, picture.height);
    const auto fitting = [&](std::uint32_t side) {
        return std::max<std::uint32_t>(
            1, static_cast<std::uint32_t>(std::lround(1.0 * side * row.cellWidth / longest)));
    };
    row.cells.push_back({longest <= row.cellWidth
                             ? picture
                             : Resized(picture, fitting(picture.width), fitting(picture.height)),
                         caption});
    row.pictureHeight = std::max(row.pictureHeight, row.cells.back().picture.height);
}

void ContactSheet::AddRow() {
    const std::uint32_t columns = m_columns.at(std::min(m_rows.size(), m_columns.size() - 1));
    const auto cellWidth = static_cast<std::uint32_t>((m_width - MarginsOf(columns)) / columns);
    m_rows.push_back({columns, cellWidth, 0, {}});
}

std::uint32_t ContactSheet::Height() const {
    std::uint64_t height = kMargin;
    for (const Row& row : m_rows) {
        height += row.pictureHeight + kCaptionHeight + kMargin;
    }
    CheckPictureSize(m_width, height);
    return static_cast<std::uint32_t>(height);
}

Picture ContactSheet::Drawn() const {
    Picture sheet(m_width, Height(), 3);
    FillWithBackground(&sheet);
    std::uint32_t top = kMargin;
    for (const Row& row : m_rows) {
        std::uint32_t left = kMargin;
        for (const Cell& cell : row.cells) {
            DrawCell(cell, row, left, top, &sheet);
            left += row.cellWidth + kMargin;
        }
        top += row.pictureHeight + kCaptionHeight + kMargin;
    }
    return sheet;
}

void ContactSheet::DrawCell(const Cell& cell, const Row& row, std::uint32_t left, std::uint32_t top,
                            Picture* sheet) {
    const Picture& picture = cell.picture;
    const std::uint32_t pictureLeft = left + (row.cellWidth - picture.width) / 2;
    const std::uint32_t pictureTop = top + (row.pictureHeight - picture.height) / 2;
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        std::memcpy(sheet->Row(pictureTop + y) + std::size_t{3} * pictureLeft, picture.Row(y),
                    std::size_t{3} * picture.width);
    }
    DrawCaption(cell.caption, left, top + row.pictureHeight, row.cellWidth, sheet);
}

}  // namespace KivFisheyeTools
