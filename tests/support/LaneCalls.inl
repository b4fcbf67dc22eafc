// What tests ask of vectors, with plain arrays on both sides. Included once for each width of
// lanes, inside a namespace that names its lanes `Floats` and `Mask`, and inside the target region
// of their instructions.

struct Lanes {
    static constexpr int kCount = Floats::kLanes;

    static void Sine(const float* x, float* result) { sseSin(Floats::Load(x)).Store(result); }
    static void Cosine(const float* x, float* result) { sseCos(Floats::Load(x)).Store(result); }
    static void Arctangent(const float* t, float* result) {
        sseAtan(Floats::Load(t)).Store(result);
    }
    static void ArctangentOf(const float* y, const float* x, float* result) {
        sseAtan2(Floats::Load(y), Floats::Load(x)).Store(result);
    }
    static void Arccosine(const float* c, float* result) { sseAcos(Floats::Load(c)).Store(result); }

    /// Three rows of lanes, one after the other, as groups that go side by side.
    using Groups = LaneGroups<Floats, 3>;
    static Groups LoadGroups(const float* values) {
        Groups groups;
        for (int i = 0; i < 3; ++i) {
            groups.group[i] = Floats::Load(values + i * kCount);
        }
        return groups;
    }
    static void StoreGroups(const Groups& groups, float* values) {
        for (int i = 0; i < 3; ++i) {
            groups.group[i].Store(values + i * kCount);
        }
    }
    static void ArctangentOfGroups(const float* t, float* result) {
        StoreGroups(sseAtan(LoadGroups(t)), result);
    }
    static void ArccosineOfGroups(const float* c, float* result) {
        StoreGroups(sseAcos(LoadGroups(c)), result);
    }
    /// Of a and b everything that no function above makes of groups.
    static void CombineGroups(const float* a, const float* b, float* result) {
        const Groups first = LoadGroups(a);
        const Groups second = LoadGroups(b);
        const Groups one = Groups(Floats(1.0F));
        const auto isChosen = (first <= second) & (Abs(first) < one);
        const Groups signedRoot = Sqrt(Abs(first)) | SignOf(second);
        StoreGroups(Select(isChosen, first / second, signedRoot - second), result);
    }

    static void Add(const float* a, const float* b, float* result) {
        (Floats::Load(a) + Floats::Load(b)).Store(result);
    }
    static void Subtract(const float* a, const float* b, float* result) {
        (Floats::Load(a) - Floats::Load(b)).Store(result);
    }
    static void Multiply(const float* a, const float* b, float* result) {
        (Floats::Load(a) * Floats::Load(b)).Store(result);
    }
    static void Divide(const float* a, const float* b, float* result) {
        (Floats::Load(a) / Floats::Load(b)).Store(result);
    }
    static void Smaller(const float* a, const float* b, float* result) {
        Min(Floats::Load(a), Floats::Load(b)).Store(result);
    }
    static void Larger(const float* a, const float* b, float* result) {
        Max(Floats::Load(a), Floats::Load(b)).Store(result);
    }
    static void AbsoluteValue(const float* a, float* result) { Abs(Floats::Load(a)).Store(result); }
    /// The first number's size with the second one's sign.
    static void WithSignOf(const float* a, const float* b, float* result) {
        (Abs(Floats::Load(a)) | SignOf(Floats::Load(b))).Store(result);
    }
    static void Root(const float* a, float* result) { Sqrt(Floats::Load(a)).Store(result); }
    static void Reciprocal(const float* a, float* result) { Rcp(Floats::Load(a)).Store(result); }
    static void SelectWhereLess(const float* a, const float* b, const float* chosen,
                                const float* other, float* result) {
        Select(Floats::Load(a) < Floats::Load(b), Floats::Load(chosen), Floats::Load(other))
            .Store(result);
    }
    static void FlipOdd(const float* numbers, const float* a, float* result) {
        (Floats::Load(a) ^ RoundToInts(Floats::Load(numbers)).template ShiftedLeft<31>())
            .Store(result);
    }
    static void Copy(const float* a, float* result) { Floats::Load(a).Store(result); }
    static void Everywhere(float value, float* result) { Floats(value).Store(result); }
    static void EverywhereOfBits(sse::FloatBits bits, float* result) {
        Floats::FromBits(bits).Store(result);
    }
    static void Indices(float* result) { LaneIndices().Store(result); }
    static void RoundThere(const float* a, int* result) {
        RoundToInts(Floats::Load(a)).Store(result);
    }
    static void RoundThereAndBack(const float* a, float* result) {
        Floats(RoundToInts(Floats::Load(a))).Store(result);
    }
    template <int count>
    static void RoundAndShiftLeft(const float* a, int* result) {
        RoundToInts(Floats::Load(a)).template ShiftedLeft<count>().Store(result);
    }

    static int Less(const float* a, const float* b) {
        return (Floats::Load(a) < Floats::Load(b)).Bits();
    }
    static int LessOrEqual(const float* a, const float* b) {
        return (Floats::Load(a) <= Floats::Load(b)).Bits();
    }
    static void StoreLess(const float* a, const float* b, int* result) {
        (Floats::Load(a) < Floats::Load(b)).Store(result);
    }
    static int LoadedBits(const int* lanes) { return Mask::Load(lanes).Bits(); }
    static int SignBits(const float* a) { return HasSignBit(Floats::Load(a)).Bits(); }

    /// What `both`, `either` and `first alone` say of a < 1 and b < 1.
    static void Combine(const float* a, const float* b, int* bits) {
        const Mask first = Floats::Load(a) < Floats(1.0F);
        const Mask second = Floats::Load(b) < Floats(1.0F);
        bits[0] = (first & second).Bits();
        bits[1] = (first | second).Bits();
        bits[2] = AndNot(first, second).Bits();
    }
};
