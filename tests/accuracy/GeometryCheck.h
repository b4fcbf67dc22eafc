#ifndef KIVFISHEYE_TESTS_GEOMETRY_CHECK_H
#define KIVFISHEYE_TESTS_GEOMETRY_CHECK_H

#include <stdexcept>
#include <string>
#include <vector>

#include "accuracy/PictureFigures.h"
#include "support/VCamModel.h"

/// A figure is larger than it may ever be; the text is a sentence.
struct BoundExceeded : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Where geometry in double precision looks for one output pixel, in source pixels.
struct ExactPlace {
    double column;
    double row;
    /// How far outside the frame or the lens; below 0 inside.
    double beyond;
};

/// How far columns and rows beyond the frame are, at most; below 0 inside.
double BeyondFrame(double column, double row, int side);

/// Largest distances in source pixels along each side.
struct Reach {
    double column;
    double row;
};

/// What a form is held against.
struct FormBounds {
    /// Of its positions before rounding from the exact ones.
    Reach fromExact;
    /// Of its pixels from those of the C form.
    Reach fromScalar;
};

/// One geometry of a conversion, in one form after the other.
class GeometryCheck {
public:
    GeometryCheck(PictureFigures& figures, Conversion conversion, int side,
                  std::vector<ExactPlace> exact)
        : m_figures(figures), m_conversion(conversion), m_side(side), m_exact(std::move(exact)) {}

    /// Adds the figures of a form, the C form first. Throws `BoundExceeded`.
    void Add(KernelForm form, const SourcePlaces& places, const FormBounds& bounds);

private:
    void CompareWithExact(KernelForm form, const SourcePlaces& places, Reach bound);
    void CompareWithScalar(KernelForm form, const SourcePlaces& places, Reach bound);
    void CompareWithFourLanes(const SourcePlaces& places);
    void AddError(FormFigures& figures, KernelForm form, int index, double position, double bound);
    [[noreturn]] void Fail(KernelForm form, const std::string& what) const;

    PictureFigures& m_figures;
    Conversion m_conversion;
    int m_side;
    std::vector<ExactPlace> m_exact;
    SourcePlaces m_scalar;
    SourcePlaces m_fourLanes;
};

#endif
