#include "ViewFacts.h"

#include <algorithm>
#include <cmath>

#include "Flattener.h"
#include "VideoReader.h"

namespace KivFisheyeTools {

namespace {

/// The first of some rows, and the one after the last.
struct Rows {
    std::uint32_t begin;
    std::uint32_t end;
};

LensPoint PointAt(const Lens& lens, const Place& place) {
    return lens.PointAt(place.x - 0.5, place.y - 0.5);
}

std::optional<double> MeanRadius(const SourcePlaces& places, const Lens& lens, std::uint32_t row) {
    double sum = 0.0;
    std::uint32_t count = 0;
    for (std::uint32_t column = 0; column < places.Output().width; ++column) {
        if (const std::optional<Place> place = places.PlaceAt(column, row)) {
            sum += PointAt(lens, *place).Radius();
            ++count;
        }
    }
    return count > 0 ? std::optional(sum / count) : std::nullopt;
}

std::optional<double> BearingOfLeftEdge(const SourcePlaces& places, const Lens& lens,
                                        const Rows& rows) {
    std::optional<LensPoint> outermost;
    for (std::uint32_t row = rows.begin; row < rows.end; ++row) {
        if (const std::optional<Place> place = places.PlaceAt(0, row)) {
            const LensPoint point = PointAt(lens, *place);
            outermost = outermost && outermost->Radius() >= point.Radius() ? outermost : point;
        }
    }
    constexpr double kCentre = 0.001;
    if (!outermost || outermost->Radius() < kCentre) {
        return std::nullopt;
    }
    const double bearing = Degrees(std::atan2(outermost->right, outermost->up));
    return bearing < 0.0 ? bearing + 360.0 : bearing;
}

std::optional<Place> MiddleOf(const SourcePlaces& places) {
    const Size output = places.Output();
    Place sum{0.0, 0.0};
    int count = 0;
    // A side with an even number of pixels has two in its middle.
    for (const std::uint32_t row : {(output.height - 1) / 2, output.height / 2}) {
        for (const std::uint32_t column : {(output.width - 1) / 2, output.width / 2}) {
            if (const std::optional<Place> place = places.PlaceAt(column, row)) {
                sum = {sum.x + place->x, sum.y + place->y};
                ++count;
            }
        }
    }
    return count > 0 ? std::optional(Place{sum.x / count, sum.y / count}) : std::nullopt;
}

std::vector<PartFacts> PartsOf(const SourcePlaces& places, const Lens& lens, std::uint32_t count) {
    const std::uint32_t height = places.Output().height / count;
    std::vector<PartFacts> parts;
    for (std::uint32_t i = 0; height > 0 && i < count; ++i) {
        const Rows rows{i * height, (i + 1) * height};
        parts.push_back({BearingOfLeftEdge(places, lens, rows),
                         MeanRadius(places, lens, rows.begin),
                         MeanRadius(places, lens, rows.end - 1)});
    }
    return parts;
}

std::optional<double> DegreesBesideAim(const AngleArguments& angles, const ViewFacts& facts) {
    const std::optional<LensPoint> aimed = AimedPoint(angles, facts.view.lens);
    if (!aimed || !facts.middle || !IsSameView(facts.asked, facts.taken)) {
        return std::nullopt;
    }
    const LensPoint middle = PointAt(facts.lens, *facts.middle);
    const LensPoint difference{middle.right - aimed->right, middle.up - aimed->up};
    return Degrees(difference.OffAxis());
}

/// The map is made of all four bytes of a pixel.
ViewArguments WithNumbers(ViewArguments view) {
    view.format = "rgb32";
    return view;
}

void FlattenNumbers(Flattener* flattener) {
    NumberPixels(flattener->Input());
    flattener->Flatten();
}

/// Where the pixels of a view lie, looked up in two frames as long as any in one direction.
class PlaceFinder {
public:
    explicit PlaceFinder(const ViewFacts& facts)
        : m_wide(FixedView(facts), kWide, OutputKind::Picture),
          m_high(FixedView(facts), kHigh, OutputKind::Picture),
          m_wideMap(m_wide.Output(), kWide),
          m_highMap(m_high.Output(), kHigh),
          m_places(m_wideMap, m_highMap, facts.input) {
        for (Flattener* const flattener : {&m_wide, &m_high}) {
            flattener->Turn(facts.asked);
            FlattenNumbers(flattener);
        }
    }

    PlaceFinder(const PlaceFinder&) = delete;
    PlaceFinder& operator=(const PlaceFinder&) = delete;

    const SourcePlaces& Places() const { return m_places; }

private:
    static constexpr Size kWide{kMaximumSide, 2};
    static constexpr Size kHigh{2, kMaximumSide};

    static ViewArguments FixedView(const ViewFacts& facts) {
        ViewArguments view = WithNumbers(facts.view);
        view.size = WordsFor(facts.output);
        return view;
    }

    Flattener m_wide;
    Flattener m_high;
    SourceMap m_wideMap;
    SourceMap m_highMap;
    SourcePlaces m_places;
};

/// A virtual camera's eye on the axis of the lens, whose half sphere has a radius of 1.
struct Eye {
    /// From the middle of the sphere, away from what is seen.
    double distance;
    double degreesHigh;

    /// The lens has a ray so many times as far off the axis as the eye.
    double Multiple() const { return 1.0 + distance; }
};

Eye EyeAt(double zoom) {
    return zoom < 2.0 ? Eye{1.0 - 0.99 * (zoom - 1.0), 90.0}
                      : Eye{0.01, 90.0 - 10.0 * (zoom - 2.0)};
}

}  // namespace

ViewFacts FactsOf(const ViewArguments& view, const AngleArguments& angles, OutputKind output,
                  VideoReader* reader) {
    ViewFacts facts{};
    facts.view = view;
    facts.input = {reader->Width(), reader->Height()};
    facts.lens = {facts.input.width, facts.input.height, view.lens.radiusX, view.lens.radiusY};
    Flattener flattener(WithNumbers(view), facts.input, output);
    facts.output = {flattener.Output().width, flattener.Output().height};
    facts.recommended = flattener.RecommendedSize();
    facts.asked = AskedAngles(angles, flattener);
    facts.taken = flattener.Turn(facts.asked);
    facts.notesOnAngles = NotesOnAngles(angles, view, facts.asked, facts.taken);
    // A damaged picture fails here as it would when it is flattened.
    reader->Read(flattener.Input());
    FlattenNumbers(&flattener);
    const SourceMap map(flattener.Output(), facts.input);
    const std::uint32_t parts = IsDualPanorama(view) ? 2 : 1;
    const PlaceFinder finder(facts);
    facts.use = MeasureUse(map, finder.Places(), facts.lens, parts);
    facts.parts = PartsOf(finder.Places(), facts.lens, parts);
    facts.middle = MiddleOf(finder.Places());
    facts.degreesBesideAim = DegreesBesideAim(angles, facts);
    return facts;
}

double DegreesDown(double zoom) {
    const Eye eye = EyeAt(zoom);
    return eye.Multiple() * eye.degreesHigh;
}

double DegreesAcross(double zoom, const Size& output) {
    const Eye eye = EyeAt(zoom);
    const double aspect = static_cast<double>(output.width) / output.height;
    const double halfWidth = std::atan(aspect * std::tan(Radians(eye.degreesHigh) / 2.0));
    return std::min(180.0, eye.Multiple() * 2.0 * Degrees(halfWidth));
}

}  // namespace KivFisheyeTools
