#ifndef KIVFISHEYE_TESTS_LIBRARY_OUTLINES_H
#define KIVFISHEYE_TESTS_LIBRARY_OUTLINES_H

#include <utility>
#include <vector>

#include "support/LibraryView.h"

using Points = std::vector<std::pair<float, float>>;

/// A context of the library that is asked for its outlines as any client asks. Lists come as they
/// are, with points that are not a number.
class LibraryOutlines {
public:
    explicit LibraryOutlines(const LibraryView& view) : m_context(ContextOf(view)) {}

    Points OfVirtualCamera(std::uint32_t width, std::uint32_t height, int count) const;
    std::pair<Points, Points> OfDual(int count) const;
    Points OfWall(int count) const;
    /// The inner ellipse and the outer one.
    std::pair<Points, Points> OfRing(int count) const;

private:
    LibraryContext m_context;
};

/// The points that are numbers.
Points Finite(const Points& points);

#endif
