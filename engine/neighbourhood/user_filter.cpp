// A convolution with any 5 x 5 matrix, in fixed point with 18 bits of fraction. Beyond the edges
// the edge pixels repeat. Everything is counted in 32 bits and wraps around when the cells are very
// large against the scale.
//
// The products are rounded one by one, so the sum is some units off the exact one. That shows only
// where the exact quotient by the scale lies halfway between two tones: everywhere else it is taken
// from the exact sum, a row at a time, and only there the rounded products are added up. (With a
// power of 2 as scale products are exact, but for negative ones, which are 1 too large; so that all
// halves are rounded up.)
#include "engine/neighbourhood/extended_rows.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"
#include "engine/vector/quotient_rows.h"

#include <bit>
#include <cstdlib>

namespace {

constexpr i32 kSide = 5;
constexpr i32 kCells = kSide * kSide;
constexpr i32 kReach = kSide / 2;
constexpr i32 kFractionBits = 18;

using TapTable = std::array<u32, 256>;

// The half that is added before truncation rounds negative products the wrong way; that is meant.
TapTable ProductsOf(i32 cell, i32 scale) {
    TapTable products;
    for (i32 tone = 0; tone < 256; ++tone) {
        const double unit = tone * static_cast<double>(1 << kFractionBits);
        const double product = unit * cell / scale + 0.5;
        products[static_cast<std::size_t>(tone)] = static_cast<u32>(static_cast<i64>(product));
    }
    return products;
}

// A cell that is not 0, with the row and the column of the matrix it stands in. The matrix is
// written from the top, rows are stored from the bottom: its top row meets the highest y.
struct Tap {
    i32 rowsUp; // -2 to 2
    std::size_t column;
    i32 cell;
    TapTable products;
};

struct Matrix {
    std::array<Tap, kCells> taps;
    std::size_t count = 0;

    explicit Matrix(const UserFilterParams& params) {
        for (i32 cell = 0; cell < kCells; ++cell) {
            if (params.cells[cell] != 0) {
                taps[count++] = {kReach - cell / kSide, static_cast<std::size_t>(cell % kSide),
                                 params.cells[cell], ProductsOf(params.cells[cell], params.scale)};
            }
        }
    }
};

u8 ToneOf(u32 sum, u32 bias) {
    constexpr u32 kHalf = 1u << (kFractionBits - 1);
    const bool negative = static_cast<i32>(sum) < 0;
    const u32 magnitude = negative ? kHalf - sum : kHalf + sum;
    const u32 rounded = static_cast<u32>(static_cast<i32>(magnitude) >> kFractionBits);
    const auto tone = static_cast<i32>((negative ? 0u - rounded : rounded) + bias);
    return static_cast<u8>(std::clamp(tone, 0, 255));
}

using Neighbours = std::array<const u8*, kCells>;

u8 ToneAt(const Matrix& matrix, const Neighbours& neighbours, std::size_t i, i32 bias) {
    u32 sum = 0;
    for (std::size_t tap = 0; tap < matrix.count; ++tap) {
        sum += matrix.taps[tap].products[neighbours[tap][i]];
    }
    return ToneOf(sum, static_cast<u32>(bias));
}

// The exact quotient, rounded to nearest and halves up, as (2 * sum + (2 * bias + 1) * scale) /
// (2 * scale). False when it might be wrong even between the halves: a rounded product is at most
// 1.5 off and all of them 37.5, while the least distance from a half, 2^18 / (2 * scale), must be
// larger; and no sum may wrap around.
bool MakeQuotient(const Matrix& matrix, const UserFilterParams& params, QuotientWeights& quotient) {
    constexpr i32 kLargestScale = QuotientWeights::kLargestDivisor / 2;
    constexpr i32 kLargestBias = 1 << 15;
    constexpr i64 kLargestQuotient = (i64{1} << (31 - kFractionBits)) - 2;
    const i64 scale = std::abs(i64{params.scale});
    if (scale > kLargestScale || std::abs(i64{params.bias}) > kLargestBias) {
        return false;
    }
    i64 largestSum = 0;
    for (std::size_t tap = 0; tap < matrix.count; ++tap) {
        const i64 weight = 2 * i64{matrix.taps[tap].cell} * (params.scale < 0 ? -1 : 1);
        if (std::abs(weight) > QuotientWeights::kLargestWeight) {
            return false;
        }
        largestSum += std::abs(weight) / 2 * 255;
        quotient.values[quotient.count++] = static_cast<i32>(weight);
    }
    quotient.offset = static_cast<i32>((2 * i64{params.bias} + 1) * scale);
    quotient.divisor = static_cast<i32>(2 * scale);
    return matrix.count != 0 && largestSum <= kLargestQuotient * scale;
}

// Rows of tones.
class RowFilter {
public:
    RowFilter(const DibView& source, const Matrix& matrix, const UserFilterParams& params)
        : matrix_(matrix), bias_(params.bias), pixel_(PixelBytes(source)), count_(source.rowBytes),
          rows_(source, kReach), halves_(1, count_),
          hasQuotient_(MakeQuotient(matrix, params, quotient_)),
          halvesGoUp_(std::has_single_bit(static_cast<u32>(quotient_.divisor))) {}

    // False when memory was short.
    explicit operator bool() const { return rows_ && halves_; }

    // To be called for each row in turn.
    void Filter(i64 y, u8* to) {
        rows_.MoveTo(y);
        Neighbours neighbours;
        for (std::size_t tap = 0; tap < matrix_.count; ++tap) {
            neighbours[tap] =
                rows_.Row(y + matrix_.taps[tap].rowsUp) + matrix_.taps[tap].column * pixel_;
        }
        u8* halves = halves_.Row(0);
        if (!hasQuotient_) {
            std::memset(halves, 1, count_);
        } else if (!DivideRows(neighbours.data(), quotient_, to, halves, count_) || halvesGoUp_) {
            return;
        }
        for (std::size_t i = 0; i < count_; ++i) {
            if (halves[i] != 0) {
                to[i] = ToneAt(matrix_, neighbours, i, bias_);
            }
        }
    }

private:
    const Matrix& matrix_;
    const i32 bias_;
    const std::size_t pixel_;
    const std::size_t count_;
    ExtendedRows rows_;
    const RowTable<u8> halves_;
    QuotientWeights quotient_;
    const bool hasQuotient_;
    const bool halvesGoUp_;
};

} // namespace

DibHandle UserFilter(DibHandle source, const UserFilterParams& params) {
    if (params.scale == 0) {
        return 0;
    }
    const Matrix matrix(params);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        RowFilter filter(run.source, matrix, params);
        if (!filter) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) { filter.Filter(y, to); });
    });
}
