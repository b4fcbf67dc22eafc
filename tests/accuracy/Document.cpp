#include "accuracy/Document.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <sstream>
#include <string>

#include "accuracy/AccuracyTables.h"
#include "instrset_detect.h"
#if defined(__x86_64__)
#include <cpuid.h>
#endif

namespace {

/// The text in lines of up to 110 characters and a blank line. Further lines of an item, which
/// begins with a dash, stand below its text.
std::string Paragraph(const std::string& text, const char* end = "\n\n") {
    constexpr std::size_t kWidth = 110;
    const std::string indent = text.compare(0, 2, "- ") == 0 ? "  " : "";
    std::string lines;
    std::string line;
    std::istringstream words(text);
    for (std::string word; words >> word;) {
        if (line.size() + 1 + word.size() > kWidth) {
            lines += line + "\n";
            line = indent + word;
        } else {
            line += (line.empty() ? "" : " ") + word;
        }
    }
    return lines + line + end;
}

std::string Item(const std::string& text) {
    return Paragraph("- " + text, "\n");
}

/// The processor's family: its maker, and whether it has integers of 256 bits.
std::string Processor() {
    std::string name = "a processor";
#if defined(__x86_64__)
    unsigned int highest = 0;
    unsigned int words[3] = {};
    char maker[sizeof words + 1] = {};
    if (__get_cpuid(0, &highest, &words[0], &words[2], &words[1]) != 0) {
        std::memcpy(maker, words, sizeof words);
    }
    if (std::strcmp(maker, "GenuineIntel") == 0) {
        name = "an Intel processor";
    } else if (std::strcmp(maker, "AuthenticAMD") == 0) {
        name = "an AMD processor";
    }
#endif
    constexpr int kLevelOfAvx2 = 8;
    return name + (GetCpuInstructionSet() >= kLevelOfAvx2 ? " with AVX2" : " with AVX");
}

/// The largest `measure(figures, form)` of all forms of some conversions, at each source side.
template <class Conversions, class Figure>
std::string LargestAtSides(const PictureFigures& pictures, const Conversions& conversions,
                           Figure&& measure, std::string (*write)(double)) {
    std::string text;
    for (const int side : kSourceSides) {
        double largest = 0.0;
        for (const Conversion conversion : conversions) {
            for (const KernelForm form : kKernelForms) {
                if (HasForm(conversion, form)) {
                    largest = std::max(largest, measure(pictures.Of(conversion, side, form), form));
                }
            }
        }
        text += (text.empty() ? "" : " and ") + write(largest) + " at " + std::to_string(side);
    }
    return text;
}

template <class Conversions>
std::string Farthest(const PictureFigures& pictures, const Conversions& conversions) {
    return LargestAtSides(
        pictures, conversions,
        [](const FormFigures& f, KernelForm) { return static_cast<double>(f.largestDistance); },
        [](double value) { return Decimal(value, 0); });
}

/// What sums of angles make of full panoramas in the C form.
std::string Drift(const PictureFigures& pictures) {
    constexpr Conversion kWidest[] = {Conversion::FullDirect, Conversion::FullTable};
    return LargestAtSides(
        pictures, kWidest,
        [](const FormFigures& f, KernelForm form) {
            return form == KernelForm::C ? f.BeyondRounding(form) : 0.0;
        },
        [](double value) { return Decimal(value, 1); });
}

void WriteReasons(const PictureFigures& pictures, std::ostream& out) {
    constexpr Conversion kRings[] = {Conversion::FullDirect, Conversion::FullTable,
                                     Conversion::DualDirect, Conversion::DualTable};
    constexpr Conversion kWalls[] = {Conversion::WallDirect, Conversion::WallTable};
    constexpr Conversion kCameras[] = {Conversion::VCam};
    out << Item(
               "**Rounding.** Forms in lanes take the nearest source pixel, the `C` form the one "
               "that begins at or before the exact position. So three pixels in four differ, most "
               "of them by one, and the picture as a whole sits half a source pixel aside.")
        << Item(
               "**Sums of angles.** The columns of a ring turn by repeated addition, which drifts "
               "as panoramas get wider. Lanes add once in four columns and drift less; the `C` "
               "form is off by up to " +
               Drift(pictures) +
               ". Rounding included, the forms of a ring panorama are apart by up to " +
               Farthest(pictures, kRings) + ".")
        << Item(
               "**Short series.** In lanes the arctangent and the arccosine are short series "
               "behind the processor's estimate of a reciprocal. The arctangent errs most at 45 "
               "degrees off the lens axis, where its error changes sign and lines have a fine "
               "step; the arccosine next to the axis. Walls are apart by up to " +
               Farthest(pictures, kWalls) + ", virtual cameras by up to " +
               Farthest(pictures, kCameras) + ".")
        << Item(
               "**Estimates.** That estimate differs between makes of processors. So walls and "
               "virtual cameras in lanes differ between makes also where the form is the same; "
               "ring panoramas do not.")
        << "\n";
}

void WriteSummary(const Measurements& m, std::ostream& out) {
    out << "# How accurate the results are\n\n"
        << Paragraph(
               "On one machine every run gives the same bytes. Another processor may run another "
               "form of a kernel, which takes other source pixels, mostly neighbours. This page "
               "says how far apart the forms are, and how far each is from exact geometry. "
               "Distances are in source pixels along a side, for square sources of 1024 and 2880 "
               "pixels. Four things make the difference:");
    WriteReasons(m.pictures, out);
    out << Paragraph(
        "None of this matters for showing video. It matters where pictures of several machines are "
        "compared: do not compare bytes, but allow for the distances below. Between makes of "
        "processors each picture of a wall or a virtual camera lies within its own error from "
        "geometry, so that two may be twice as far apart. Whoever measures in pictures adds half a "
        "pixel to a place that the `C` form shows. Directions are most exact in the `C` form; in "
        "ring panoramas much wider than 1000 pixels they are in lanes.");
}

void WriteBesideScalar(const PictureFigures& pictures, std::ostream& out) {
    out << "## Pictures: form beside form\n\n"
           "| Form | Runs on | Which source pixel a position becomes |\n|---|---|---|\n"
           "| `C` | x86-64 below SSE4.1; Arm | the one that it lies in: cut off |\n"
           "| `SSE41` | SSE4.1 and SSE4.2; direct panoramas also above | the nearest; half way, "
           "the one with the even number |\n"
           "| `AVX` | AVX and above: tables and virtual cameras | the nearest; half way, the one "
           "with the higher number |\n\n"
        << Paragraph(
               "`GetCPUInstructionSet()` tells the processor's level: 5 and 6 run `SSE41`, 7 and 8 "
               "`AVX`. Contexts and the command-line tool make panoramas by address tables; "
               "direct ones are what `CPanoramaSimpleConverter` and "
               "`CDualPanoramaSimpleConverter` make.")
        << Paragraph(
               "Of the output pixels that both forms show, *differ* is the share that come "
               "from another source pixel than in the `C` form, and *farthest* the largest "
               "distance. *In one only* is the share of all pixels that are black in one of "
               "both, which happens at the rim of the lens and the edge of the frame.")
        << TableBesideScalar(pictures) << "\n"
        << Paragraph(
               "On one processor tables of the `AVX` form differ from those of `SSE41` where a "
               "position lies half way between two pixels, and nowhere else: in up to " +
               LargestAtSides(
                   pictures, kConversions,
                   [](const FormFigures& f, KernelForm) { return f.ShareOfTies(); }, Percentage) +
               " of the pixels.");
}

void WriteBesideExact(const PictureFigures& pictures, std::ostream& out) {
    out << "## Pictures: each form beside exact geometry\n\n"
        << Paragraph(
               "*Error* is the number of the source pixel less the exact position, columns "
               "and rows alike, from the lowest to the highest; *mean* is its mean, and "
               "*absolute* the mean without signs. If nothing but the rounding were inexact, "
               "errors would reach from -1.00 to 0.00 in the `C` form and from -0.50 to 0.50 "
               "in the others, and be 0.50 and 0.25 without signs.")
        << TableBesideExact(pictures) << "\n"
        << Paragraph("Black where geometry shows something, or the other way round, are up to " +
                     LargestAtSides(
                         pictures, kConversions,
                         [](const FormFigures& f, KernelForm) { return f.ShareOnWrongSide(); },
                         Percentage) +
                     " of the pixels.");
}

void WriteLists(const ListFigures& lists, std::ostream& out) {
    out << "## Outlines and meshes\n\n"
        << Paragraph(
               "Largest distances along an axis as fractions of the frame, and in "
               "parentheses in pixels of a frame of 1024. A mesh has as many columns as the "
               "head says points, and its frame is the square around the lens's circle. "
               "Ellipses, rings and meshes turn by addition or rotation, so that they drift "
               "in longer lists. `SSE2` beside `C`:")
        << ListTableBesideScalar(lists) << "\nBoth beside exact geometry:\n\n"
        << ListTableBesideExact(lists) << "\n";
}

void WriteBounds(std::ostream& out) {
    out << Paragraph(
               "The program knows how far each form may be off and holds every single pixel "
               "and point against it. Where one is farther it says so and writes nothing.")
        << Item(
               "Ring panoramas: by what the form's sums of angles drift in a model of them, and "
               "single precision.")
        << Item(
               "Walls in lanes: by 0.0029 radians of the arctangent, and direct ones by 1.5 / "
               "4096 of the distance from the axis, too.")
        << Item(
               "Virtual cameras: by 0.0005 radians at the eye, in lanes by 0.0058 more for the "
               "arccosine.")
        << Item(
               "Pixels that are black in one and not in the other: no farther from the rim or the "
               "edge than that.")
        << Item(
               "`SSE2` lists beside `C`: 2e-3 of the frame for walls and 3e-3 for virtual "
               "cameras; 3e-6 for ellipses and rings of up to 256 points and 1e-5 of up to 1024; "
               "1e-6, 8e-6 and 6e-5 for ring meshes of up to 16, 256 and 1024 columns.")
        << "\n";
}

void WriteReproduction(int geometries, std::ostream& out) {
    out << "## How this was measured\n\n"
        << Paragraph(
               "`scripts/accuracy` builds the program that measures, and writes this page anew. "
               "The figures are extremes and means over " +
               std::to_string(geometries) +
               " random geometries of each family and source size, the same ones in every run. "
               "Lenses have semi-axes of 0.3 to 0.6 of the frame, and one in four is a circle that "
               "touches the frame's edges. Inner radii are up to 0.8 of the outer, pans go all "
               "round, and wall angles are 10 to 90 degrees. Virtual cameras of all mounts look in "
               "all directions at zooms of 1 to 10, one in four at 1. Full panoramas are up to "
               "twice as wide as the source, dual ones and walls up to its width and virtual "
               "cameras up to 512 pixels, all a multiple of 8. Pixels have 24 and 32 bits by "
               "turns, and table and ceiling cameras count together. Exact geometry is computed "
               "in double precision and shares no code with the library; it takes from it only "
               "how a virtual camera limits its angles, and where its eye is.");
    WriteBounds(out);
    out << Paragraph(
        "The figures are those of " + Processor() +
            ". Estimates of reciprocals differ between makes of processors, so that elsewhere "
            "figures of walls and virtual cameras in lanes may differ by a quarter or so. The "
            "bounds hold wherever an estimate is off by 1.5 / 4096 at most, as all makes say of "
            "theirs. Ring panoramas in lanes take no estimate. `C` forms take the C library's "
            "functions, whose last bits may differ elsewhere, too.",
        "\n");
}

}  // namespace

void WriteDocument(const Measurements& measured, std::ostream& out) {
    WriteSummary(measured, out);
    WriteBesideScalar(measured.pictures, out);
    WriteBesideExact(measured.pictures, out);
    WriteLists(measured.lists, out);
    WriteReproduction(measured.geometries, out);
}
