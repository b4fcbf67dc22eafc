#ifndef KIVFISHEYE_TESTS_RING_MESH_FORMS_H
#define KIVFISHEYE_TESTS_RING_MESH_FORMS_H

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "DownwardFisheyeOpenGLAlgo.h"
#include "UpwardFisheyeOpenGLAlgo.h"
#include "ring/RingMesh.h"
#include "support/FloatList.h"
#include "support/MeshModel.h"

/// A mount's functions in one form.
struct MeshForm {
    const char* name;
    Mount mount;
    ListForm form;
    ring::MeshFunction* full;
    ring::DualMeshFunction* dual;
};

inline constexpr MeshForm kMeshForms[] = {
#if defined(__x86_64__)
    {"CeilingSSE2", Mount::Ceiling, ListForm::SSE2,
     DownwardFisheyeAlgoNS::SSE2::CalculatePanoramaTextureCoordinate,
     DownwardFisheyeAlgoNS::SSE2::CalculateDualPanoramaTextureCoordinate},
    {"TableSSE2", Mount::Table, ListForm::SSE2,
     UpwardFisheyeAlgoNS::SSE2::CalculatePanoramaTextureCoordinate,
     UpwardFisheyeAlgoNS::SSE2::CalculateDualPanoramaTextureCoordinate},
#endif
    {"CeilingC", Mount::Ceiling, ListForm::C,
     DownwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate,
     DownwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate},
    {"TableC", Mount::Table, ListForm::C,
     UpwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate,
     UpwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate}};

inline void PrintTo(const MeshForm& form, std::ostream* out) {
    *out << form.name;
}

/// A test of both mounts in every form.
class RingMeshTest : public testing::TestWithParam<MeshForm> {
protected:
    static std::vector<float> Full(const MeshForm& form, int columns, int rows, float ratio,
                                   bool centerAtOrigin) {
        return FilledList(SizeOf(form, columns, rows), [&](float* vertices) {
            form.full(columns, rows, ratio, centerAtOrigin, vertices);
        });
    }
    static std::vector<float> Dual(const MeshForm& form, int columns, int rowsFirst, int rowsSecond,
                                   float ratio, bool centerAtOrigin) {
        return FilledList(SizeOf(form, columns, rowsFirst + rowsSecond), [&](float* vertices) {
            form.dual(columns, rowsFirst, rowsSecond, ratio, centerAtOrigin, vertices);
        });
    }
    /// In windows coordinates of the lens circle, whose centre is (0.5, 0.5).
    static std::vector<float> Full(int columns, int rows, float ratio) {
        return Full(GetParam(), columns, rows, ratio, false);
    }
    static std::vector<float> Dual(int columns, int rowsFirst, int rowsSecond, float ratio) {
        return Dual(GetParam(), columns, rowsFirst, rowsSecond, ratio, false);
    }

    static bool IsCeiling() { return GetParam().mount == Mount::Ceiling; }

    static std::size_t SizeOf(const MeshForm& form, int columns, int rows) {
        return 2 * static_cast<std::size_t>(WholeGroups(form.form, columns)) *
               static_cast<std::size_t>(rows);
    }
};

#define KIVFISHEYE_TEST_RING_MESHES(suite)                           \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(kMeshForms), \
                             [](const auto& form) { return std::string(form.param.name); })

#endif
