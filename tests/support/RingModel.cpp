#include "support/RingModel.h"

#include <algorithm>
#include <cmath>
#include <ostream>

#include "support/MeshModel.h"

namespace {

constexpr float kRadiansPerDegree = 0.0174532924F;
constexpr float kTurn = 6.28318548F;
constexpr float kHalfTurn = 3.14159274F;

const double kPi = std::acos(-1.0);
// The rounding of one operation in single precision, relative to its result.
const double kRounding = std::ldexp(1.0, -24);

struct Radii {
    float first;
    float last;
};

Radii RadiiOfRows(Mount mount, float radius, float ratio) {
    const float inner = radius * ratio;
    return mount == Mount::Table ? Radii{inner, radius} : Radii{radius, inner};
}

/// Whether a pixel shows the point on its ray or the one opposite, through the lens's centre.
enum class Side { Same, Opposite };

/// What turns a panorama's points into offsets.
struct Sampling {
    KernelForm form;
    int bytesPerPixel;
};

int OffsetOf(const Ring& ring, Sampling sampling, float u, float v, Side side) {
    if (!(u >= -0.5F && u <= 0.5F && v >= -0.5F && v <= 0.5F)) {
        return kNoSource;
    }
    const bool isSame = side == Side::Same;
    const float column = static_cast<float>(ring.srcWidth - 1) * (isSame ? 0.5F + u : 0.5F - u);
    const float row = static_cast<float>(ring.srcHeight - 1) * (isSame ? 0.5F - v : 0.5F + v);
    return PixelAt(sampling.form, row, ring.srcHeight) * ring.srcStride +
           PixelAt(sampling.form, column, ring.srcWidth) * sampling.bytesPerPixel;
}

struct Turn {
    float first;
    float last;
};

std::vector<int> OffsetsAlong(Turn turn, Mount mount, const Ring& ring, Sampling sampling,
                              Side side = Side::Same) {
    const Radii radiiX = RadiiOfRows(mount, ring.radiusX, ring.innerRadiusRatio);
    const Radii radiiY = RadiiOfRows(mount, ring.radiusY, ring.innerRadiusRatio);
    const auto steps = static_cast<float>(ring.dstHeight - 1);
    const model::AngleTable columns =
        model::AnglesOf(ListFormOf(sampling.form), turn.first, turn.last, ring.dstWidth);
    std::vector<int> offsets;
    float rx = radiiX.first;
    float ry = radiiY.first;
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const auto column = static_cast<std::size_t>(x);
            offsets.push_back(OffsetOf(ring, sampling, rx * columns.cosines[column],
                                       ry * columns.sines[column], side));
        }
        rx += (radiiX.last - radiiX.first) / steps;
        ry += (radiiY.last - radiiY.first) / steps;
    }
    return offsets;
}

/// Both halves, row by row of each, through the points of the upper one.
std::vector<int> DualOffsetsAlong(Turn turn, Mount mount, const Ring& ring, Sampling sampling) {
    Ring upperHalf = ring;
    upperHalf.dstHeight = ring.dstHeight / 2;
    std::vector<int> offsets = OffsetsAlong(turn, mount, upperHalf, sampling);
    const std::vector<int> lower = OffsetsAlong(turn, mount, upperHalf, sampling, Side::Opposite);
    offsets.insert(offsets.end(), lower.begin(), lower.end());
    return offsets;
}

void StorePixel(int offset, const Ring& ring, int bytesPerPixel, std::size_t row,
                std::size_t column, const std::vector<unsigned char>& src,
                std::vector<unsigned char>& dst) {
    const auto bytes = static_cast<std::size_t>(bytesPerPixel);
    const std::size_t at = row * static_cast<std::size_t>(ring.dstStride) + column * bytes;
    if (offset != kNoSource && at + bytes <= ring.OutputBytes()) {
        std::copy_n(src.begin() + offset, bytesPerPixel,
                    dst.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Ring& ring) {
    return out << static_cast<const PanoramaFrames&>(ring) << ", inner ratio "
               << ring.innerRadiusRatio;
}

Ring PackedRing(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel) {
    return {PackedFrames(srcWidth, srcHeight, dstWidth, dstHeight, bytesPerPixel)};
}

std::vector<float> SteppedAngles(float first, float last, int columns) {
    std::vector<float> angles;
    float theta = first;
    for (int x = 0; x < columns; ++x) {
        angles.push_back(theta);
        theta += (last - first) / static_cast<float>(columns - 1);
    }
    return angles;
}

std::vector<float> AnglesOfForm(KernelForm form, float first, float last, int columns) {
    return form == KernelForm::C
               ? SteppedAngles(first, last, columns)
               : model::AnglesOfLanes(first, (last - first) / static_cast<float>(columns - 1),
                                      columns);
}

std::vector<int> DirectOffsets(Mount mount, const Ring& ring, int bytesPerPixel, float pan,
                               KernelForm form) {
    const float first = pan * kRadiansPerDegree;
    return OffsetsAlong({first, first + kTurn}, mount, ring, {form, bytesPerPixel});
}

std::vector<int> TableOffsets(Mount mount, const Ring& ring, int bytesPerPixel, KernelForm form) {
    const Turn turn = mount == Mount::Table ? Turn{0.0F, kTurn} : Turn{kTurn, 0.0F};
    return OffsetsAlong(turn, mount, ring, {form, bytesPerPixel});
}

std::vector<int> TurnedOffsets(const std::vector<int>& offsets, const Ring& ring, int shift) {
    std::vector<int> turned;
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const int column = (x + shift) % ring.dstWidth;
            turned.push_back(offsets[static_cast<std::size_t>(y * ring.dstWidth + column)]);
        }
    }
    return turned;
}

std::vector<int> DualDirectOffsets(Mount mount, const Ring& ring, int bytesPerPixel, float pan,
                                   KernelForm form) {
    const float turned = pan * kRadiansPerDegree;
    const Turn turn = mount == Mount::Table ? Turn{-turned, kHalfTurn - turned}
                                            : Turn{turned + kHalfTurn, turned};
    return DualOffsetsAlong(turn, mount, ring, {form, bytesPerPixel});
}

std::vector<int> DualTableOffsets(Mount mount, const Ring& ring, int bytesPerPixel,
                                  KernelForm form) {
    const Turn turn = mount == Mount::Table ? Turn{0.0F, kHalfTurn} : Turn{kHalfTurn, 0.0F};
    std::vector<int> offsets = DualOffsetsAlong(turn, mount, ring, {form, bytesPerPixel});
    offsets.resize(static_cast<std::size_t>(ring.dstWidth * ring.dstHeight), kNoSource);
    return offsets;
}

DualTurn DualTurnOf(int width, float pan) {
    const float turn = std::fmod(pan, 360.0F);
    const float product = static_cast<float>(width) * std::fmod(turn, 180.0F);
    return {static_cast<int>(static_cast<double>(product) / 180.0), turn > 180.0F};
}

std::vector<int> DualTurnedOffsets(const std::vector<int>& offsets, const Ring& ring,
                                   DualTurn turn) {
    const int half = ring.dstHeight / 2;
    std::vector<int> turned;
    for (int y = 0; y < 2 * half; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const bool entersFromOtherHalf = x < turn.shift;
            const int column = x - turn.shift + (entersFromOtherHalf ? ring.dstWidth : 0);
            const bool isOtherHalf = entersFromOtherHalf != turn.isExchanged;
            const int row = isOtherHalf ? (y + half) % (2 * half) : y;
            turned.push_back(offsets[static_cast<std::size_t>(row * ring.dstWidth + column)]);
        }
    }
    return turned;
}

void PaintBothHalves(const std::vector<int>& offsets, const Ring& ring, int bytesPerPixel,
                     KernelForm form, const std::vector<unsigned char>& src,
                     std::vector<unsigned char>& dst) {
    const auto lanes = static_cast<std::size_t>(LanesOf(form));
    const auto width = static_cast<std::size_t>(ring.dstWidth);
    const auto half = static_cast<std::size_t>(ring.dstHeight / 2);
    for (std::size_t upper = 0; upper < half; ++upper) {
        const std::size_t rows[] = {upper, half + upper};
        for (const std::size_t row : rows) {
            const std::ptrdiff_t start = static_cast<std::ptrdiff_t>(row) * ring.dstStride;
            std::fill_n(dst.begin() + start, ring.dstStride, static_cast<unsigned char>(0));
        }
        for (std::size_t first = 0; first < width; first += lanes) {
            for (const std::size_t row : rows) {
                for (std::size_t x = first; x < std::min(first + lanes, width); ++x) {
                    StorePixel(offsets[row * width + x], ring, bytesPerPixel, row, x, src, dst);
                }
            }
        }
    }
}

bool ExactPoint::IsInside(double margin) const {
    return std::fabs(u) <= 0.5 + margin && std::fabs(v) <= 0.5 + margin;
}

// Single precision forms the start, the end, their difference, the quotient that is the step, and
// then one sum for each column, or for each group of columns. Each rounds once, relative to at most
// the largest angle; the constants it uses for pi round once more. A form with a sine of its own is
// off by the polynomial's error, and by three roundings of the angle: of the quarter turn between
// sine and cosine, and of the half turns that are taken away and their pi.
ExactRing::ExactRing(Mount mount, const Ring& ring, KernelForm form, int rows, double first,
                     double last)
    : m_mount(mount),
      m_form(form),
      m_ring(ring),
      m_rows(rows),
      m_firstAngle(first),
      m_lastAngle(last) {
    const double largest = 1.01 * std::max(std::fabs(first), std::fabs(last));
    m_angleError = kRounding * ((ring.dstWidth + 5) * largest + 2.0 * std::fabs(last - first));
    m_sineError =
        form == KernelForm::C ? kRounding : 2.5e-7 + 3.0 * kRounding * (largest + 0.5 * kPi);
}

ExactRing ExactRing::Direct(Mount mount, const Ring& ring, float pan, KernelForm form) {
    const double first = pan * kPi / 180.0;
    return {mount, ring, form, ring.dstHeight, first, first + 2.0 * kPi};
}

ExactRing ExactRing::Table(Mount mount, const Ring& ring, KernelForm form) {
    return mount == Mount::Table ? ExactRing(mount, ring, form, ring.dstHeight, 0.0, 2.0 * kPi)
                                 : ExactRing(mount, ring, form, ring.dstHeight, 2.0 * kPi, 0.0);
}

// The ring turns the other way than a full panorama's: on a table the angles fall with the pan, on
// a ceiling, whose angles run from left to right, they rise.
ExactRing ExactRing::DualDirect(Mount mount, const Ring& ring, float pan, KernelForm form) {
    const double turn = pan * kPi / 180.0;
    const int rows = ring.dstHeight / 2;
    return mount == Mount::Table ? ExactRing(mount, ring, form, rows, -turn, kPi - turn)
                                 : ExactRing(mount, ring, form, rows, turn + kPi, turn);
}

ExactRing ExactRing::DualTable(Mount mount, const Ring& ring, KernelForm form) {
    return DualDirect(mount, ring, 0.0F, form);
}

ExactRing ExactRing::WithAngles(const std::vector<float>& angles) const {
    ExactRing ring = *this;
    ring.m_givenAngles = angles;
    ring.m_angleError = 0.0;
    return ring;
}

ExactPoint ExactRing::PointAt(int x, int y) const {
    const auto share = [](int index, int count) {
        return count == 1 ? 0.0 : static_cast<double>(index) / (count - 1);
    };
    const double theta =
        m_givenAngles.empty()
            ? m_firstAngle + (m_lastAngle - m_firstAngle) * share(x, m_ring.dstWidth)
            : static_cast<double>(m_givenAngles[static_cast<std::size_t>(x)]);
    const double across = y < m_rows ? 1.0 : -1.0;
    const double down = share(y % m_rows, m_rows);
    const double inward = m_mount == Mount::Table ? 1.0 - down : down;
    const double radius = 1.0 - inward * (1.0 - static_cast<double>(m_ring.innerRadiusRatio));
    const double u = static_cast<double>(m_ring.radiusX) * radius * std::cos(theta) * across;
    const double v = static_cast<double>(m_ring.radiusY) * radius * std::sin(theta) * across;
    return {u, v, (m_ring.srcWidth - 1) * (0.5 + u), (m_ring.srcHeight - 1) * (0.5 - v)};
}

// A row's radius rounds once for the inner radius, the difference and the step, and once for each
// row; the product with the radius once.
double ExactRing::ErrorOfFraction() const {
    const double radius = 1.01 * static_cast<double>(std::max(m_ring.radiusX, m_ring.radiusY));
    return radius * (kRounding * (m_ring.dstHeight + 7) + m_angleError + m_sineError);
}

// The sum with one half and the product with the side round once each.
double ExactRing::ErrorOfColumn() const {
    return m_ring.srcWidth * (ErrorOfFraction() + 3.0 * kRounding);
}

double ExactRing::ErrorOfRow() const {
    return m_ring.srcHeight * (ErrorOfFraction() + 3.0 * kRounding);
}
