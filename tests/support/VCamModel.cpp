#include "support/VCamModel.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <ostream>

#include "support/VectorMathModel.h"

namespace {

/// The rectangle that the eye looks through.
struct Rectangle {
    explicit Rectangle(const VCamFrame& frame) {
        const float half = frame.fieldOfView * 0.5F * 0.017453292F;
        const double tangent = std::tan(static_cast<double>(half));
        top = static_cast<float>(static_cast<double>(frame.nearPlane) * tangent);
        right = top * frame.aspect;
        stepX = (right + right) / static_cast<float>(frame.dstWidth - 1);
        stepY = (-top - top) / static_cast<float>(frame.dstHeight - 1);
    }

    float top;
    float right;
    float stepX;
    float stepY;
};

bool HasPixels(const VCamFrame& frame, int bytesPerPixel) {
    constexpr std::int64_t kLargest = 2147483647;
    if (frame.srcWidth <= 0 || frame.srcHeight <= 0) {
        return false;
    }
    const std::int64_t rowBytes = std::int64_t{frame.srcWidth} * bytesPerPixel;
    return rowBytes <= frame.srcStride &&
           std::int64_t{frame.srcHeight - 1} * frame.srcStride + rowBytes <= kLargest;
}

SourcePlaces PlacesByScalars(const VCamFrame& frame) {
    const Rectangle view(frame);
    const std::array<float, 16>& m = frame.matrix;
    const float z = (frame.eyeZ - frame.nearPlane) - frame.eyeZ;
    const float radiusPerRadian = (frame.eyeZ + 1.0F) * 0.31830987F;
    const float reach = 1.5707964F / (frame.eyeZ + 1.0F);
    const auto scaleX = static_cast<float>(frame.srcWidth - 1);
    const auto scaleY = static_cast<float>(frame.srcHeight - 1);
    SourcePlaces places;
    float y = view.top;
    for (int row = 0; row < frame.dstHeight; ++row, y += view.stepY) {
        float x = -view.right;
        for (int column = 0; column < frame.dstWidth; ++column, x += view.stepX) {
            places.emplace_back();
            float ray[3];
            for (std::size_t i = 0; i < 3; ++i) {
                ray[i] = ((x * m[i] + y * m[4 + i]) + z * m[8 + i]) + 0.0F * m[12 + i];
            }
            const float aside = ray[0] * ray[0] + ray[1] * ray[1];
            const float cosine = -ray[2] / std::sqrt(aside + ray[2] * ray[2]);
            const auto theta = static_cast<float>(std::acos(static_cast<double>(cosine)));
            const auto inverse = static_cast<float>(1.0 / std::sqrt(static_cast<double>(aside)));
            const float k = (radiusPerRadian * theta) * inverse;
            const float u = (frame.radiusX + frame.radiusX) * (ray[0] * k);
            const float v = (frame.radiusY + frame.radiusY) * (ray[1] * k);
            if (theta <= reach && std::fabs(u) <= 0.5F && std::fabs(v) <= 0.5F) {
                const auto toColumn = static_cast<int>(scaleX * (u + 0.5F));
                const auto toRow = static_cast<int>(scaleY * (0.5F - v));
                places.back() = PixelPlace{std::min(toColumn, frame.srcWidth - 1),
                                           std::min(toRow, frame.srcHeight - 1)};
            }
        }
    }
    return places;
}

#if defined(__x86_64__)

/// One component of the rays of neighbouring pixels.
class LanesOfRay {
public:
    LanesOfRay(const VCamFrame& frame, const Rectangle& view, int lanes, std::size_t component) {
        const float* const m = &frame.matrix[component];
        const float start =
            (m[0] * -view.right + m[4] * view.top) + (m[8] * -frame.nearPlane + m[12] * -1.0F);
        const float step = m[0] * view.stepX;
        for (int lane = 0; lane < lanes; ++lane) {
            m_row.push_back(start + static_cast<float>(lane) * step);
        }
        m_lanes = m_row;
        m_groupStep = static_cast<float>(lanes) * step;
        m_rowStep = m[4] * view.stepY;
    }

    float operator[](int lane) const { return m_lanes[static_cast<std::size_t>(lane)]; }
    void NextGroup() { Add(m_groupStep, m_lanes); }
    void NextRow() {
        Add(m_rowStep, m_row);
        m_lanes = m_row;
    }

private:
    static void Add(float step, std::vector<float>& lanes) {
        for (float& lane : lanes) {
            lane += step;
        }
    }

    std::vector<float> m_row;
    std::vector<float> m_lanes;
    float m_groupStep;
    float m_rowStep;
};

std::optional<PixelPlace> PlaceByLane(VCamForm form, const VCamFrame& frame, float x, float y,
                                      float z) {
    const float scale = (frame.eyeZ + 1.0F) * 0.31830987F;
    const float aside = x * x + y * y;
    const float theta = model::Arccosine(0.0F - z / std::sqrt(aside + z * z));
    const float w = theta / std::sqrt(aside);
    const float u = ((frame.radiusX + frame.radiusX) * scale) * (x * w);
    const float v = ((frame.radiusY + frame.radiusY) * scale) * (y * w);
    const bool isLive =
        std::fabs(u) <= 0.5F && std::fabs(v) <= 0.5F && theta <= 1.0F / (scale + scale);
    if (!isLive) {
        return std::nullopt;
    }
    return PixelPlace{
        PixelAt(form, static_cast<float>(frame.srcWidth - 1) * (u + 0.5F), frame.srcWidth),
        PixelAt(form, static_cast<float>(frame.srcHeight - 1) * (0.5F - v), frame.srcHeight)};
}

SourcePlaces PlacesByLanes(VCamForm form, const VCamFrame& frame) {
    const Rectangle view(frame);
    const int lanes = LanesOf(form);
    LanesOfRay x(frame, view, lanes, 0);
    LanesOfRay y(frame, view, lanes, 1);
    LanesOfRay z(frame, view, lanes, 2);
    SourcePlaces places;
    for (int row = 0; row < frame.dstHeight; ++row) {
        for (int i = 0; i < DrawnColumns(form, frame.dstWidth); ++i) {
            const int lane = i % lanes;
            places.push_back(PlaceByLane(form, frame, x[lane], y[lane], z[lane]));
            if (lane == lanes - 1) {
                x.NextGroup();
                y.NextGroup();
                z.NextGroup();
            }
        }
        x.NextRow();
        y.NextRow();
        z.NextRow();
    }
    return places;
}

#else

SourcePlaces PlacesByLanes(VCamForm, const VCamFrame&) {
    return {};
}

#endif

}  // namespace

std::size_t VCamFrame::SourceBytes(int bytesPerPixel) const {
    const std::int64_t bytes =
        std::int64_t{srcHeight - 1} * srcStride + std::int64_t{srcWidth} * bytesPerPixel;
    return srcWidth <= 0 || srcHeight <= 0 ? 0 : static_cast<std::size_t>(bytes);
}

std::size_t VCamFrame::OutputBytes() const {
    return static_cast<std::size_t>(std::max(std::int64_t{0}, std::int64_t{dstHeight} * dstStride));
}

std::ostream& operator<<(std::ostream& out, const VCamFrame& frame) {
    out.precision(9);
    out << "source " << frame.srcWidth << "x" << frame.srcHeight << " stride " << frame.srcStride
        << ", output " << frame.dstWidth << "x" << frame.dstHeight << " stride " << frame.dstStride
        << ", radii " << frame.radiusX << " and " << frame.radiusY << ", eye " << frame.eyeZ
        << ", near " << frame.nearPlane << ", field " << frame.fieldOfView << ", aspect "
        << frame.aspect << ", matrix";
    for (const float element : frame.matrix) {
        out << " " << element;
    }
    return out;
}

VCamFrame PackedVCam(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel) {
    VCamFrame frame;
    frame.srcWidth = srcWidth;
    frame.srcHeight = srcHeight;
    frame.srcStride = srcWidth * bytesPerPixel;
    frame.dstWidth = dstWidth;
    frame.dstHeight = dstHeight;
    frame.dstStride = dstWidth * bytesPerPixel;
    frame.aspect = static_cast<float>(dstWidth) / static_cast<float>(dstHeight);
    return frame;
}

int DrawnColumns(VCamForm form, int dstWidth) {
    const int width = std::max(dstWidth, 0);
    switch (form) {
        case VCamForm::SSE41:
            return (width + 3) / 4 * 4;
        case VCamForm::AVX:
            return width / 8 * 8;
        case VCamForm::C:
            break;
    }
    return width;
}

SourcePlaces ModelPlaces(VCamForm form, const VCamFrame& frame, int bytesPerPixel) {
    if (!HasPixels(frame, bytesPerPixel)) {
        const int pixels = DrawnColumns(form, frame.dstWidth) * std::max(frame.dstHeight, 0);
        return SourcePlaces(static_cast<std::size_t>(pixels));
    }
    return form == VCamForm::C ? PlacesByScalars(frame) : PlacesByLanes(form, frame);
}

std::size_t BytesBeyondFrame(VCamForm form, const VCamFrame& frame, int bytesPerPixel) {
    const int rowBytes = DrawnColumns(form, frame.dstWidth) * bytesPerPixel;
    const bool isWholeRow = frame.dstWidth * bytesPerPixel <= frame.dstStride;
    return frame.dstHeight <= 0 || !isWholeRow
               ? 0
               : static_cast<std::size_t>(std::max(0, rowBytes - frame.dstStride));
}

void PaintModel(VCamForm form, const VCamFrame& frame, int bytesPerPixel,
                const std::vector<unsigned char>& src, std::vector<unsigned char>& dst) {
    const SourcePlaces places = ModelPlaces(form, frame, bytesPerPixel);
    const int columns = DrawnColumns(form, frame.dstWidth);
    const std::int64_t frameEnd = std::int64_t{frame.dstHeight} * frame.dstStride;
    std::size_t next = 0;
    for (int row = 0; row < frame.dstHeight; ++row) {
        const std::int64_t rowStart = std::int64_t{row} * frame.dstStride;
        if (frame.dstStride > 0) {
            std::fill_n(dst.begin() + rowStart, frame.dstStride, static_cast<unsigned char>(0));
        }
        for (int column = 0; column < columns; ++column) {
            const std::optional<PixelPlace> place = places[next++];
            // The surplus of a group comes after a row that is whole.
            const int needed = column < frame.dstWidth ? column + 1 : frame.dstWidth;
            const bool isInside =
                rowStart + std::int64_t{needed} * bytesPerPixel <= frameEnd && rowStart >= 0;
            if (!place || !isInside) {
                continue;
            }
            const std::int64_t from = std::int64_t{place->row} * frame.srcStride +
                                      std::int64_t{place->column} * bytesPerPixel;
            std::copy_n(src.begin() + from, bytesPerPixel,
                        dst.begin() + rowStart + std::int64_t{column} * bytesPerPixel);
        }
    }
}
