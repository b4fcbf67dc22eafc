// Several groups of lanes that go through the same steps side by side. Included once for each width
// of lanes, as sseFormulas.inl is, whose functions take these groups too.
//
// A formula is a chain of instructions that wait for each other. Written for one group of lanes it
// leaves the processor idle; with every step taken for all groups before the next one, the chains
// overlap.

template <class Lanes, unsigned count>
struct MaskGroups {
    typename Lanes::Mask group[count];

    [[gnu::always_inline]] friend MaskGroups operator&(const MaskGroups& a, const MaskGroups& b) {
        MaskGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] & b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend MaskGroups AndNot(const MaskGroups& a, const MaskGroups& b) {
        MaskGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = AndNot(a.group[i], b.group[i]);
        }
        return result;
    }
};

template <class Lanes, unsigned count>
struct LaneGroups {
    using Mask = MaskGroups<Lanes, count>;

    Lanes group[count];

    LaneGroups() = default;
    /// The same lanes in every group.
    [[gnu::always_inline]] explicit LaneGroups(Lanes lanes) {
        for (unsigned i = 0; i < count; ++i) {
            group[i] = lanes;
        }
    }
    /// Lanes that stand one after the other.
    [[gnu::always_inline]] static LaneGroups Load(const float* values) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = Lanes::Load(values + i * Lanes::kLanes);
        }
        return result;
    }
    [[gnu::always_inline]] static LaneGroups FromBits(sse::FloatBits bits) {
        return LaneGroups(Lanes::FromBits(bits));
    }

    [[gnu::always_inline]] friend LaneGroups operator+(const LaneGroups& a, const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] + b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups operator-(const LaneGroups& a, const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] - b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups operator*(const LaneGroups& a, const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] * b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups operator/(const LaneGroups& a, const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] / b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend Mask operator<(const LaneGroups& a, const LaneGroups& b) {
        Mask result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] < b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend Mask operator<=(const LaneGroups& a, const LaneGroups& b) {
        Mask result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] <= b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups operator|(const LaneGroups& a, const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = a.group[i] | b.group[i];
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups SignOf(const LaneGroups& a) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = SignOf(a.group[i]);
        }
        return result;
    }
    [[gnu::always_inline]] friend Mask HasSignBit(const LaneGroups& a) {
        Mask result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = HasSignBit(a.group[i]);
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups Abs(const LaneGroups& a) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = Abs(a.group[i]);
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups Sqrt(const LaneGroups& a) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = Sqrt(a.group[i]);
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups Rcp(const LaneGroups& a) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = Rcp(a.group[i]);
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups Max(const LaneGroups& a, const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = Max(a.group[i], b.group[i]);
        }
        return result;
    }
    [[gnu::always_inline]] friend LaneGroups Select(const Mask& mask, const LaneGroups& a,
                                                    const LaneGroups& b) {
        LaneGroups result;
        for (unsigned i = 0; i < count; ++i) {
            result.group[i] = Select(mask.group[i], a.group[i], b.group[i]);
        }
        return result;
    }
};
