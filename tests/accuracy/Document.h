#ifndef KIVFISHEYE_TESTS_ACCURACY_DOCUMENT_H
#define KIVFISHEYE_TESTS_ACCURACY_DOCUMENT_H

#include <iosfwd>

#include "accuracy/ListAccuracy.h"
#include "accuracy/PictureFigures.h"

/// All that was measured, of so many geometries of each family and source side.
struct Measurements {
    int geometries = 0;
    PictureFigures pictures;
    ListFigures lists;
};

/// Writes the page in Markdown.
void WriteDocument(const Measurements& measured, std::ostream& out);

#endif
