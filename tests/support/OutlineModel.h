#ifndef KIVFISHEYE_TESTS_OUTLINE_MODEL_H
#define KIVFISHEYE_TESTS_OUTLINE_MODEL_H

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

// Outlines and meshes in the plainest way, one number at a time and with the roundings of each of
// their forms. They share no code with the library.

enum class ListForm { C, SSE2 };

/// The forms that this machine has.
#if defined(__x86_64__)
inline constexpr ListForm kListForms[] = {ListForm::C, ListForm::SSE2};
#else
inline constexpr ListForm kListForms[] = {ListForm::C};
#endif

/// How many numbers a form computes at once.
constexpr int LanesOf(ListForm form) {
    return form == ListForm::C ? 1 : 4;
}

/// `count` rounded up to whole groups of a form.
constexpr int WholeGroups(ListForm form, int count) {
    return (count + LanesOf(form) - 1) / LanesOf(form) * LanesOf(form);
}

/// The form that the entries take on this processor.
ListForm FormOfEntries();

std::string NameOf(ListForm form);
inline std::string NameOfForm(const testing::TestParamInfo<ListForm>& info) {
    return NameOf(info.param);
}

#define KIVFISHEYE_TEST_LIST_FORMS(suite) \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(kListForms), NameOfForm)

namespace model {

/// Cosine and sine.
struct Turned {
    float c;
    float s;
};

/// In double precision, rounded.
Turned TurnedBy(float radians);

/// The angle that lies `step` beyond `angle`.
Turned RotatedBy(Turned angle, Turned step);

/// `count` angles from `start` on: a form's lanes start one step apart, and go on by all lanes'
/// steps at once.
std::vector<Turned> RotatedAngles(ListForm form, float start, float step, int count);

/// `count` angles from `start` on, as four lanes reach them by addition.
std::vector<float> AnglesOfLanes(float start, float step, int count);

/// One half of a ring: radii as fractions of the frame, the start in radians.
struct HalfRing {
    float center;
    float outerX;
    float outerY;
    float innerX;
    float innerY;
    float start;
    bool isWindows;
};

/// What a form makes of `list`, which `count` points are asked for.
std::vector<float> WithHalfRing(ListForm form, const HalfRing& ring, int count,
                                std::vector<float> list);

/// A camera's view whose outline is drawn around `center`.
struct ViewOutline {
    float center;
    float radiusX;
    float radiusY;
    float eyeZ;         ///< on the lens axis
    float fieldOfView;  ///< degrees from the view's bottom to its top
    float aspect;
    float nearPlane;
    std::array<float, 16> matrix;
    bool isWindows;
};

/// All edges' points, `count` a multiple of 16 for lanes.
std::vector<float> ViewOutlinePoints(ListForm form, const ViewOutline& view, int count);

}  // namespace model

#endif
