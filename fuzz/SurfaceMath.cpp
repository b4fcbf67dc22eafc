#include <algorithm>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "SurfaceFunctions.h"
#include "math3d.h"

namespace {

/// Lists of random numbers of exactly the lengths that are asked for, and one for the result.
template <class Real>
class Numbers {
public:
    explicit Numbers(Play& play, int resultCount)
        : m_choices(play.choices),
          m_result(static_cast<std::size_t>(resultCount) * sizeof(Real),
                   GuardedBuffer::Side::EndsAtGuard, kFill) {}

    Real* Result() { return reinterpret_cast<Real*>(m_result.data()); }
    Real Next() { return static_cast<Real>(m_choices.Number(-10.0F, 10.0F)); }
    const Real* Next(int count) {
        m_lists.emplace_back(static_cast<std::size_t>(count));
        std::generate(m_lists.back().begin(), m_lists.back().end(), [this] { return Next(); });
        return m_lists.back().data();
    }

    /// The result was written whole, and nothing around it.
    void ExpectWritten() const {
        Expect(m_result.IsSurroundingUntouched(), "bytes around the result changed");
        for (std::size_t i = 0; i < m_result.size(); i += sizeof(Real)) {
            Expect(!IsFilledWith(m_result.data() + i, sizeof(Real), kFill), "number ",
                   i / sizeof(Real), " of the result was not written");
        }
    }

private:
    FuzzInput& m_choices;
    GuardedBuffer m_result;
    std::vector<std::vector<Real>> m_lists;
};

template <class Real>
void ExpectIdentity(const Real* matrix, int side) {
    for (int i = 0; i < side * side; ++i) {
        ExpectEqual(matrix[i], static_cast<Real>(i % (side + 1) == 0 ? 1 : 0), "an element");
    }
}

template <class Real>
void MultiplyByIdentity(Numbers<Real>& numbers, int side) {
    Real identity[16];
    side == 3 ? m3dLoadIdentity33(identity) : m3dLoadIdentity44(identity);
    ExpectIdentity(identity, side);
    const Real* const factor = numbers.Next(side * side);
    side == 3 ? m3dMatrixMultiply33(numbers.Result(), identity, factor)
              : m3dMatrixMultiply44(numbers.Result(), identity, factor);
    const bool isFinite =
        std::all_of(factor, factor + side * side, [](Real x) { return std::isfinite(x); });
    Expect(!isFinite || std::equal(factor, factor + side * side, numbers.Result()),
           "a product with the identity is another matrix");
}

template <class Real>
void Rotate(Numbers<Real>& numbers, int side) {
    const Real angle = numbers.Next();
    const Real x = numbers.Next();
    const Real y = numbers.Next();
    const Real z = numbers.Next();
    side == 3 ? m3dRotationMatrix33(numbers.Result(), angle, x, y, z)
              : m3dRotationMatrix44(numbers.Result(), angle, x, y, z);
    if (x == 0 && y == 0 && z == 0) {
        ExpectIdentity(numbers.Result(), side);
    }
}

template <class Real>
void CalculateNumbers(Play& play) {
    Numbers<Real> numbers(play, 3);
    const Real near = numbers.Next();
    const Real far = numbers.Next();
    const Real step = m3dSmoothStep(near, far, numbers.Next());
    Expect(!(near < far) || std::isnan(step) || (step >= -0.001F && step <= 1.001F), "a step is ",
           step);
    const Real* const point = numbers.Next(3);
    const Real distance = m3dGetDistanceSquared3(point, numbers.Next(3));
    Expect(std::isnan(distance) || distance >= 0, "a distance is ", distance);
    m3dRaySphereTest(numbers.Next(3), numbers.Next(3), numbers.Next(3), numbers.Next());
    m3dClosestPointOnRay(numbers.Result(), numbers.Next(3), numbers.Next(3), numbers.Next(3));
    numbers.ExpectWritten();
}

template <class Real>
void CalculateVectors(Play& play, int kind) {
    Numbers<Real> numbers(play, kind == 1 ? 4 : 3);
    const Real* const a = numbers.Next(3);
    const Real* const b = numbers.Next(3);
    const Real* const c = numbers.Next(3);
    if (kind == 0) {
        m3dFindNormal(numbers.Result(), a, b, c);
    } else if (kind == 1) {
        m3dGetPlaneEquation(numbers.Result(), a, b, c);
    } else {
        m3dCatmullRom(numbers.Result(), a, b, c, numbers.Next(3), numbers.Next());
    }
    numbers.ExpectWritten();
}

template <class Real>
void CalculateMatrices(Play& play, int kind) {
    const int side = kind % 2 == 0 ? 3 : 4;
    const bool isLarge = side == 4 || kind > 3;
    Numbers<Real> numbers(play, isLarge ? 16 : 9);
    if (kind < 2) {
        MultiplyByIdentity(numbers, side);
    } else if (kind < 4) {
        Rotate(numbers, side);
    } else if (kind == 4) {
        m3dInvertMatrix44(numbers.Result(), numbers.Next(16));
    } else {
        const float light[3] = {play.choices.Number(-10.0F, 10.0F), 1.0F, -1.0F};
        m3dMakePlanarShadowMatrix(numbers.Result(), numbers.Next(4), light);
    }
    numbers.ExpectWritten();
}

/// What there is in single precision alone.
void CalculateProjections(Play& play, int kind) {
    Numbers<float> numbers(play, kind < 2 ? 16 : kind == 2 ? 2 : 3);
    const int viewport[4] = {play.choices.Between(-9, 9), 0, 640, play.choices.Between(0, 480)};
    if (kind == 0) {
        m3dMakePerspectiveMatrix(numbers.Result(), numbers.Next(), numbers.Next(), numbers.Next(),
                                 numbers.Next());
    } else if (kind == 1) {
        m3dMakeOrthographicMatrix(numbers.Result(), numbers.Next(), numbers.Next(), numbers.Next(),
                                  numbers.Next(), numbers.Next(), numbers.Next());
    } else if (kind == 2) {
        m3dProjectXY(numbers.Result(), numbers.Next(16), numbers.Next(16), viewport,
                     numbers.Next(3));
    } else if (kind == 3) {
        m3dProjectXYZ(numbers.Result(), numbers.Next(16), numbers.Next(16), viewport,
                      numbers.Next(3));
    } else {
        float triangle[3][3];
        float texture[3][2];
        std::memcpy(triangle, numbers.Next(9), sizeof(triangle));
        std::memcpy(texture, numbers.Next(6), sizeof(texture));
        m3dCalculateTangentBasis(numbers.Result(), triangle, texture, numbers.Next(3));
    }
    numbers.ExpectWritten();
}

template <class Real>
void Calculate(Play& play, int kind) {
    if (kind == 0) {
        CalculateNumbers<Real>(play);
    } else if (kind < 4) {
        CalculateVectors<Real>(play, kind - 1);
    } else {
        CalculateMatrices<Real>(play, kind - 4);
    }
}

}  // namespace

void CalculateInThreeDimensions(Play& play) {
    BeginOperation("m3d");
    const int kind = play.choices.Between(0, 14);
    if (kind >= 10) {
        CalculateProjections(play, kind - 10);
    } else if (play.choices.OnceIn(2)) {
        Calculate<double>(play, kind);
    } else {
        Calculate<float>(play, kind);
    }
    CountOutcome(PresentOperation(), "done");
}
