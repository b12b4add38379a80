#include "tests/engine/kernel_check.h"

#include "engine/engine.h"
#include "engine/vector/targets.h"
#include "tests/engine/reference/reference.h"
#include "tests/support/dib_maker.h"
#include "tests/support/engine_probe.h"
#include "tests/support/leak_guard.h"

#include <cstdlib>
#include <cstring>
#include <random>
#include <sstream>

namespace {

constexpr i32 kCases = 300;
constexpr i32 kLongFactor = 20;

// A generator of whole 32-bit numbers, whatever the width of the library's type.
struct Random {
    std::mt19937 engine;
    explicit Random(u32 seed) : engine(seed) {}
    u32 operator()() { return static_cast<u32>(engine()); }
};

i32 Between(Random& random, i64 low, i64 high) {
    return static_cast<i32>(low + static_cast<i64>(random() % static_cast<u64>(high - low + 1)));
}

struct Case {
    const CheckedKernel* kernel;
    u32 seed;
    std::vector<i32> record;
    std::vector<u8> picture;
    i64 target; // of the engine's vector code
};

DibHeader HeaderOf(const std::vector<u8>& picture) {
    DibHeader header;
    std::memcpy(&header, picture.data(), sizeof header);
    return header;
}

i32 MakeWord(Random& random, const RecordField& field, std::size_t fields) {
    const i64 around[] = {
        i64{field.low} - 1, i64{field.high} + 1, field.wildLow, field.wildHigh, 0, -1};
    if (random() % (6 * fields) == 0) {
        return static_cast<i32>(
            std::clamp<i64>(around[random() % std::size(around)], field.wildLow, field.wildHigh));
    }
    return random() % 5 != 0   ? Between(random, field.low, field.high)
           : random() % 2 == 0 ? field.low
                               : field.high;
}

std::vector<i32> MakeRecord(Random& random, const CheckedKernel& kernel) {
    std::vector<i32> record;
    for (const RecordField& field : kernel.fields) {
        record.push_back(MakeWord(random, field, kernel.fields.size()));
    }
    if ((kernel.traits & kByteTable) != 0) {
        // Noise, a constant, the identity with a little noise, or a slope up or down.
        const u32 kind = random() % 4;
        const u8 constant = static_cast<u8>(random() % 2 * 255);
        const u32 slope = 1 + random() % 8;
        std::array<u8, 256> table;
        for (u32 i = 0; i < table.size(); ++i) {
            table[i] = kind == 0   ? static_cast<u8>(random())
                       : kind == 1 ? constant
                       : kind == 2 ? static_cast<u8>(std::min<u32>(i + random() % 4, 255))
                                   : static_cast<u8>(constant ^ std::min<u32>(i * slope / 4, 255));
        }
        const std::size_t words = record.size();
        record.resize(words + table.size() / sizeof(i32));
        std::memcpy(&record[words], table.data(), table.size());
    }
    return record;
}

std::pair<i32, i32> MakeSize(Random& random, bool large, bool costly, bool veryWide) {
    const std::pair<i32, i32> small[] = {
        {1, 1}, {2, 2}, {1, Between(random, 2, 40)}, {Between(random, 2, 40), 1}};
    const std::pair<i32, i32> wide[] = {{2100, 2}, {3, 2100}, {4100, 1}, {11000, 3}, {70000, 1}};
    if (veryWide) {
        return wide[random() % std::size(wide)];
    }
    if (large) {
        if (costly || random() % 4 == 0) {
            return {Between(random, 120, 420), Between(random, 2, 12)};
        }
        // Some rows have no padding, so that nothing may be written behind them.
        const i32 width = random() % 3 == 0 ? 4 * Between(random, 5, 16) : Between(random, 17, 67);
        return {width, Between(random, 17, 53)};
    }
    return random() % 3 == 0 ? small[random() % std::size(small)]
                             : std::pair(Between(random, 2, 16), Between(random, 2, 16));
}

// Paints pixels over the noise: nothing, a tone, ramps, few tones, blocks, gentle noise.
void PaintContent(Random& random, std::vector<u8>& picture, std::size_t head, std::size_t stride) {
    const u32 kind = random() % 6;
    const u32 a = random(), b = random() % 16, c = random() % 16;
    for (std::size_t i = 0; kind != 0 && i < picture.size() - head; ++i) {
        const u32 x = static_cast<u32>(i % stride);
        const u32 y = static_cast<u32>(i / stride);
        const u32 tones[] = {a, a + x * b + y * c, a >> 8 * (random() % 3),
                             a >> 8 * ((x / (3 + b) + y / (2 + c)) % 3), a + random() % 16};
        picture[head + i] = static_cast<u8>(tones[kind - 1]);
    }
}

std::vector<u8> MakePicture(Random& random, i32 width, i32 height) {
    static constexpr ImageClass kKinds[] = {
        ImageClass::Colour,   ImageClass::Colour,   ImageClass::Colour, ImageClass::Colour,
        ImageClass::Grey,     ImageClass::Grey,     ImageClass::Grey,   ImageClass::Palette8,
        ImageClass::Palette8, ImageClass::Palette4, ImageClass::Mono,   ImageClass::None};
    const ImageClass kind = kKinds[random() % std::size(kKinds)];
    const u32 most = kind == ImageClass::Palette4 ? 16 : kind == ImageClass::Mono ? 2 : 256;
    const u32 entries = random() % 2 == 0 ? most : random() % (most + 1);
    const OwnedBlock dib = MakeDib(
        kind, width, height, {.seed = random(), .paletteEntries = entries, .randomPadding = true});
    std::vector<u8> picture = BytesOf(dib.Handle());
    DibHeader header = HeaderOf(picture);
    if (kind == ImageClass::None) {
        const u16 depths[] = {16, 32, 2, 0};
        header.biBitCount = depths[random() % std::size(depths)];
        picture.resize(picture.size() * 5);
    } else {
        const auto stride =
            static_cast<std::size_t>(RowStride(static_cast<u32>(width), header.biBitCount));
        const std::size_t head = picture.size() - stride * static_cast<std::size_t>(height);
        PaintContent(random, picture, head, stride);
    }
    if (kind == ImageClass::Palette8 && random() % 3 == 0) {
        // Almost the grey palette.
        for (u32 i = 0; i + 1 < entries; ++i) {
            std::memset(&picture[sizeof header + i * 4], static_cast<int>(i), 3);
        }
    }
    if (kind == ImageClass::Colour && random() % 6 == 0) {
        header.biClrUsed = random() % 300;
    }
    std::memcpy(picture.data(), &header, sizeof header);
    if (random() % 6 == 0) {
        picture.insert(picture.end(), random() % 9, u8{77}); // a block may be larger than needed
    }
    return picture;
}

Case MakeCase(const CheckedKernel& kernel, u32 number) {
    static const std::vector<i64> targets = VectorTargets();
    Random random(number * 1000u + static_cast<u32>(kernel.id));
    Case made = {&kernel, number, {}, {}, targets[random() % targets.size()]};
    made.record = MakeRecord(random, kernel);
    const bool costly = (kernel.traits & kCostly) != 0 && made.record[0] > kernel.costlyAbove;
    const auto [width, height] = MakeSize(random, number % (costly ? 24 : 8) == 0, costly,
                                          (kernel.traits & kVeryWide) != 0 && number % 16 == 1);
    made.picture = MakePicture(random, width, height);
    return made;
}

std::string Text(const std::vector<i32>& trace) {
    std::ostringstream text;
    for (const i32 event : trace) {
        text << (event == EngineProbe::kQuestion      ? "?"
                 : event == EngineProbe::kBusyCursor  ? "busy"
                 : event == EngineProbe::kArrowCursor ? "arrow"
                                                      : std::to_string(event))
             << ' ';
    }
    return text.str();
}

std::string Describe(const Case& made, std::size_t stopAt) {
    const DibHeader header = HeaderOf(made.picture);
    std::ostringstream text;
    text << made.kernel->name << " (" << made.kernel->id << "), case " << made.seed << ", "
         << header.biWidth << " x " << header.biHeight << " at " << header.biBitCount << " bits, "
         << header.biClrUsed << " entries, record";
    for (std::size_t i = 0; i < made.kernel->fields.size(); ++i) {
        text << ' ' << made.record[i];
    }
    text << ", yes to question " << stopAt << ", " << VectorTargetName(made.target);
    return text.str();
}

std::string FirstDifference(const std::vector<u8>& picture, const std::vector<u8>& expected,
                            const std::vector<u8>& actual) {
    std::ostringstream text;
    if (expected.size() != actual.size()) {
        text << "expected " << expected.size() << " bytes, got " << actual.size();
        return text.str();
    }
    const auto differs = std::mismatch(expected.begin(), expected.end(), actual.begin());
    const DibHeader header = HeaderOf(picture);
    const std::size_t at = static_cast<std::size_t>(differs.first - expected.begin());
    const auto stride =
        static_cast<std::size_t>(RowStride(static_cast<u32>(header.biWidth), header.biBitCount));
    const std::size_t head = header.biBitCount == 24 ? 40 : 40 + 4 * header.biClrUsed;
    text << "byte " << at;
    if (at >= head) {
        const std::size_t channels = header.biBitCount == 24 ? 3 : 1;
        const std::size_t column = (at - head) % stride;
        text << " (x " << column / channels << ", y " << (at - head) / stride << ", channel "
             << column % channels << ')';
    }
    text << ": expected " << i32{*differs.first} << ", got " << i32{*differs.second} << ", source "
         << i32{picture[at]};
    return text.str();
}

// Runs the engine and the reference on a case. Gives what the reference gives, and adds to
// `engineState`, the state of this thread's random stream, what both have drawn.
ReferenceResult Compare(const Case& made, std::size_t stopAt, u32& engineState) {
    SCOPED_TRACE(Describe(made, stopAt));
    UseVectorTarget(made.target);
    const OwnedBlock source = MakeBlock(made.picture);
    EngineProbe probe;
    probe.StopAtQuestion(stopAt);
    std::vector<u8> actual;
    {
        const LeakGuard leaks;
        const UnchangedGuard unchanged(source.Handle());
        const OwnedBlock result(RunEffect(source.Handle(), made.kernel->id, made.record.data()));
        actual = BytesOf(result.Handle());
    }
    ReferenceResult expected = RunReference(made.picture, made.kernel->id, made.record.data(),
                                            static_cast<i64>(stopAt), engineState);
    EXPECT_TRUE(actual == expected.block) << FirstDifference(made.picture, expected.block, actual);
    EXPECT_TRUE(probe.Trace() == expected.trace)
        << "expected " << Text(expected.trace) << "\ngot      " << Text(probe.Trace());
    engineState = expected.randomState * 214013u + 2531011u;
    EXPECT_EQ(EngineRandom(), static_cast<i32>(engineState >> 16 & 0x7FFF))
        << "the number of random draws differs";
    return expected;
}

std::vector<std::size_t> QuestionsToStopAt(std::size_t questions, u32 seed) {
    std::vector<std::size_t> chosen;
    if (questions <= 8 || (questions <= 40 && seed % 8 == 2)) {
        for (std::size_t n = 1; n <= questions; ++n) {
            chosen.push_back(n);
        }
    } else {
        Random random(seed);
        chosen = {1, 2, 1 + random() % questions, questions};
    }
    return chosen;
}

// Without a table the answer is 0, or where that is said of the kernel a black picture.
void CheckFailingAllocations(const Case& made) {
    SCOPED_TRACE(Describe(made, 0));
    const OwnedBlock source = MakeBlock(made.picture);
    const UnchangedGuard unchanged(source.Handle());
    DibView view;
    ASSERT_TRUE(ViewDib(made.picture.data(), made.picture.size(), view));
    std::vector<u8> black(made.picture.begin(),
                          made.picture.begin() + static_cast<std::ptrdiff_t>(view.head));
    black.resize(view.size);
    std::vector<u8> result;
    i32 blackPictures = 0;
    const std::size_t allocations = FailEachAllocation(
        [&] {
            const OwnedBlock answer(
                RunEffect(source.Handle(), made.kernel->id, made.record.data()));
            result = BytesOf(answer.Handle());
        },
        [&](bool failed) {
            blackPictures += failed && result == black ? 1 : 0;
            EXPECT_TRUE(!failed || result.empty() || result == black) << "a picture without table";
            EXPECT_TRUE(failed || !result.empty()) << "refused";
        });
    EXPECT_GT(allocations, 0u) << "nothing was allocated";
    EXPECT_EQ(blackPictures, (made.kernel->traits & kBlackWithoutTable) != 0 ? 1 : 0);
}

} // namespace

void CheckKernel(const CheckedKernel& kernel) {
    const i32 cases = kCases * (std::getenv("ZQ_LONG") != nullptr ? kLongFactor : 1);
    i32 taken = 0;
    u32 engineState = 1;
    SpoilUnfilledBlocks(true);
    for (i32 number = 0; number < cases && !testing::Test::HasFailure(); ++number) {
        const Case made = MakeCase(kernel, static_cast<u32>(number));
        const ReferenceResult whole = Compare(made, 0, engineState);
        const auto questions =
            std::count(whole.trace.begin(), whole.trace.end(), EngineProbe::kQuestion);
        for (const std::size_t n :
             QuestionsToStopAt(static_cast<std::size_t>(questions), made.seed)) {
            if (!testing::Test::HasFailure()) {
                Compare(made, n, engineState);
            }
        }
        if (!whole.block.empty()) {
            ++taken;
            if (taken % 4 == 1) {
                OnFreshThread([&] { CheckFailingAllocations(made); });
            }
        }
    }
    SpoilUnfilledBlocks(false);
    UseVectorTarget(0);
    EXPECT_TRUE(testing::Test::HasFailure() || taken * 3 > cases) << "most cases are refused";
}

void CheckKernelOn(const CheckedKernel& kernel, const std::vector<u8>& picture) {
    CheckedKernel moderate = kernel;
    if ((kernel.traits & kWindow) != 0) {
        moderate.fields[0].high = moderate.fields[0].low + 4;
    }
    for (RecordField& field : moderate.fields) {
        field.wildLow = field.low;
        field.wildHigh = field.high;
    }
    Random random(static_cast<u32>(kernel.id));
    const Case made = {&moderate, 0, MakeRecord(random, moderate), picture,
                       VectorTargets().front()};
    u32 engineState = 1;
    const ReferenceResult result = Compare(made, 0, engineState);
    const bool isColour = HeaderOf(picture).biBitCount == 24;
    EXPECT_EQ(result.block.empty(), isColour && kernel.id == 68) << "refused";
}
