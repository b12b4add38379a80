#include "engine/vector/folded_weights.h"

#include <algorithm>
#include <cstdlib>

namespace {

struct Term {
    i32 weight;
    u8 first, second; // the same for a term of one tap
};

struct Terms {
    std::array<Term, RowWeights::kMost> all{};
    std::size_t count = 0;

    void Add(i32 weight, std::size_t first, std::size_t second) {
        if (weight != 0) {
            all[count++] = {weight, static_cast<u8>(first), static_cast<u8>(second)};
        }
    }
};

// The taps at both sides of the middle have what the lighter one weighs in common.
Terms TermsOf(const RowWeights& weights) {
    const std::size_t middle = weights.count / 2;
    Terms terms;
    terms.Add(weights.values[middle], middle, middle);
    for (std::size_t lower = 0; lower < middle; ++lower) {
        const std::size_t upper = 2 * middle - lower;
        const i32 below = weights.values[lower];
        const i32 above = upper < weights.count ? weights.values[upper] : 0;
        const std::size_t heavier = below > above ? lower : upper;
        terms.Add(std::min(below, above), lower, upper);
        terms.Add(std::abs(below - above), heavier, heavier);
    }
    return terms;
}

TermPair PairOf(const Term& first, const Term& second) {
    constexpr i32 kLow = (1 << FoldedWeights::kDigitBits) - 1;
    const auto both = [](const Term& term) -> u8 { return term.first == term.second ? 0 : 1; };
    return {{first.first, first.second, second.first, second.second},
            {1, both(first), 1, both(second)},
            (first.weight & kLow) | (second.weight & kLow) << 16,
            first.weight >> FoldedWeights::kDigitBits | second.weight >> FoldedWeights::kDigitBits
                                                                             << 16};
}

} // namespace

FoldedWeights::FoldedWeights(const RowWeights& weights)
    : unfolded(weights), pairs{}, count(0), twoDigits(0) {
    Terms terms = TermsOf(weights);
    std::sort(terms.all.begin(), terms.all.begin() + terms.count,
              [](const Term& a, const Term& b) { return a.weight > b.weight; });
    for (std::size_t i = 0; i < terms.count; i += 2) {
        const TermPair pair = PairOf(terms.all[i], terms.all[i + 1]);
        twoDigits += pair.high != 0 ? 1 : 0;
        pairs[count++] = pair;
    }
}
