#include "Explanation.h"
#include "RoundedNumbers.h"

namespace KivFisheyeTools {

namespace {

using Warnings = std::vector<std::string>;

void WarnOfRadii(const ViewFacts& facts, Warnings* warnings) {
    constexpr double kFromCentreToEdge = 0.5;
    constexpr double kHalfAPixel = 0.5;
    const auto warn = [&](double radius, double side, const char* edges) {
        const double beyond = (radius - kFromCentreToEdge) * side;
        if (beyond >= kHalfAPixel) {
            warnings->push_back("the lens reaches " + Rounded(beyond, 0) +
                                " pixels beyond the frame, which crops it at its " + edges);
        }
    };
    warn(facts.lens.radiusX, facts.input.width, "left and right");
    warn(facts.lens.radiusY, facts.input.height, "top and bottom");
    if (!HasExtent(facts.view.lens)) {
        warnings->emplace_back(
            "the lens has no extent, so that the output shows one line or point");
    }
    const std::string hint = WordsForRoundLens(facts.input);
    if (!facts.view.hasRadii && !hint.empty()) {
        warnings->push_back("the lens is taken for an ellipse. " + hint);
    }
}

void WarnOfTheAim(const ViewFacts& facts, Warnings* warnings) {
    constexpr double kMuch = 1.5;
    if (IsWall(facts.view) && facts.degreesBesideAim.value_or(0.0) > kMuch) {
        warnings->push_back("the point of --aim lies " + Rounded(*facts.degreesBesideAim, 1) +
                            " degrees beside the middle; on a wall the library aims exactly along "
                            "the lens's two axes alone");
    }
}

/// The halves are equally high, which may leave a row over.
bool HasRowLeftOver(const ViewFacts& facts) {
    return IsDualPanorama(facts.view) && facts.output.height % 2 != 0;
}

void WarnOfTheDualPanorama(const ViewFacts& facts, Warnings* warnings) {
    constexpr float kHalfTurn = 180.0F;
    if (IsDualPanorama(facts.view) && facts.taken.pan == kHalfTurn) {
        warnings->emplace_back("a dual panorama at a pan of exactly 180 is that at 0");
    }
    if (HasRowLeftOver(facts)) {
        warnings->emplace_back(
            "the last row of a dual panorama stays black when its height is odd");
    }
}

/// The directions in which a number of the view's spans is one to warn of, with this number.
template <class IsWorthAWarning>
std::string WordsForSteps(const SourceUse& use, double Range::*number,
                          IsWorthAWarning isWorthAWarning) {
    std::vector<std::string> directions;
    const auto note = [&](const std::optional<Range>& steps, const char* direction) {
        if (steps && isWorthAWarning((*steps).*number)) {
            directions.push_back(Rounded((*steps).*number, 2) + " source pixels " + direction);
        }
    };
    note(use.across, "across");
    note(use.down, "down");
    return directions.empty() ? "" : Listed(directions, "and");
}

/// Where even the densest span has less than a source pixel for each of its own. A few hundredths
/// less are hardly to be seen.
void WarnOfUpsampling(const SourceUse& use, Warnings* warnings) {
    constexpr double kAboutOne = 0.95;
    const std::string steps =
        WordsForSteps(use, &Range::most, [](double most) { return most < kAboutOne; });
    if (!steps.empty()) {
        warnings->push_back(
            "the output upsamples the source: for each of its pixels there are at most " + steps);
    }
}

/// A panorama's rim has 1.57 across in the recommended size, but its rows have less on average.
void WarnOfSkipping(const SourceUse& use, Warnings* warnings) {
    constexpr double kMany = 1.5;
    const std::string steps =
        WordsForSteps(use, &Range::mean, [](double mean) { return mean >= kMany; });
    if (!steps.empty()) {
        warnings->push_back(
            "the output skips source pixels: for each of its pixels, which shows "
            "one, there are on average " +
            steps);
    }
}

void WarnOfBlack(const ViewFacts& facts, Warnings* warnings) {
    const std::uint64_t whole = facts.use.outputPixels;
    const std::uint64_t black =
        whole - facts.use.shown - (HasRowLeftOver(facts) ? facts.output.width : 0);
    if (4 * black > whole) {
        warnings->push_back(Percentage(black, whole) +
                            " of the output stays black, because it lies outside the lens or the "
                            "frame");
    }
}

}  // namespace

std::vector<std::string> WarningsAbout(const ViewFacts& facts) {
    Warnings warnings = facts.notesOnAngles;
    WarnOfRadii(facts, &warnings);
    WarnOfTheAim(facts, &warnings);
    WarnOfTheDualPanorama(facts, &warnings);
    if (HasExtent(facts.view.lens)) {
        WarnOfUpsampling(facts.use, &warnings);
        WarnOfSkipping(facts.use, &warnings);
    }
    WarnOfBlack(facts, &warnings);
    return warnings;
}

}  // namespace KivFisheyeTools
