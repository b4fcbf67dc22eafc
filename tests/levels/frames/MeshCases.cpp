#include <DownwardFisheyeOpenGLAlgo.h>
#include <FrontwardFisheyeOpenGLAlgo.h>
#include <UpwardFisheyeOpenGLAlgo.h>

#include "FrameCases.h"

namespace {

constexpr int kCases = 10;

using FullMesh = void(int columns, int rows, float shape, bool centerAtOrigin, float* coordinates);
using DualMesh = void(int columns, int rowsFirst, int rowsSecond, float innerRadiusRatio,
                      bool centerAtOrigin, float* coordinates);

/// Columns in whole groups of lanes, as clients pass them. The vector type's memory lies at a
/// multiple of 16 bytes.
int NextColumns(CaseGenerator& generator) {
    return 4 * generator.NextInt(1, 20);
}

std::vector<float> Coordinates(int columns, int rows) {
    return std::vector<float>(2 * static_cast<std::size_t>(columns) *
                              static_cast<std::size_t>(rows));
}

void PrintFull(const std::string& family, FullMesh& mesh, float (CaseGenerator::*nextShape)()) {
    PrintFamily(family, kCases, [&](CaseGenerator& generator, Digest& digest) {
        const int columns = NextColumns(generator);
        const int rows = generator.NextSide(30);
        const bool centerAtOrigin = generator.NextInt(0, 1) == 1;
        std::vector<float> coordinates = Coordinates(columns, rows);
        mesh(columns, rows, (generator.*nextShape)(), centerAtOrigin, coordinates.data());
        digest.Add(coordinates);
    });
}

void PrintDual(const std::string& family, DualMesh& mesh) {
    PrintFamily(family, kCases, [&](CaseGenerator& generator, Digest& digest) {
        const int columns = NextColumns(generator);
        const int rowsFirst = generator.NextSide(30);
        const int rowsSecond = generator.NextSide(30);
        const bool centerAtOrigin = generator.NextInt(0, 1) == 1;
        std::vector<float> coordinates = Coordinates(columns, rowsFirst + rowsSecond);
        mesh(columns, rowsFirst, rowsSecond, generator.NextRatio(), centerAtOrigin,
             coordinates.data());
        digest.Add(coordinates);
    });
}

}  // namespace

void PrintMeshDigests() {
    constexpr auto kRatio = &CaseGenerator::NextRatio;
    PrintFull("ceiling-full-mesh", DownwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
              kRatio);
    PrintFull("table-full-mesh", UpwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate, kRatio);
    PrintFull("wall-full-mesh", FrontwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
              &CaseGenerator::NextWallViewAngle);
    PrintDual("ceiling-dual-mesh", DownwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate);
    PrintDual("table-dual-mesh", UpwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate);
}
