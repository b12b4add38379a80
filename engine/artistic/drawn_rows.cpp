#include "engine/artistic/drawn_rows.h"

#include "engine/vector/random_draws.h"
#include "platform/base/random_state.h"

#include <algorithm>
#include <array>

namespace {

// Random numbers are below this.
constexpr i32 kNumbers = 32768;

constexpr std::size_t kPiece = 2048;

// Some of the drawn pixels.
struct Piece {
    std::array<u16, kPiece> columns;
    std::array<u16, kPiece> rows;
};

void Limit(std::array<u16, kPiece>& numbers, std::size_t count, i32 divisor) {
    if (divisor < kNumbers) {
        TakeRemainders(numbers.data(), count, static_cast<u16>(divisor));
    }
}

} // namespace

bool MeltingQuestions::AskUpTo(i64 due) {
    // Reports come in bursts of four, at the draws whose number has none of these bits.
    constexpr i64 kQuietDraws = 0x4FF;
    for (; asked_ < due; ++asked_) {
        if (!run_.GoOn()) {
            return false;
        }
        if ((asked_ & kQuietDraws) == 0) {
            ReportProgress(static_cast<i32>(asked_ * 100 / count_));
        }
    }
    return true;
}

DrawnRows::DrawnRows(const DibView& picture, i64 count)
    : width_(picture.width), height_(picture.height), count_(static_cast<std::size_t>(count)),
      columns_(static_cast<std::size_t>(std::min(picture.width, kNumbers))), ends_(columns_),
      rows_(u64{count_} + 1) {}

bool DrawnRows::Draw(MeltingQuestions& questions) {
    const auto pieces = static_cast<i64>((count_ + kPiece - 1) / kPiece);
    i64 asked = 0;
    const auto forEachPiece = [&](const auto& visit) {
        u32 state = RandomState();
        std::array<u16, 2 * kPiece> numbers;
        Piece piece;
        for (std::size_t drawn = 0; drawn < count_; drawn += kPiece) {
            if (!questions.AskForDrawing(asked++, 2 * pieces)) {
                return false;
            }
            const std::size_t count = std::min(kPiece, count_ - drawn);
            state = DrawNumbers(state, numbers.data(), 2 * count);
            for (std::size_t i = 0; i < count; ++i) {
                piece.columns[i] = numbers[2 * i];
                piece.rows[i] = numbers[2 * i + 1];
            }
            Limit(piece.columns, count, width_);
            Limit(piece.rows, count, height_);
            visit(piece, count);
        }
        return true;
    };
    std::size_t* const ends = ends_.Entries();
    if (!forEachPiece([&](const Piece& piece, std::size_t count) {
            for (std::size_t i = 0; i < count; ++i) {
                ++ends[piece.columns[i]];
            }
        })) {
        return false;
    }
    std::size_t before = 0;
    for (std::size_t x = 0; x < columns_; ++x) {
        before += std::exchange(ends[x], before);
    }
    // Each column's begin becomes its end.
    return forEachPiece([&](const Piece& piece, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            rows_[ends[piece.columns[i]]++] = piece.rows[i];
        }
    });
}
