// The geometry of the virtual camera's vector forms. Included once for each width of lanes, inside
// the form's namespace and target region. The namespace names its lanes `Floats` and has the
// functions on them and `LaneGroups` at hand. Unlike in the scalar form rays are stepped and not
// formed anew, and the arccosine is the lanes' own.

#include "SampleLanes.inl"

/// Source pixels further apart than this are each asked for, and not one in `kSparse` alone.
constexpr float kFarApart = 1.5F;

struct RayLanes {
    Floats x;
    Floats y;
    Floats z;

    [[gnu::always_inline]] void Advance(const RayLanes& step) {
        x = x + step.x;
        y = y + step.y;
        z = z + step.z;
    }
};

/// The rays of the output's first group, and how they grow.
struct RayWalk {
    [[gnu::always_inline]] RayWalk(const vcam::VCamJob& job, const vcam::ViewGrid& view) {
        Start(vcam::RaySteps(job, view, 0), &RayLanes::x);
        Start(vcam::RaySteps(job, view, 1), &RayLanes::y);
        Start(vcam::RaySteps(job, view, 2), &RayLanes::z);
    }

    [[gnu::always_inline]] void Start(const vcam::RaySteps& steps, Floats RayLanes::*component) {
        row.*component = Floats(steps.start) + LaneIndices() * Floats(steps.perPixel);
        groupStep.*component = Floats(steps.perPixel * static_cast<float>(kLanes));
        rowStep.*component = Floats(steps.perRow);
    }

    RayLanes row;
    RayLanes groupStep;
    RayLanes rowStep;
};

struct LensLanes {
    [[gnu::always_inline]] LensLanes(const vcam::VCamJob& job, const vcam::ViewGrid& view) {
        const float scale = (job.eyeZ + 1.0F) * kRadiusPerRadian;
        maxAngle = Floats(1.0F / (scale + scale));
        scaleX = Floats((job.radiusX + job.radiusX) * scale);
        scaleY = Floats((job.radiusY + job.radiusY) * scale);
        lastColumn = Floats(static_cast<float>(job.sourceWidth - 1));
        lastRow = Floats(static_cast<float>(job.sourceHeight - 1));

        const float pixelsApart = view.stepX / job.nearPlane * scale * (job.radiusX + job.radiusX) *
                                  static_cast<float>(job.sourceWidth);
        isFarApart = pixelsApart > kFarApart;
    }

    Floats maxAngle;
    Floats scaleX;
    Floats scaleY;
    Floats lastColumn;
    Floats lastRow;
    bool isFarApart;  // the source pixels of neighbouring output pixels, around the view's centre
};

/// Finds the source pixels of up to `kBlock` groups, asks the memory for them, and leaves `ray` at
/// the group after them. Earlier samples are copied `meanwhile`, when memory is idle: as many
/// groups of them as the result says. They may stand where the new ones go.
template <class Pixel>
[[gnu::always_inline]] inline int Locate(const LensLanes& lens, const RayLanes& groupStep, int row,
                                         int groups, const CopyTask<Pixel>& meanwhile,
                                         RayLanes* ray, Samples* samples) {
    const auto zero = FloatGroups::FromBits(sse::kZero);
    const auto half = FloatGroups::FromBits(sse::kHalf);
    FloatGroups x[kRepeats];
    FloatGroups y[kRepeats];
    FloatGroups distance[kRepeats];  // from the axis; its square at first
    FloatGroups c[kRepeats];         // the cosine of theta, then the tangent of half its arcsine
    const int repeats = (groups + kGroups - 1) / kGroups;
    for (int i = 0; i < repeats; ++i) {
        FloatGroups z;
        for (int group = 0; group < kGroups; ++group) {
            x[i].group[group] = ray->x;
            y[i].group[group] = ray->y;
            z.group[group] = ray->z;
            ray->Advance(groupStep);
        }
        const FloatGroups rr = x[i] * x[i] + y[i] * y[i];
        c[i] = zero - z / Sqrt(rr + z * z);
        distance[i] = rr;
    }
    for (int i = 0; i < repeats; ++i) {
        c[i] = sseTanOfHalfAsin(c[i]);
        meanwhile.Run(i * kGroups);
    }
    FloatGroups theta[kRepeats];
    for (int i = 0; i < repeats; ++i) {
        theta[i] = sseAcosOfTanOfHalfAsin(c[i]);
        distance[i] = Sqrt(distance[i]);
    }
    for (int i = 0; i < repeats; ++i) {
        const FloatGroups w = theta[i] / distance[i];
        const FloatGroups u = FloatGroups(lens.scaleX) * (x[i] * w);
        const FloatGroups v = FloatGroups(lens.scaleY) * (y[i] * w);
        const auto live =
            (Abs(u) <= half) & (Abs(v) <= half) & (theta[i] <= FloatGroups(lens.maxAngle));
        const FloatGroups column = FloatGroups(lens.lastColumn) * (u + half);
        const FloatGroups line = FloatGroups(lens.lastRow) * (half - v);
        for (int group = 0; group < kGroups && i * kGroups + group < groups; ++group) {
            Samples& sample = samples[i * kGroups + group];
            live.group[group].Store(sample.live);
            ToPixels(column.group[group]).Store(sample.x);
            ToPixels(line.group[group]).Store(sample.y);
            meanwhile.source.template FormOffsets<kLanes>(sample.live, sample.x, sample.y);
        }
    }
    // Apart from the loop above, so that the offsets come from memory and not lane by lane out of a
    // register, which is slower.
    for (int group = 0; group < groups; ++group) {
        if (lens.isFarApart) {
            meanwhile.source.template Prefetch<kLanes, 1>(samples[group].x, 0);
        } else {
            meanwhile.source.template Prefetch<kLanes, kSparse>(samples[group].x, row % kSparse);
        }
    }
    return repeats * kGroups;
}
