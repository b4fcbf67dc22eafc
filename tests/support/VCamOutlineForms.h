#ifndef KIVFISHEYE_TESTS_VCAM_OUTLINE_FORMS_H
#define KIVFISHEYE_TESTS_VCAM_OUTLINE_FORMS_H

#include <gtest/gtest.h>

#include <vector>

#include "KivFisheyeLib.h"
#include "support/OutlineModel.h"
#include "vcam/VCamOutline.h"

/// A form's kernel of one orientation.
vcam::OutlineFunction& VCamOutlineOf(ListForm form, CoordinateOrientationType orientation);

inline CoordinateOrientationType OrientationOf(const model::ViewOutline& view) {
    return view.isWindows ? CoordinateOrientationWindows : CoordinateOrientationTexture;
}

/// A matrix as the kernels take it.
struct MatrixOf {
    explicit MatrixOf(const model::ViewOutline& view);
    float elements[16];
};

/// A form's outline, in a list that ends at a guard page.
std::vector<float> VCamOutlinePoints(ListForm form, const model::ViewOutline& view, int count);

/// The same by the entry, which picks the form.
std::vector<float> VCamOutlineOfEntry(const model::ViewOutline& view, bool centerAtOrigin,
                                      int count);

/// A view as a mount aims it.
struct AimedView {
    KivFisheyeLib::MountType mount;
    float pan;
    float tilt;
    float zoom;
};

/// On a square view of a lens circle that fills the frame, around (0.5, 0.5) in windows
/// orientation.
model::ViewOutline ViewOf(const AimedView& aim);

/// A test of both forms.
class VCamOutlineTest : public testing::TestWithParam<ListForm> {
protected:
    static std::vector<float> Points(const model::ViewOutline& view, int count) {
        return VCamOutlinePoints(GetParam(), view, count);
    }
};

#endif
