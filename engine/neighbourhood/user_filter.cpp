// A convolution with any 5 x 5 matrix, in fixed point with 18 bits of fraction. Beyond the edges
// the edge pixels repeat. Everything is counted in 32 bits and wraps around when the cells are very
// large against the scale.
#include "engine/neighbourhood/extended_line.h"
#include "engine/neighbourhood/neighbourhood_kernels.h"

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
    TapTable products;
};

struct Matrix {
    std::array<Tap, kCells> taps;
    std::size_t count = 0;

    explicit Matrix(const UserFilterParams& params) {
        for (i32 cell = 0; cell < kCells; ++cell) {
            if (params.cells[cell] != 0) {
                taps[count++] = {kReach - cell / kSide, static_cast<std::size_t>(cell % kSide),
                                 ProductsOf(params.cells[cell], params.scale)};
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

// The five source rows around one, each with its ends repeated.
class RowRing {
public:
    explicit RowRing(const DibView& source)
        : source_(source), pixel_(PixelBytes(source)),
          rowBytes_(source.rowBytes + (kSide - 1) * pixel_), rows_(u64{rowBytes_} * kSide) {}

    // False when memory was short.
    explicit operator bool() const { return static_cast<bool>(rows_); }

    // Makes the rows up to y + 2 ready; to be called for each y in turn.
    void MoveTo(i64 y) {
        for (; next_ < source_.height && next_ <= y + kReach; ++next_) {
            const Line row{source_.Row(static_cast<i32>(next_)), nullptr, pixel_, pixel_,
                           source_.width};
            CopyExtended(row, kSide, Slot(next_));
        }
    }

    const u8* Row(i64 y) const { return Slot(std::clamp<i64>(y, 0, source_.height - 1)); }

private:
    u8* Slot(i64 y) const {
        return rows_.Entries() + static_cast<std::size_t>(y % kSide) * rowBytes_;
    }

    const DibView& source_;
    const std::size_t pixel_;
    const std::size_t rowBytes_;
    const BlockTable<u8> rows_;
    i64 next_ = 0;
};

void FilterRow(const Matrix& matrix, const RowRing& rows, i64 y, std::size_t pixel, u8* to,
               std::size_t count, i32 bias) {
    std::array<const u8*, kCells> neighbours;
    for (std::size_t tap = 0; tap < matrix.count; ++tap) {
        neighbours[tap] = rows.Row(y + matrix.taps[tap].rowsUp) + matrix.taps[tap].column * pixel;
    }
    for (std::size_t i = 0; i < count; ++i) {
        u32 sum = 0;
        for (std::size_t tap = 0; tap < matrix.count; ++tap) {
            sum += matrix.taps[tap].products[neighbours[tap][i]];
        }
        to[i] = ToneOf(sum, static_cast<u32>(bias));
    }
}

} // namespace

DibHandle UserFilter(DibHandle source, const UserFilterParams& params) {
    if (params.scale == 0) {
        return 0;
    }
    const Matrix matrix(params);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        RowRing rows(run.source);
        if (!rows) {
            return WorkEnd::NoMemory;
        }
        run.CopyHead();
        return run.ForEachRow([&](const u8*, u8* to, i32 y) {
            rows.MoveTo(y);
            FilterRow(matrix, rows, y, PixelBytes(run.source), to, run.source.rowBytes,
                      params.bias);
        });
    });
}
