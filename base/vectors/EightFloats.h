// Eight floats, in one vector or in several, so that every processor compares the same ones with each other and gives
// the same result for two zeros. Kernel files include it after Kernels.h; it too is compiled once a target.

#if defined(BASE_VECTORS_EIGHT_FLOATS_H) == defined(HWY_TARGET_TOGGLE)
#ifdef BASE_VECTORS_EIGHT_FLOATS_H
#undef BASE_VECTORS_EIGHT_FLOATS_H
#else
#define BASE_VECTORS_EIGHT_FLOATS_H
#endif

HWY_BEFORE_NAMESPACE();
namespace plotix::vectors::HWY_NAMESPACE {

struct EightFloats {
    static constexpr std::size_t kCount = 8;

    using Tag = hn::CappedTag<float, kCount>;
    static constexpr Tag kTag{};
    static constexpr std::size_t kLanes = hn::MaxLanes(kTag);
    static constexpr std::size_t kParts = kCount / kLanes;

    HWY_INLINE EightFloats() {}  // a generated one would not be compiled for the target
    static HWY_INLINE EightFloats all(float value)
    {
        EightFloats eight;
        unrolled<kParts>([&](auto part) HWY_ATTR { eight.parts[part] = hn::Set(kTag, value); });
        return eight;
    }
    static HWY_INLINE EightFloats load(const float* from)
    {
        EightFloats eight;
        unrolled<kParts>([&](auto part) HWY_ATTR { eight.parts[part] = hn::LoadU(kTag, from + part * kLanes); });
        return eight;
    }
    HWY_INLINE void store(float* to) const
    {
        unrolled<kParts>([&](auto part) HWY_ATTR { hn::StoreU(parts[part], kTag, to + part * kLanes); });
    }

    /// This, and `otherwise` where the lowest eight bits are not set.
    HWY_INLINE EightFloats where(std::uint32_t bits, float otherwise) const
    {
        constexpr hn::RebindToUnsigned<Tag> kBits;
        [[maybe_unused]] alignas(32) static constexpr std::uint32_t kWeights[kCount] = {1, 2, 4, 8, 16, 32, 64, 128};
        EightFloats eight;
        unrolled<kParts>([&](auto part) HWY_ATTR {
            const auto isSet = hn::TestBit(hn::Set(kBits, bits), hn::Load(kBits, kWeights + part * kLanes));
            eight.parts[part] = hn::IfThenElse(hn::RebindMask(kTag, isSet), parts[part], hn::Set(kTag, otherwise));
        });
        return eight;
    }

    /// Lane by lane; a NaN in `other` changes nothing.
    HWY_INLINE void lower(const EightFloats& other)
    {
        unrolled<kParts>([&](auto part)
                             HWY_ATTR { parts[part] = HWY_NAMESPACE::lower(parts[part], other.parts[part]); });
    }
    HWY_INLINE void raise(const EightFloats& other)
    {
        unrolled<kParts>([&](auto part)
                             HWY_ATTR { parts[part] = HWY_NAMESPACE::raise(parts[part], other.parts[part]); });
    }

    /// The least of the eight. Requires: no NaN.
    HWY_INLINE float least() const
    {
        return folded([](auto one, auto other) HWY_ATTR { return HWY_NAMESPACE::lower(one, other); });
    }
    HWY_INLINE float greatest() const
    {
        return folded([](auto one, auto other) HWY_ATTR { return HWY_NAMESPACE::raise(one, other); });
    }

    hn::Vec<Tag> parts[kParts];

private:
    /// Joins each lane with the one four further, then two, then one.
    template <class Join>
    HWY_INLINE float folded(const Join& join) const
    {
#if HWY_TARGET == HWY_SCALAR
        const auto pair = [&](std::size_t at) { return join(parts[at], parts[at + 4]); };
        return hn::GetLane(join(join(pair(0), pair(2)), join(pair(1), pair(3))));
#else
#if HWY_MAX_BYTES >= 32
        auto four = join(hn::LowerHalf(parts[0]), hn::UpperHalf(hn::Half<Tag>(), parts[0]));
#else
        auto four = join(parts[0], parts[1]);
#endif
        four = join(four, hn::Shuffle1032(four));
        return hn::GetLane(join(four, hn::Shuffle2301(four)));
#endif
    }
};

}  // namespace plotix::vectors::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
