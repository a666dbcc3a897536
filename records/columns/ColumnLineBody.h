// What packing and unpacking of ColumnKernels share: scales, and the line that packed numbers lie about. Included like
// ColumnPackingBody.h, before it.

// A double of 1.5 × 2^52 plus a whole number up to ±2^51 holds that number in its low bits.
constexpr double kMagic = 0x1.8p52;
constexpr std::uint64_t kMagicBits = 0x4338000000000000;
constexpr double kLimit = 0x1p51;

enum class Form { Quotient, Product, Pattern, MixedPattern };

/// A scale in every lane. Made before a loop, because the compiler cannot know that the loop's stores leave the scale
/// alone.
struct Factors {
    explicit HWY_INLINE Factors(const ColumnKernels::Scale& scale)
        : up(hn::Set(kReals, scale.up)), down(hn::Set(kReals, scale.down))
    {
#if HWY_NATIVE_FMA
        const double inverse = 1 / scale.up;
        high = hn::Set(kReals, inverse);
        low = hn::Set(kReals, std::fma(-inverse, scale.up, 1.0) / scale.up);
#endif
    }

    Reals up, down;
#if HWY_NATIVE_FMA
    Reals high, low;  ///< the inverse of up, and its rounding error
#endif
};

// Division by multiplying with an inverse in two parts (Brisebarre and Muller 2008): n·low is rounded, n·high is added
// to it and the sum rounded once. For whole |n| < 2^53 and d = 10^k, k up to 15, that is the correctly rounded
// quotient: the sum misses n/d by less than 2^-104 of it; and n/d, whose denominator is d, never is the middle of two
// doubles and stays at least 2^-54/d of it away from one, which is further.
HWY_INLINE Reals divided(Reals numbers, const Factors& factors)
{
#if HWY_NATIVE_FMA
    return hn::MulAdd(numbers, factors.high, hn::Mul(numbers, factors.low));
#else
    return hn::Div(numbers, factors.up);
#endif
}

/// base + i × slope for the elements of a row, and what the next row adds.
struct Line {
    HWY_INLINE Line(std::uint64_t base, std::uint64_t slope) : step(hn::Set(kWords, slope * kRow))
    {
        alignas(64) std::uint64_t first[kRow];
        for (std::size_t i = 0; i < kRow; ++i)
            first[i] = base + i * slope;
        for (std::size_t part = 0; part < kParts; ++part)
            parts[part] = hn::Load(kWords, first + part * kLanes);
    }
    HWY_INLINE void goOn(std::size_t part) { parts[part] = hn::Add(parts[part], step); }

    Words parts[kParts];
    Words step;
};
