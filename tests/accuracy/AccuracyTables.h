#ifndef KIVFISHEYE_TESTS_ACCURACY_TABLES_H
#define KIVFISHEYE_TESTS_ACCURACY_TABLES_H

#include <string>

#include "accuracy/ListAccuracy.h"
#include "accuracy/PictureFigures.h"

/// The sides of the square sources, in pixels.
inline constexpr int kSourceSides[] = {1024, 2880};

// Tables in Markdown.

/// Pictures of the forms in lanes beside those of the C form.
std::string TableBesideScalar(const PictureFigures& figures);

/// Pictures of all forms beside exact geometry.
std::string TableBesideExact(const PictureFigures& figures);

/// Lists in lanes beside those of the C form.
std::string ListTableBesideScalar(const ListFigures& figures);

/// Lists of both forms beside exact geometry.
std::string ListTableBesideExact(const ListFigures& figures);

/// A share from 0 to 1 as a percentage of two digits, three from 10 on.
std::string Percentage(double share);

/// A number with so many digits behind the point; none is minus zero.
std::string Decimal(double value, int digits);

#endif
