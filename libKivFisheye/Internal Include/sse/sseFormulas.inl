// Trigonometry on all lanes at once, without branches and without the C library. Included once for
// each width of lanes, inside their namespace and the target region of their instructions: a
// function defined outside it could not be inlined with them. `Floats` is such lanes, or groups of
// them.
//
// `Rcp` is the processor's estimate and stays unrefined: what it is off by is part of the results.

/// The sine of an angle of a few turns at most, to 2.1e-7 within one turn.
template <class Floats>
[[gnu::always_inline]] inline Floats sseSin(Floats x) {
    // sin(x) = (-1)^q sin(x - q pi)
    const auto q = RoundToInts(x * Floats::FromBits(kInvPi));
    const auto oddSign = q.template ShiftedLeft<31>();
    const Floats r = (x - Floats(q) * Floats::FromBits(kPi)) ^ oddSign;

    const Floats r2 = r * r;
    const Floats r3 = r * r2;
    const Floats r5 = r2 * r3;
    const Floats h = (r2 * Floats::FromBits(kSinC7) + Floats::FromBits(kSinC5)) +
                     (r2 * r2) * Floats::FromBits(kSinC9);
    const Floats sine = (r + r3 * Floats::FromBits(kSinC3)) + r5 * h;
    return Select(Abs(r) < Floats::FromBits(kSinSmall), r, sine);
}

/// The cosine, to 2.8e-7.
template <class Floats>
[[gnu::always_inline]] inline Floats sseCos(Floats x) {
    return sseSin(x + Floats::FromBits(kHalfPi));
}

/// The arctangent, to 0.0029: Euler's series up to its sixth power. It is worst at 1, where it also
/// jumps, because larger arguments go by way of their reciprocal.
template <class Floats>
[[gnu::always_inline]] inline Floats sseAtan(Floats t) {
    const Floats one = Floats::FromBits(kOne);
    const Floats a = Abs(t);
    const auto isBig = one < a;
    const Floats r = Select(isBig, Rcp(a), a);

    // The powers of smaller ratios, which are not used, would be denormal, and slow.
    const Floats small = Floats::FromBits(kAtanSmall);
    const Floats s = Max(small, r);
    const Floats w = Rcp(s * s + one) * s;
    const Floats y = s * w;
    const Floats y2 = y * y;
    const Floats y3 = y * y2;
    const Floats low = (y * Floats::FromBits(kEuler1) + one) + y2 * Floats::FromBits(kEuler2);
    const Floats high = ((y * Floats::FromBits(kEuler4) + Floats::FromBits(kEuler3)) +
                         y2 * Floats::FromBits(kEuler5)) +
                        y3 * Floats::FromBits(kEuler6);
    const Floats series = low + y3 * high;
    const Floats ofRatio = Select(r < small, r, w * series);

    const Floats v = Select(isBig, Floats::FromBits(kHalfPi) - ofRatio, ofRatio);
    return v | SignOf(t);
}

/// The angle of the point (x, y), to 0.0029. NaN at (0, 0). Minus zero counts as negative.
template <class Floats>
[[gnu::always_inline]] inline Floats sseAtan2(Floats y, Floats x) {
    const Floats a = sseAtan(y * Rcp(x));
    const auto isLeft = HasSignBit(x);
    const auto isBelow = HasSignBit(y);
    const Floats leftAbove = Select(AndNot(isLeft, isBelow), a + Floats::FromBits(kPi), a);
    return Select(isLeft & isBelow, a + Floats::FromBits(kNegPi), leftAbove);
}

// The arccosine goes by way of the tangent of half the arcsine. The two halves stand apart so that
// a kernel can take the roots of many lanes first and the polynomials after them.

/// tan(arcsin(c) / 2); NaN beyond 1 and -1.
template <class Floats>
[[gnu::always_inline]] inline Floats sseTanOfHalfAsin(Floats c) {
    const Floats one = Floats::FromBits(kOne);
    return c * Rcp(Sqrt(one - c * c) + one);
}

template <class Floats>
[[gnu::always_inline]] inline Floats sseAcosOfTanOfHalfAsin(Floats t) {
    const Floats half = sseAtan(t);
    return Floats::FromBits(kHalfPi) - (half + half);
}

/// The arccosine, to 0.0058, worst at 1 and -1; NaN beyond them.
template <class Floats>
[[gnu::always_inline]] inline Floats sseAcos(Floats c) {
    return sseAcosOfTanOfHalfAsin(sseTanOfHalfAsin(c));
}
