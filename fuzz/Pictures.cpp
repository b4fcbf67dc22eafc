#include "Pictures.h"

#include <algorithm>
#include <cstring>
#include <optional>

#include "Check.h"
#include "support/CoordinateFrame.h"

namespace {

constexpr std::size_t kMostSourceBytes = std::size_t{1} << 20;

class PictureCheck {
public:
    PictureCheck(const unsigned char* output, const FrameShape& shape, const FrameShape& source,
                 const PictureRule& rule, unsigned char background)
        : m_output(output),
          m_shape(shape),
          m_source(source),
          m_rule(rule),
          m_background(background) {}

    void Run() {
        const std::uint32_t rows = m_shape.stride == 0 ? 0 : m_shape.height;
        for (std::uint32_t row = 0; row < rows; ++row) {
            if (row < m_rule.writtenRows || m_rule.clearsOtherRows) {
                CheckRow(row);
            } else if (m_rule.writtenRows == 0 || m_shape.RowBytes() <= m_shape.stride) {
                // What overlapping rows leave below themselves is not looked at.
                ExpectBytes(row, 0, m_background);
            }
        }
        Expect(!m_rule.showsSomething || m_shown > 0, "the whole picture is black");
    }

private:
    const unsigned char* RowAt(std::uint32_t row) const {
        return m_output + std::size_t{row} * m_shape.stride;
    }

    void CheckRow(std::uint32_t row) {
        const auto bytes = static_cast<std::size_t>(m_shape.bytesPerPixel);
        const std::size_t columns = std::min<std::size_t>(m_shape.width, m_shape.stride / bytes);
        for (std::size_t column = 0; column < columns; ++column) {
            CheckPixel(row, column, RowAt(row) + column * bytes);
        }
        const bool isCleared = m_rule.padding == PictureRule::Padding::Cleared;
        const bool isLast = row + 1 == m_shape.height;
        // Rows that are longer than their stride end in the ones below.
        if (m_shape.RowBytes() <= m_shape.stride || (isCleared && isLast)) {
            ExpectBytes(row, columns * bytes, isCleared ? 0 : m_background);
        }
    }

    void CheckPixel(std::uint32_t row, std::size_t column, const unsigned char* pixel) {
        const std::optional<PixelPlace> place = PlaceIn(pixel, m_shape.bytesPerPixel);
        if (!place) {
            Expect(!m_rule.isFull || row >= m_rule.writtenRows, "the pixel at (", column, ", ", row,
                   ") is black");
            return;
        }
        ++m_shown;
        const bool isInside = place->column >= 0 && place->row >= 0 &&
                              static_cast<std::uint32_t>(place->column) < m_source.width &&
                              static_cast<std::uint32_t>(place->row) < m_source.height;
        const bool isBlack = m_rule.isBlack || row >= m_rule.writtenRows;
        Expect(isInside && !isBlack, "the pixel at (", column, ", ", row, ") of ", m_shape.width,
               " by ", m_shape.height, " pixels shows ", *place, " of ", m_source.width, " by ",
               m_source.height);
    }

    /// The rest of a row from this byte on.
    void ExpectBytes(std::uint32_t row, std::size_t first, unsigned char value) const {
        Expect(IsFilledWith(RowAt(row) + first, m_shape.stride - first, value), "bytes from ",
               first, " of ", m_shape.stride, " in row ", row, " of ", m_shape.height,
               " are not all ", static_cast<int>(value));
    }

    const unsigned char* m_output;
    const FrameShape& m_shape;
    const FrameShape& m_source;
    const PictureRule& m_rule;
    unsigned char m_background;
    std::size_t m_shown = 0;
};

}  // namespace

std::unique_ptr<GuardedBuffer> MakeGuarded(FuzzInput& choices, std::size_t bytes) {
    const auto side =
        choices.OnceIn(3) ? GuardedBuffer::Side::StartsAtGuard : GuardedBuffer::Side::EndsAtGuard;
    return std::make_unique<GuardedBuffer>(bytes, side, kFill);
}

bool IsOnlyClaimed(const FrameShape& shape) {
    return shape.Bytes() > kMostSourceBytes;
}

std::unique_ptr<GuardedBuffer> MakeSource(FuzzInput& choices, const FrameShape& shape) {
    auto memory = MakeGuarded(choices, IsOnlyClaimed(shape) ? 0 : shape.Bytes());
    const bool hasPixels = shape.RowBytes() <= shape.stride && !IsOnlyClaimed(shape);
    if (hasPixels && shape.width > 0 && shape.height > 0) {
        const std::vector<unsigned char> pixels =
            CoordinateFrame(static_cast<int>(shape.width), static_cast<int>(shape.height),
                            static_cast<int>(shape.stride), shape.bytesPerPixel);
        std::memcpy(memory->data(), pixels.data(), pixels.size());
    }
    memory->MakeReadOnly();
    return memory;
}

void CheckPicture(const unsigned char* output, const FrameShape& shape, const FrameShape& source,
                  const PictureRule& rule, unsigned char background) {
    PictureCheck(output, shape, source, rule, background).Run();
}

bool IsFilledWith(const unsigned char* bytes, std::size_t count, unsigned char value) {
    return std::all_of(bytes, bytes + count, [=](unsigned char byte) { return byte == value; });
}
