// Source pixels of groups of output pixels, and the copying of them. Included once for each width
// of lanes, inside a form's namespace and target region, which names its lanes `Floats` and their
// `Mask`.

constexpr int kLanes = Floats::kLanes;

/// How many groups of lanes go side by side through each step, how often a stage repeats that
/// before the next stage begins, and how many groups that makes.
constexpr int kGroups = 4;
constexpr int kRepeats = 8;
constexpr int kBlock = kGroups * kRepeats;

using FloatGroups = LaneGroups<Floats, kGroups>;

/// The memory is asked for the pixel of one lane in so many, in each row for another one: pixels
/// that lie close share their cache lines with those of the rows around.
constexpr int kSparse = 4;

/// The source pixels of one group of output pixels. Lanes that are not live show nothing; their
/// pixels mean nothing, and their offsets are 0.
struct alignas(kLanes * 4) Samples {
    int live[kLanes];
    int x[kLanes];  // then the byte offset in the frame
    int y[kLanes];
};

/// Samples found earlier, whose pixels are still to be copied.
template <class Pixel>
struct CopyTask {
    const SourceLanes<Pixel>& source;
    const Samples* samples;
    int groups;
    unsigned char* target;  // of the first group
    int columns;            // that may be written from there on

    /// Copies `kGroups` groups from the one at `first`, or as many as there are.
    [[gnu::always_inline]] void Run(int first) const {
        if (first + kGroups <= groups && (first + kGroups) * kLanes <= columns && AllLive(first)) {
            for (int group = first; group < first + kGroups; ++group) {
                source.template CopyAll<kLanes>(samples[group].x, TargetOf(group));
            }
            return;
        }
        for (int group = first; group < groups && group < first + kGroups; ++group) {
            source.template CopyLive<kLanes>(Mask::Load(samples[group].live).Bits(),
                                             samples[group].x, TargetOf(group),
                                             columns - group * kLanes);
        }
    }

    /// Copies all groups from the one at `first`.
    [[gnu::always_inline]] void RunFrom(int first) const {
        for (; first < groups; first += kGroups) {
            Run(first);
        }
    }

    [[gnu::always_inline]] bool AllLive(int first) const {
        Mask live = Mask::Load(samples[first].live);
        for (int group = 1; group < kGroups; ++group) {
            live = live & Mask::Load(samples[first + group].live);
        }
        return live.Bits() == (1 << kLanes) - 1;
    }

    [[gnu::always_inline]] unsigned char* TargetOf(int group) const {
        return target + std::ptrdiff_t{group} * kLanes * Pixel::kBytes;
    }
};
