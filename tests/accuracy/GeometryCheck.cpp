#include "accuracy/GeometryCheck.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

double BeyondFrame(double column, double row, int side) {
    const double last = side - 1.0;
    return std::max({-column, column - last, -row, row - last});
}

void GeometryCheck::Add(KernelForm form, const SourcePlaces& places, const FormBounds& bounds) {
    if (places.size() != m_exact.size()) {
        Fail(form, "drew " + std::to_string(places.size()) + " pixels");
    }
    m_figures.Of(m_conversion, m_side, form).pixels += static_cast<long long>(places.size());
    CompareWithExact(form, places, bounds.fromExact);
    if (form == KernelForm::C) {
        m_scalar = places;
        return;
    }
    CompareWithScalar(form, places, bounds.fromScalar);
    if (form == KernelForm::SSE41) {
        m_fourLanes = places;
    } else if (m_conversion != Conversion::VCam) {
        CompareWithFourLanes(places);
    }
}

void GeometryCheck::CompareWithExact(KernelForm form, const SourcePlaces& places, Reach bound) {
    FormFigures& figures = m_figures.Of(m_conversion, m_side, form);
    const double border = std::max(bound.column, bound.row);
    for (std::size_t i = 0; i < places.size(); ++i) {
        const ExactPlace& exact = m_exact[i];
        figures.onWrongSide += places[i].has_value() == (exact.beyond <= 0.0) ? 0 : 1;
        if (places[i] ? exact.beyond > border : exact.beyond < -border) {
            Fail(form, places[i] ? "shows what lies outside" : "leaves out what lies inside");
        }
        if (places[i]) {
            AddError(figures, form, places[i]->column, exact.column, bound.column);
            AddError(figures, form, places[i]->row, exact.row, bound.row);
        }
    }
}

// The C form takes the pixel that begins at or before the position, the others the nearest one.
void GeometryCheck::AddError(FormFigures& figures, KernelForm form, int index, double position,
                             double bound) {
    const double error = index - position;
    const double middle = form == KernelForm::C ? -0.5 : 0.0;
    if (!(std::fabs(error - middle) <= 0.5 + bound)) {
        Fail(form, "took pixel " + std::to_string(index) + " for position " +
                       std::to_string(position) + ", off by more than " + std::to_string(bound) +
                       " pixels before rounding");
    }
    ++figures.errors;
    figures.lowestError = std::min(figures.lowestError, error);
    figures.highestError = std::max(figures.highestError, error);
    figures.sumOfErrors += error;
    figures.sumOfSizes += std::fabs(error);
}

void GeometryCheck::CompareWithScalar(KernelForm form, const SourcePlaces& places, Reach bound) {
    FormFigures& figures = m_figures.Of(m_conversion, m_side, form);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i].has_value() != m_scalar[i].has_value()) {
            ++figures.shownByOne;
        }
        if (!places[i] || !m_scalar[i]) {
            continue;
        }
        ++figures.shownByBoth;
        const int columns = std::abs(places[i]->column - m_scalar[i]->column);
        const int rows = std::abs(places[i]->row - m_scalar[i]->row);
        if (columns > bound.column || rows > bound.row) {
            Fail(form, "lies " + std::to_string(std::max(columns, rows)) +
                           " source pixels from the C form");
        }
        figures.differing += columns == 0 && rows == 0 ? 0 : 1;
        figures.largestDistance = std::max({figures.largestDistance, columns, rows});
    }
}

// Eight lanes round up where four round to the even one of two.
void GeometryCheck::CompareWithFourLanes(const SourcePlaces& places) {
    FormFigures& figures = m_figures.Of(m_conversion, m_side, KernelForm::AVX);
    const auto isTie = [](int four, int eight) {
        return eight == four || (eight == four + 1 && four % 2 == 0);
    };
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (places[i] == m_fourLanes[i]) {
            continue;
        }
        if (!places[i] || !m_fourLanes[i] || !isTie(m_fourLanes[i]->column, places[i]->column) ||
            !isTie(m_fourLanes[i]->row, places[i]->row)) {
            Fail(KernelForm::AVX, "differs from four lanes by more than a tie");
        }
        ++figures.ties;
    }
}

void GeometryCheck::Fail(KernelForm form, const std::string& what) const {
    throw BoundExceeded("the " + NameOf(form) + " form of " + NameOf(m_conversion) + ", from " +
                        std::to_string(m_side) + " pixels, " + what + ".");
}
