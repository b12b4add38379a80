// The rows of bytes that kernels share, for every instruction set, from and to any address.
#include "engine/colour/hue_row.h"
#include "engine/colour/threshold_row.h"
#include "engine/vector/byte_rows.h"
#include "engine/vector/map_bytes.h"
#include "engine/vector/targets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <vector>

namespace {

struct Rows {
    std::mt19937 random{5};
    ByteTable table;
    RowPattern one{[this](std::size_t) { return Byte(); }};
    // Nothing where the first one is odd.
    RowPattern other{[this](std::size_t i) { return *one.At(i) % 2 != 0 ? u8{0} : Byte(); }};
    std::size_t channel = 0;

    Rows() {
        std::generate(table.begin(), table.end(), [this] { return Byte(); });
    }
    u8 Byte() { return static_cast<u8>(random()); }
};

using Row = std::function<void(const u8* a, const u8* b, u8* to, std::size_t count, Stores)>;
using ByteOf = std::function<i32(i32 a, i32 b, std::size_t i)>;

TEST(ByteRows, GiveEveryByteAndNoOther) {
    Rows rows;
    const RowPattern up(
        [&](std::size_t i) { return *rows.other.At(i) == 0 ? *rows.one.At(i) : u8{0}; });
    const struct {
        const char* name;
        Row row;
        ByteOf byteOf;
    } kinds[] = {
        {"copy",
         [](const u8* a, const u8*, u8* to, std::size_t n, Stores s) { CopyBytes(a, to, n, s); },
         [](i32 a, i32, std::size_t) { return a; }},
        {"invert",
         [](const u8* a, const u8*, u8* to, std::size_t n, Stores s) { InvertBytes(a, to, n, s); },
         [](i32 a, i32, std::size_t) { return 255 - a; }},
        {"map",
         [&](const u8* a, const u8*, u8* to, std::size_t n, Stores s) {
             MapBytes(a, to, n, rows.table, s);
         },
         [&](i32 a, i32, std::size_t) { return rows.table[static_cast<std::size_t>(a)]; }},
        {"map channel",
         [&](const u8* a, const u8*, u8* to, std::size_t n, Stores s) {
             MapChannel(a, to, n, rows.channel, rows.table, s);
         },
         [&](i32 a, i32, std::size_t i) {
             return i % 3 == rows.channel ? rows.table[static_cast<std::size_t>(a)] : a;
         }},
        {"add pattern",
         [&](const u8* a, const u8*, u8* to, std::size_t n, Stores s) {
             AddPattern(a, to, n, up, rows.other, s);
         },
         [&](i32 a, i32, std::size_t i) { return a + *up.At(i) - *rows.other.At(i); }},
        {"add difference",
         [&](const u8* a, const u8* b, u8* to, std::size_t n, Stores s) {
             AddDifference(a, b, to, n, rows.one, s);
         },
         [&](i32 a, i32 b, std::size_t i) { return *rows.one.At(i) + a - b; }},
    };
    for (const i64 target : VectorTargets()) {
        UseVectorTarget(target);
        for (std::size_t count = 1; count < 700; count = count < 200 ? count + 1 : count * 3 / 2) {
            for (const auto& kind : kinds) {
                SCOPED_TRACE(testing::Message() << VectorTargetName(target) << ", " << kind.name
                                                << ", " << count << " bytes");
                rows.channel = count % 3;
                // Sources of exactly that length: the address sanitizer sees what is read beyond.
                const std::size_t before = rows.random() % 70;
                std::vector<u8> a(count), b(count), to(before + count + 64, u8{7});
                std::generate(a.begin(), a.end(), [&] { return rows.Byte(); });
                std::generate(b.begin(), b.end(), [&] { return rows.Byte(); });
                std::vector<u8> expected = to;
                for (std::size_t i = 0; i < count; ++i) {
                    expected[before + i] =
                        static_cast<u8>(std::clamp(kind.byteOf(a[i], b[i], i), 0, 255));
                }
                const Stores stores = rows.random() % 2 == 0 ? Stores::Cached : Stores::Streamed;
                kind.row(a.data(), b.data(), to.data() + before, count, stores);
                FinishStores();
                ASSERT_TRUE(to == expected);
            }
        }
    }
    UseVectorTarget(0);
}

// Only large pictures are written past the caches: here small ones are, too.
TEST(ByteRows, PixelsPastTheCachesAreTheSame) {
    std::mt19937 random(9);
    const Saturation saturation(-40);
    for (const i64 target : VectorTargets()) {
        UseVectorTarget(target);
        for (std::size_t pixels = 1; pixels < 270; ++pixels) {
            SCOPED_TRACE(testing::Message() << VectorTargetName(target) << ", " << pixels);
            std::vector<u8> from(3 * pixels);
            std::generate(from.begin(), from.end(), [&] { return static_cast<u8>(random()); });
            const std::size_t before = random() % 70;
            std::vector<u8> rows[2][2]; // by kind of pixels and of stores
            for (const Stores stores : {Stores::Cached, Stores::Streamed}) {
                std::vector<u8>* made = rows[stores == Stores::Streamed ? 1 : 0];
                made[0] = made[1] = std::vector<u8>(before + 3 * pixels + 64, u8{7});
                ThresholdPixels(from.data(), made[0].data() + before, pixels, 128, stores);
                TurnPixels(from.data(), made[1].data() + before, pixels, {2, 17}, saturation,
                           stores);
                FinishStores();
            }
            ASSERT_TRUE(rows[0][0] == rows[1][0]);
            ASSERT_TRUE(rows[0][1] == rows[1][1]);
        }
    }
    UseVectorTarget(0);
}

} // namespace
