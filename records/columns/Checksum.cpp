#include "records/columns/Checksum.h"

#include <xxhash.h>
#if defined(__x86_64__)
#include <xxh_x86dispatch.h>
#endif

#include <bit>
#include <cstring>

namespace plotix::checksum {

static_assert(std::endian::native == std::endian::little, "stored numbers are little-endian and copied as they are");

// On x86 the library's plain function knows the oldest processors alone: 4 GB/s where this one does 80, and the
// processor's own CRC 10.
std::uint64_t of(std::span<const std::byte> bytes, std::uint64_t before)
{
#if defined(__x86_64__)
    return XXH3_64bits_withSeed_dispatch(bytes.data(), bytes.size(), before);
#else
    return XXH3_64bits_withSeed(bytes.data(), bytes.size(), before);
#endif
}

std::uint64_t of(std::span<const std::uint64_t> numbers, std::uint64_t before)
{
    return of(std::as_bytes(numbers), before);
}

void append(std::vector<std::byte>& bytes, std::uint64_t sum)
{
    bytes.resize(bytes.size() + kBytes);
    std::memcpy(bytes.data() + bytes.size() - kBytes, &sum, kBytes);
}

void seal(std::vector<std::byte>& bytes, std::uint64_t before)
{
    append(bytes, of(std::span<const std::byte>(bytes), before));
}

bool isIntact(std::span<const std::byte> sealed, std::uint64_t before)
{
    if (sealed.size() < kBytes)
        return false;
    std::uint64_t wanted = 0;
    std::memcpy(&wanted, sealed.data() + sealed.size() - kBytes, kBytes);
    return of(withoutSeal(sealed), before) == wanted;
}

std::uint64_t ofColumnHead(std::uint64_t property, std::uint64_t count, int codec, std::span<const std::byte> valid)
{
    const std::uint64_t head[] = {property, count, static_cast<std::uint64_t>(codec), valid.size()};
    const std::uint64_t sum = of(std::span<const std::uint64_t>(head));
    return valid.empty() ? sum : of(valid, sum);
}

}  // namespace plotix::checksum
