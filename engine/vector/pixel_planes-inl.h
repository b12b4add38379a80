// The three channels of some pixels apart, for plain loops over each; for vector code, which
// includes it once for each instruction set.
#if defined(ZQ_PIXEL_PLANES_INL_H) == defined(HWY_TARGET_TOGGLE)
#ifdef ZQ_PIXEL_PLANES_INL_H
#undef ZQ_PIXEL_PLANES_INL_H
#else
#define ZQ_PIXEL_PLANES_INL_H
#endif

#include "engine/vector/row_loop-inl.h"

#include <type_traits>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE {

// Few enough to stay in the first cache with all that comes of them.
constexpr std::size_t kPlanePixels = 1024;

using Plane = u8[kPlanePixels];

struct alignas(64) Planes {
    Plane blue;
    Plane green;
    Plane red;
};

#if HWY_TARGET == HWY_AVX3_DL

// Bytes picked out of three vectors by two permutations: the first one takes what comes from the
// first two vectors, the second one adds what comes from the third.
struct alignas(64) Picker {
    u8 first[64];
    u8 second[64];

    // Byte i comes from byte placeOf(i) of the three vectors.
    template <class PlaceOf>
    constexpr explicit Picker(const PlaceOf& placeOf) : first(), second() {
        for (std::size_t i = 0; i < 64; ++i) {
            const std::size_t place = placeOf(i);
            first[i] = static_cast<u8>(place % 128);
            second[i] = static_cast<u8>(place < 128 ? i : place - 64);
        }
    }

    HWY_INLINE ByteVector Pick(ByteVector a, ByteVector b, ByteVector c) const {
        const __m512i two = _mm512_permutex2var_epi8(a.raw, _mm512_load_si512(first), b.raw);
        return ByteVector{_mm512_permutex2var_epi8(two, _mm512_load_si512(second), c.raw)};
    }
};

constexpr Picker kSplit[3] = {Picker([](std::size_t i) { return 3 * i; }),
                              Picker([](std::size_t i) { return 3 * i + 1; }),
                              Picker([](std::size_t i) { return 3 * i + 2; })};
constexpr Picker kJoin[3] = {
    Picker([](std::size_t i) { return i % 3 * 64 + i / 3; }),
    Picker([](std::size_t i) { return (i + 64) % 3 * 64 + (i + 64) / 3; }),
    Picker([](std::size_t i) { return (i + 128) % 3 * 64 + (i + 128) / 3; })};

HWY_INLINE void LoadPixels(const u8* from, ByteVector& blue, ByteVector& green, ByteVector& red) {
    namespace hn = hwy::HWY_NAMESPACE;
    const ByteVector a = hn::LoadU(ByteTag(), from);
    const ByteVector b = hn::LoadU(ByteTag(), from + 64);
    const ByteVector c = hn::LoadU(ByteTag(), from + 128);
    blue = kSplit[0].Pick(a, b, c);
    green = kSplit[1].Pick(a, b, c);
    red = kSplit[2].Pick(a, b, c);
}

template <Stores stores>
HWY_INLINE void StorePixels(ByteVector blue, ByteVector green, ByteVector red, u8* to) {
    for (std::size_t i = 0; i < 3; ++i) {
        const ByteVector joined = kJoin[i].Pick(blue, green, red);
        if constexpr (stores == Stores::Streamed) {
            hwy::HWY_NAMESPACE::Stream(joined, ByteTag(), to + 64 * i);
        } else {
            hwy::HWY_NAMESPACE::StoreU(joined, ByteTag(), to + 64 * i);
        }
    }
}

#else

HWY_INLINE void LoadPixels(const u8* from, ByteVector& blue, ByteVector& green, ByteVector& red) {
    hwy::HWY_NAMESPACE::LoadInterleaved3(ByteTag(), from, blue, green, red);
}

template <Stores>
HWY_INLINE void StorePixels(ByteVector blue, ByteVector green, ByteVector red, u8* to) {
    hwy::HWY_NAMESPACE::StoreInterleaved3(blue, green, red, ByteTag(), to);
}

#endif

HWY_INLINE void SplitPixels(const u8* from, std::size_t pixels, Planes& planes) {
    namespace hn = hwy::HWY_NAMESPACE;
    const ByteTag tag;
    std::size_t i = 0;
    for (; pixels - i >= hn::Lanes(tag); i += hn::Lanes(tag)) {
        ByteVector blue, green, red;
        LoadPixels(from + 3 * i, blue, green, red);
        hn::Store(blue, tag, planes.blue + i);
        hn::Store(green, tag, planes.green + i);
        hn::Store(red, tag, planes.red + i);
    }
    for (; i < pixels; ++i) {
        planes.blue[i] = from[3 * i];
        planes.green[i] = from[3 * i + 1];
        planes.red[i] = from[3 * i + 2];
    }
}

HWY_INLINE void JoinPixels(const Plane& blue, const Plane& green, const Plane& red,
                           std::size_t pixels, u8* to) {
    namespace hn = hwy::HWY_NAMESPACE;
    const ByteTag tag;
    std::size_t i = 0;
    for (; pixels - i >= hn::Lanes(tag); i += hn::Lanes(tag)) {
        StorePixels<Stores::Cached>(hn::Load(tag, blue + i), hn::Load(tag, green + i),
                                    hn::Load(tag, red + i), to + 3 * i);
    }
    for (; i < pixels; ++i) {
        to[3 * i] = blue[i];
        to[3 * i + 1] = green[i];
        to[3 * i + 2] = red[i];
    }
}

// Replaces the pixels of a row, vectors of each channel at a time: work(blue, green, red) changes
// its arguments.
template <class Work>
HWY_INLINE void ForPixelVectors(const u8* from, u8* to, std::size_t pixels, Stores stores,
                                const Work& work) {
    namespace hn = hwy::HWY_NAMESPACE;
    const ByteTag tag;
    const std::size_t lanes = hn::Lanes(tag);
    ByteVector blue, green, red;
    const auto part = [&](std::size_t count) {
        HWY_ALIGN u8 bytes[3 * HWY_MAX_BYTES] = {};
        std::memcpy(bytes, from, 3 * count);
        LoadPixels(bytes, blue, green, red);
        work(blue, green, red);
        StorePixels<Stores::Cached>(blue, green, red, bytes);
        std::memcpy(to, bytes, 3 * count);
        from += 3 * count;
        to += 3 * count;
        pixels -= count;
    };
    const auto whole = [&](auto kind) {
        for (; pixels >= lanes; pixels -= lanes, from += 3 * lanes, to += 3 * lanes) {
            LoadPixels(from, blue, green, red);
            work(blue, green, red);
            StorePixels<kind>(blue, green, red, to);
        }
    };
    if (stores == Stores::Streamed) {
        // So many pixels of three bytes lead to a whole vector's address: 3 * 43 is 1 there.
        const std::size_t beyond = reinterpret_cast<std::uintptr_t>(to) % lanes;
        part(std::min(pixels, (lanes - beyond) * 43 % lanes));
        whole(std::integral_constant<Stores, Stores::Streamed>());
    } else {
        whole(std::integral_constant<Stores, Stores::Cached>());
    }
    part(pixels);
}

// Calls work(first pixel, pixels) for one group of pixels of a row after the other.
template <class Work>
HWY_INLINE void ForPixelGroups(std::size_t pixels, const Work& work) {
    for (std::size_t first = 0; first < pixels; first += kPlanePixels) {
        work(first, std::min(kPlanePixels, pixels - first));
    }
}

} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif
