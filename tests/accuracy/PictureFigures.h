#ifndef KIVFISHEYE_TESTS_PICTURE_FIGURES_H
#define KIVFISHEYE_TESTS_PICTURE_FIGURES_H

#include <algorithm>
#include <map>
#include <string>
#include <tuple>

#include "support/KernelForm.h"

/// The families of kernels that make pictures.
enum class Conversion { FullDirect, FullTable, DualDirect, DualTable, WallDirect, WallTable, VCam };

inline constexpr Conversion kConversions[] = {
    Conversion::FullDirect, Conversion::FullTable, Conversion::DualDirect, Conversion::DualTable,
    Conversion::WallDirect, Conversion::WallTable, Conversion::VCam};

inline constexpr KernelForm kKernelForms[] = {KernelForm::C, KernelForm::SSE41, KernelForm::AVX};

std::string NameOf(Conversion conversion);

/// Whether a family has a form. Direct conversions of panoramas have no eight lanes.
bool HasForm(Conversion conversion, KernelForm form);

/// What was counted of one form of a family: distances are in source pixels along a side.
struct FormFigures {
    long long pixels = 0;

    // Beside the C form.
    long long shownByBoth = 0;
    long long differing = 0;
    long long shownByOne = 0;
    int largestDistance = 0;

    // Beside the four lanes' form, for tables.
    long long ties = 0;

    // Beside exact geometry: a pixel's number less the exact position, column and row alike.
    long long errors = 0;
    double lowestError = 0.0;
    double highestError = 0.0;
    double sumOfErrors = 0.0;
    double sumOfSizes = 0.0;
    long long onWrongSide = 0;

    // Shares from 0 to 1, and means.
    double ShareDiffering() const { return Ratio(differing, shownByBoth); }
    double ShareShownByOne() const { return Ratio(shownByOne, pixels); }
    double ShareOfTies() const { return Ratio(ties, pixels); }
    double ShareOnWrongSide() const { return Ratio(onWrongSide, pixels); }
    double MeanError() const { return sumOfErrors / static_cast<double>(errors); }
    double MeanSize() const { return sumOfSizes / static_cast<double>(errors); }

    /// How far errors reach beyond those that rounding alone makes.
    double BeyondRounding(KernelForm form) const {
        const double highest = form == KernelForm::C ? 0.0 : 0.5;
        return std::max({0.0, highestError - highest, highest - 1.0 - lowestError});
    }

private:
    static double Ratio(long long part, long long whole) {
        return static_cast<double>(part) / static_cast<double>(whole);
    }
};

/// All figures of pictures, by source side.
class PictureFigures {
public:
    FormFigures& Of(Conversion conversion, int side, KernelForm form) {
        return m_figures[{conversion, side, form}];
    }
    const FormFigures& Of(Conversion conversion, int side, KernelForm form) const {
        return m_figures.at({conversion, side, form});
    }

private:
    std::map<std::tuple<Conversion, int, KernelForm>, FormFigures> m_figures;
};

#endif
