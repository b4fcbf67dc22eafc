#include "support/RingModel.h"

#include <algorithm>
#include <cmath>
#include <ostream>

namespace {

constexpr float kRadiansPerDegree = 0.0174532924F;
constexpr float kTurn = 6.28318548F;

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

int OffsetOf(const Ring& ring, int bytesPerPixel, float u, float v) {
    if (!(u >= -0.5F && u <= 0.5F && v >= -0.5F && v <= 0.5F)) {
        return kNoSource;
    }
    const float column = static_cast<float>(ring.srcWidth - 1) * (u + 0.5F);
    const float row = static_cast<float>(ring.srcHeight - 1) * (0.5F - v);
    return static_cast<int>(row) * ring.srcStride + static_cast<int>(column) * bytesPerPixel;
}

std::vector<int> OffsetsAlong(const std::vector<float>& angles, Mount mount, const Ring& ring,
                              int bytesPerPixel) {
    const Radii radiiX = RadiiOfRows(mount, ring.radiusX, ring.innerRadiusRatio);
    const Radii radiiY = RadiiOfRows(mount, ring.radiusY, ring.innerRadiusRatio);
    const auto steps = static_cast<float>(ring.dstHeight - 1);
    std::vector<int> offsets;
    float rx = radiiX.first;
    float ry = radiiY.first;
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (const float theta : angles) {
            const auto cosine = static_cast<float>(std::cos(static_cast<double>(theta)));
            const auto sine = static_cast<float>(std::sin(static_cast<double>(theta)));
            offsets.push_back(OffsetOf(ring, bytesPerPixel, rx * cosine, ry * sine));
        }
        rx += (radiiX.last - radiiX.first) / steps;
        ry += (radiiY.last - radiiY.first) / steps;
    }
    return offsets;
}

}  // namespace

std::size_t Ring::SourceBytes(int bytesPerPixel) const {
    return static_cast<std::size_t>((srcHeight - 1) * srcStride + srcWidth * bytesPerPixel);
}

std::size_t Ring::OutputBytes() const {
    return static_cast<std::size_t>(dstHeight) * static_cast<std::size_t>(dstStride);
}

std::ostream& operator<<(std::ostream& out, const Ring& ring) {
    out.precision(9);
    return out << "source " << ring.srcWidth << "x" << ring.srcHeight << " stride "
               << ring.srcStride << ", output " << ring.dstWidth << "x" << ring.dstHeight
               << " stride " << ring.dstStride << ", radii " << ring.radiusX << " and "
               << ring.radiusY << ", inner ratio " << ring.innerRadiusRatio;
}

Ring PackedRing(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel) {
    return {srcWidth, srcHeight, srcWidth * bytesPerPixel,
            dstWidth, dstHeight, dstWidth * bytesPerPixel};
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

std::vector<int> DirectOffsets(Mount mount, const Ring& ring, int bytesPerPixel, float pan) {
    const float first = pan * kRadiansPerDegree;
    const float last = first + kTurn;
    return OffsetsAlong(SteppedAngles(first, last, ring.dstWidth), mount, ring, bytesPerPixel);
}

std::vector<int> TableOffsets(Mount mount, const Ring& ring, int bytesPerPixel) {
    const std::vector<float> angles = mount == Mount::Table
                                          ? SteppedAngles(0.0F, kTurn, ring.dstWidth)
                                          : SteppedAngles(kTurn, 0.0F, ring.dstWidth);
    return OffsetsAlong(angles, mount, ring, bytesPerPixel);
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

void Paint(const std::vector<int>& offsets, const Ring& ring, int bytesPerPixel, RowStart rowStart,
           const std::vector<unsigned char>& src, std::vector<unsigned char>& frame) {
    const auto bytes = static_cast<std::size_t>(bytesPerPixel);
    const auto stride = static_cast<std::size_t>(ring.dstStride);
    std::size_t next = 0;
    for (std::size_t y = 0; y < static_cast<std::size_t>(ring.dstHeight); ++y) {
        for (std::size_t i = 0; i < stride && rowStart == RowStart::Cleared; ++i) {
            frame[y * stride + i] = 0;
        }
        for (std::size_t x = 0; x < static_cast<std::size_t>(ring.dstWidth); ++x) {
            const int offset = offsets[next++];
            const std::size_t begin = y * stride + x * bytes;
            for (std::size_t i = 0; i < bytes && begin + bytes <= ring.OutputBytes(); ++i) {
                frame[begin + i] =
                    offset == kNoSource ? 0 : src[static_cast<std::size_t>(offset) + i];
            }
        }
    }
}

bool ExactPoint::IsInside(double margin) const {
    return std::fabs(u) <= 0.5 + margin && std::fabs(v) <= 0.5 + margin;
}

// Single precision forms the start, the end, their difference, the quotient that is the step, and
// then one sum for each column. Each rounds once, relative to at most the largest angle; the
// constants it uses for pi round once more.
ExactRing::ExactRing(Mount mount, const Ring& ring, double first, double last)
    : m_mount(mount), m_ring(ring), m_firstAngle(first), m_lastAngle(last) {
    const double largest = 1.01 * std::max(std::fabs(first), std::fabs(last));
    m_angleError = kRounding * ((ring.dstWidth + 5) * largest + 2.0 * std::fabs(last - first));
}

ExactRing ExactRing::Direct(Mount mount, const Ring& ring, float pan) {
    const double first = pan * kPi / 180.0;
    return {mount, ring, first, first + 2.0 * kPi};
}

ExactRing ExactRing::Table(Mount mount, const Ring& ring) {
    return mount == Mount::Table ? ExactRing(mount, ring, 0.0, 2.0 * kPi)
                                 : ExactRing(mount, ring, 2.0 * kPi, 0.0);
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
    const double inward =
        m_mount == Mount::Table ? 1.0 - share(y, m_ring.dstHeight) : share(y, m_ring.dstHeight);
    const double radius = 1.0 - inward * (1.0 - static_cast<double>(m_ring.innerRadiusRatio));
    const double u = static_cast<double>(m_ring.radiusX) * radius * std::cos(theta);
    const double v = static_cast<double>(m_ring.radiusY) * radius * std::sin(theta);
    return {u, v, (m_ring.srcWidth - 1) * (0.5 + u), (m_ring.srcHeight - 1) * (0.5 - v)};
}

// A row's radius rounds once for the inner radius, the difference and the step, and once for each
// row; sine or cosine and the product with the radius once each.
double ExactRing::ErrorOfFraction() const {
    const double radius = 1.01 * static_cast<double>(std::max(m_ring.radiusX, m_ring.radiusY));
    return radius * (kRounding * (m_ring.dstHeight + 8) + m_angleError);
}

// The sum with one half and the product with the side round once each.
double ExactRing::ErrorOfColumn() const {
    return m_ring.srcWidth * (ErrorOfFraction() + 3.0 * kRounding);
}

double ExactRing::ErrorOfRow() const {
    return m_ring.srcHeight * (ErrorOfFraction() + 3.0 * kRounding);
}
