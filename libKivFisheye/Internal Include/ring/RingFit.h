#ifndef KIVFISHEYE_RING_FIT_H
#define KIVFISHEYE_RING_FIT_H

#include "BestFit.h"
#include "TruncateToInt.h"

namespace ring {

/// The ring along the axis of the lens ellipse on which it is deeper, as fractions of the frame's
/// side there. Pixels do not enter the choice, and a tie goes to the width.
struct Extent {
    Extent(float radiusX, float radiusY, float innerRadiusRatio) {
        const float k = 1.0F - innerRadiusRatio;
        const float depthX = k * radiusX;
        const float depthY = k * radiusY;
        alongWidth = depthX >= depthY;
        radius = alongWidth ? radiusX : radiusY;
        depth = alongWidth ? depthX : depthY;
    }

    bool alongWidth;
    float radius;
    float depth;
};

/// A panorama that is so many outer radii wide and so many depths of the ring high. Both factors
/// are powers of two, so the products are exact.
template <int radii, int depths>
struct Fit {
    static void Size(int srcWidth, int srcHeight, const Extent& extent, int& width, int& height) {
        const auto side = static_cast<float>(extent.alongWidth ? srcWidth : srcHeight);
        width = RoundUpToEight(TruncateToInt(side * (extent.radius * radii)));
        height = TruncateToInt(side * (extent.depth * depths));
    }

    static float Ratio(const Extent& extent) {
        constexpr float kShape = static_cast<float>(radii) / depths;
        return kNegligibleExtent >= extent.depth ? 1.0F : extent.radius * kShape / extent.depth;
    }
};

using FullFit = Fit<4, 1>;
using DualFit = Fit<2, 2>;

}  // namespace ring

#endif
