#include "Explanation.h"

#include <algorithm>
#include <cmath>

#include "RoundedNumbers.h"

namespace KivFisheyeTools {

namespace {

constexpr double kRightAngle = 90.0;

std::string PlaceText(double x, double y, int decimals) {
    return Rounded(x, decimals) + ", " + Rounded(y, decimals);
}

std::string LensLine(const ViewFacts& facts) {
    const double width = facts.input.width;
    const double height = facts.input.height;
    return "lens: centre at " + PlaceText(width / 2.0, height / 2.0, 1) +
           " from the top left, rim " + Rounded(facts.lens.radiusX * width, 1) +
           " pixels to each side and " + Rounded(facts.lens.radiusY * height, 1) + " up and down";
}

std::string AngleLine(const ViewFacts& facts) {
    if (DependsOnWallViewAngle(facts.view)) {
        return "angles: none, this panorama does not turn";
    }
    const std::string taken = WordsFor(facts.view, facts.taken);
    const std::string asked = WordsFor(facts.view, facts.asked);
    return "angles: " + taken + (asked == taken ? "" : "; asked for: " + asked);
}

std::string OriginOfSize(const ViewFacts& facts) {
    if (!facts.view.size.empty()) {
        return "as --size says";
    }
    return facts.output.height == facts.recommended.height
               ? "the recommended size"
               : "the recommended size with its height made even";
}

std::string OutputLine(const ViewFacts& facts) {
    return "output: " + WordsFor(facts.output) + " pixels, " + OriginOfSize(facts);
}

std::string WordsForRow(double radius) {
    // What is measured may lie a little beside what a row shows.
    constexpr double kBeside = 0.001;
    if (radius <= kBeside) {
        return "the lens's centre";
    }
    if (std::abs(radius - 1.0) <= kBeside) {
        return "the lens's rim, 90 degrees off its axis";
    }
    return Rounded(radius, 2) + " of the lens's radius, " + Rounded(radius * kRightAngle, 1) +
           " degrees off its axis";
}

void AddRingLines(const ViewFacts& facts, std::vector<std::string>* lines) {
    for (std::size_t i = 0; i < facts.parts.size(); ++i) {
        const PartFacts& part = facts.parts[i];
        const bool isHalf = facts.parts.size() > 1;
        const std::string half = i == 0 ? "upper half, " : "lower half, ";
        const std::string prefix = isHalf ? half : "";
        if (part.leftBearing) {
            // A whole turn is none.
            const double degrees = std::fmod(std::round(*part.leftBearing), 360.0);
            lines->push_back(prefix + "left edge: the lens's " + DirectionName(degrees) + ", " +
                             Rounded(degrees, 0) + " degrees clockwise from its top");
        }
        if (part.topRadius) {
            lines->push_back(prefix + "top row: " + WordsForRow(*part.topRadius));
        }
        if (part.bottomRadius) {
            lines->push_back(prefix + "bottom row: " + WordsForRow(*part.bottomRadius));
        }
    }
}

void AddWallLines(const ViewFacts& facts, std::vector<std::string>* lines) {
    const double angle = facts.view.lens.wallViewAngle;
    lines->push_back("left and right edge: 90 degrees to the left and to the right");
    lines->push_back(facts.output.height == 1
                         ? "only row: " + Rounded(angle, 1) + " degrees above the horizon"
                         : "top and bottom row: " + Rounded(angle, 1) +
                               " degrees above and below the horizon");
    lines->push_back("scale: " + Rounded(facts.output.width / (2.0 * kRightAngle), 2) +
                     " pixels for each degree across, " +
                     Rounded(facts.output.height / (2.0 * angle), 2) + " down");
}

void AddVirtualCameraLines(const ViewFacts& facts, std::vector<std::string>* lines) {
    const double zoom = facts.taken.zoom;
    lines->push_back("field of view: " + Rounded(DegreesAcross(zoom, facts.output), 0) +
                     " degrees of the lens across, " + Rounded(DegreesDown(zoom), 0) + " down");
    if (!facts.middle) {
        lines->emplace_back("middle: black");
        return;
    }
    lines->push_back("middle: at " + PlaceText(facts.middle->x, facts.middle->y, 0) +
                     " of the input, " + Rounded(facts.middle->x / facts.input.width, 2) +
                     " of its width and " + Rounded(facts.middle->y / facts.input.height, 2) +
                     " of its height");
}

std::string UsedLine(const ViewFacts& facts) {
    std::string part;
    if (DependsOnInnerRadius(facts.view)) {
        part = facts.view.lens.innerRadiusRatio > 0.0F
                   ? ", between " + Rounded(facts.view.lens.innerRadiusRatio, 2) +
                         " of the radius and the rim"
                   : ", from the centre to the rim";
    } else if (DependsOnWallViewAngle(facts.view)) {
        part = ", up to " + Rounded(facts.view.lens.wallViewAngle, 1) +
               " degrees above and below the horizon";
    }
    return "used: " + Percentage(facts.use.lensShown, facts.use.lensPixels) +
           " of the lens's pixels in the frame" + part;
}

std::string WordsFor(const Range& range) {
    const std::string least = Rounded(range.least, 2);
    const std::string most = Rounded(range.most, 2);
    return least == most ? most
                         : least + " to " + most + " (" + Rounded(range.mean, 2) + " on average)";
}

void AddSamplingLines(const SourceUse& use, std::vector<std::string>* lines) {
    if (use.across) {
        lines->push_back("source pixels for each output pixel across: " + WordsFor(*use.across));
    }
    if (use.down) {
        lines->push_back("source pixels for each output pixel down: " + WordsFor(*use.down));
    }
    if (use.differentShown > 0) {
        const double times =
            static_cast<double>(use.shown) / static_cast<double>(use.differentShown);
        const std::string number = Rounded(times, 2);
        lines->push_back("a source pixel that appears is shown " +
                         (number == "1" ? "once" : number + " times on average"));
    }
}

}  // namespace

std::string Explained(const ViewFacts& facts) {
    std::vector<std::string> lines = {
        "frame: " + WordsFor(facts.input) + " pixels", LensLine(facts),
        "view: " + WordsFor(ViewOfName(facts.view.view)) + " of a " + facts.view.mount + " camera",
        AngleLine(facts), OutputLine(facts)};
    if (HasExtent(facts.view.lens)) {
        if (IsVirtualCamera(facts.view)) {
            AddVirtualCameraLines(facts, &lines);
        } else if (IsWall(facts.view)) {
            AddWallLines(facts, &lines);
        } else {
            AddRingLines(facts, &lines);
        }
        if (facts.use.lensPixels > 0) {
            lines.push_back(UsedLine(facts));
        }
        AddSamplingLines(facts.use, &lines);
    }
    lines.push_back(
        "black: " + Percentage(facts.use.outputPixels - facts.use.shown, facts.use.outputPixels) +
        " of the output");
    for (const std::string& warning : WarningsAbout(facts)) {
        lines.push_back("warning: " + warning);
    }
    std::string text;
    for (const std::string& line : lines) {
        text += line + '\n';
    }
    return text;
}

}  // namespace KivFisheyeTools
