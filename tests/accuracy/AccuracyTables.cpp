#include "accuracy/AccuracyTables.h"

#include <cmath>
#include <cstdio>
#include <functional>
#include <iterator>
#include <vector>

namespace {

constexpr int kFrameOfLists = 1024;

std::string Row(const std::vector<std::string>& cells) {
    std::string row = "|";
    for (const std::string& cell : cells) {
        row += " " + cell + " |";
    }
    return row + "\n";
}

/// The head of a table, whose first columns are text and the others figures.
std::string Head(const std::vector<std::string>& cells, std::size_t textColumns) {
    std::string rule = "|";
    for (std::size_t i = 0; i < cells.size(); ++i) {
        rule += i < textColumns ? "---|" : "---:|";
    }
    return Row(cells) + rule + "\n";
}

/// The columns of every source side, with what each is headed by.
std::vector<std::string> PictureHead(const std::vector<std::string>& columns) {
    std::vector<std::string> head = {"Picture", "Form"};
    for (const int side : kSourceSides) {
        for (const std::string& column : columns) {
            head.push_back(std::to_string(side) + ": " + column);
        }
    }
    return head;
}

using Cells = std::vector<std::string>;

/// A table of the forms that are asked for, with the cells that `describe` makes for each side.
std::string PictureTable(const PictureFigures& figures, const Cells& columns, bool withScalar,
                         const std::function<Cells(const FormFigures&)>& describe) {
    std::string table = Head(PictureHead(columns), 2);
    for (const Conversion conversion : kConversions) {
        for (const KernelForm form : kKernelForms) {
            if (!HasForm(conversion, form) || (form == KernelForm::C && !withScalar)) {
                continue;
            }
            Cells cells = {NameOf(conversion), "`" + NameOf(form) + "`"};
            for (const int side : kSourceSides) {
                const Cells ofSide = describe(figures.Of(conversion, side, form));
                cells.insert(cells.end(), ofSide.begin(), ofSide.end());
            }
            table += Row(cells);
        }
    }
    return table;
}

/// A fraction of the frame with two digits, and what it is in pixels.
std::string Fraction(double fraction) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1e", fraction);
    const double pixels = fraction * (kFrameOfLists - 1);
    return std::string(text) + " (" + Decimal(pixels, pixels < 0.1 ? 4 : 2) + ")";
}

Cells ListHead(const Cells& text) {
    Cells head = text;
    for (const int length : kListLengths) {
        head.push_back(std::to_string(length) + " points");
    }
    return head;
}

/// A row of one of the distances, for every length.
std::string ListRow(const ListFigures& figures, List list, Cells cells,
                    double ListDistances::*distance) {
    for (const int length : kListLengths) {
        cells.push_back(Fraction(figures.at({list, length}).*distance));
    }
    return Row(cells);
}

}  // namespace

std::string Decimal(double value, int digits) {
    char text[64];
    const double smallest = 0.5 * std::pow(10.0, -digits);
    std::snprintf(text, sizeof text, "%.*f", digits, std::fabs(value) < smallest ? 0.0 : value);
    return text;
}

std::string Percentage(double share) {
    const double percent = 100.0 * share;
    if (percent <= 0.0) {
        return "0 %";
    }
    const int digits = percent >= 10.0 ? 1 : 1 - static_cast<int>(std::floor(std::log10(percent)));
    return Decimal(percent, digits) + " %";
}

std::string TableBesideScalar(const PictureFigures& figures) {
    return PictureTable(
        figures, {"differ", "farthest", "in one only"}, false, [](const FormFigures& f) {
            return Cells{Percentage(f.ShareDiffering()), std::to_string(f.largestDistance),
                         Percentage(f.ShareShownByOne())};
        });
}

std::string TableBesideExact(const PictureFigures& figures) {
    return PictureTable(figures, {"error", "mean", "absolute"}, true, [](const FormFigures& f) {
        return Cells{Decimal(f.lowestError, 2) + " to " + Decimal(f.highestError, 2),
                     Decimal(f.MeanError(), 2), Decimal(f.MeanSize(), 2)};
    });
}

std::string ListTableBesideScalar(const ListFigures& figures) {
    std::string table = Head(ListHead({"List"}), 1);
    for (const List list : kLists) {
        table += ListRow(figures, list, {NameOf(list)}, &ListDistances::lanesFromScalar);
    }
    return table;
}

std::string ListTableBesideExact(const ListFigures& figures) {
    std::string table = Head(ListHead({"List", "Form"}), 2);
    for (const List list : kLists) {
        table += ListRow(figures, list, {NameOf(list), "`C`"}, &ListDistances::scalarFromExact);
        table += ListRow(figures, list, {NameOf(list), "`SSE2`"}, &ListDistances::lanesFromExact);
    }
    return table;
}
