#include "engine/neighbourhood/box_sums.h"

namespace {

constexpr u64 kSums = 256;
constexpr u64 kLargestTabled = 1 << 16;

} // namespace

RoundedMean::RoundedMean(u64 divisor)
    : divisor_(divisor), table_(divisor <= kLargestTabled ? divisor * kSums : 1) {
    if (table_ && IsTabled()) {
        for (u64 sum = 0; sum < divisor * kSums; ++sum) {
            table_[static_cast<std::size_t>(sum)] = Quotient(sum);
        }
    }
}

bool RoundedMean::IsTabled() const {
    return divisor_ <= kLargestTabled;
}

void RoundedMean::Divide(const u64* sums, std::size_t count, u8* means) const {
    if (!IsTabled()) {
        for (std::size_t i = 0; i < count; ++i) {
            means[i] = Quotient(sums[i]);
        }
        return;
    }
    const u8* table = table_.Entries();
    for (std::size_t i = 0; i < count; ++i) {
        means[i] = table[sums[i]];
    }
}

BoxSums::BoxSums(const DibView& source, i32 size)
    : size_(size), half_(size / 2), copy_(source, 1) {}

void BoxSums::Add(i64 position, u64 times) {
    const u8* samples = At(position);
    for (std::size_t i = 0; i < pitch_; ++i) {
        sums_[i] += times * samples[i];
    }
}

void BoxSums::Begin(const Line& line) {
    copy_.Load(line);
    samples_ = copy_.Samples();
    pitch_ = line.samples;
    last_ = line.count - 1;
    sums_.fill(0);
    Add(0, static_cast<u64>(half_));
    const i64 end = size_ - half_;
    const i64 inside = std::min(end, last_ + 1);
    for (i64 position = 0; position < inside; ++position) {
        Add(position, 1);
    }
    Add(last_, static_cast<u64>(end - inside));
}

void AverageLine(BoxSums& box, const RoundedMean& mean, const Line& line) {
    box.Slide(line, [&](i32 position, const u64* sums) {
        mean.Divide(sums, line.samples, line.to + static_cast<std::size_t>(position) * line.step);
    });
}
