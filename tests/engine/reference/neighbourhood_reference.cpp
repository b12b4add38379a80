#include "tests/engine/reference/reference_kernels.h"

#include <cmath>

namespace {

// The usual frame of separable kernels: rows of the source into the result, then columns of that in
// place. `row` reads the source; `column` reads what the rows gave through its last argument.
template <class RowValue, class ColumnValue>
bool TwoPasses(ReferenceRun& run, RowValue row, ColumnValue column) {
    run.CopyHead();
    for (i32 y = 0; y < run.h; ++y) {
        run.Line(y, run.h, 0, 50);
        for (i32 x = 0; x < run.w; ++x) {
            for (i32 c = 0; c < run.channels; ++c) {
                run.Put(x, y, c, row(x, y, c));
            }
        }
    }
    const std::vector<u8> between = run.result;
    const auto middle = [&](i32 x, i32 y, i32 c) -> i32 {
        return between[run.Offset(x, Clamp(y, 0, run.h - 1), c)];
    };
    for (i32 x = 0; x < run.w; ++x) {
        run.Line(x, run.w, 50, 50);
        for (i32 y = 0; y < run.h; ++y) {
            for (i32 c = 0; c < run.channels; ++c) {
                run.Put(x, y, c, column(x, y, c, middle));
            }
        }
    }
    return true;
}

// The sum over the window of `size` at `position`.
template <class Sample>
i64 WindowSum(i32 position, i32 size, Sample sample) {
    i64 sum = 0;
    for (i32 t = 0; t < size; ++t) {
        sum += sample(position - size / 2 + t, t);
    }
    return sum;
}

i64 RowBox(const ReferenceRun& run, i32 x, i32 y, i32 c, i32 size) {
    const i64 sum = WindowSum(x, size, [&](i32 at, i32) { return run.Near(at, y, c); });
    return (sum + size / 2) / size;
}

template <class Middle>
i64 ColumnSum(i32 x, i32 y, i32 c, i32 size, Middle middle) {
    return WindowSum(y, size, [&](i32 at, i32) { return middle(x, at, c); });
}

bool IsSize(i32 size) {
    return size >= 2 && size <= 32;
}

bool CentreWeighted(ReferenceRun& run, const CentreWeightedParams& params) {
    const i32 size = std::max(params.size, 2);
    if (params.centreWeight < 0 || !run.IsGreyOrColour()) {
        return false;
    }
    const i64 total = i64{size} + params.centreWeight;
    return TwoPasses(
        run, [&](i32 x, i32 y, i32 c) { return RowBox(run, x, y, c, size); },
        [&](i32 x, i32 y, i32 c, auto middle) {
            const i64 sum = ColumnSum(x, y, c, size, middle);
            return (sum + i64{run.At(x, y, c)} * params.centreWeight + total / 2) / total;
        });
}

bool Average(ReferenceRun& run, const SquareSizeParams& params) {
    return IsSize(params.size) && CentreWeighted(run, {params.size, 0});
}

std::vector<i32> GaussianWeights(i32 size) {
    constexpr i32 kOne = 1048576;
    const i32 half = size / 2;
    std::vector<double> raw;
    double sum = 0;
    for (i32 t = 0; t < size; ++t) {
        const double u = std::abs(t - half) / static_cast<double>(half);
        raw.push_back(std::pow(2.7182818, u * u * -2.0));
        sum += raw.back();
    }
    std::vector<i32> weights;
    i32 excess = -kOne;
    for (const double weight : raw) {
        weights.push_back(static_cast<i32>(weight * (1048576.0 / sum) + 0.5));
        excess += weights.back();
    }
    const i32 n = std::min(size, std::abs(excess));
    for (i32 i = 0; i < n; ++i) {
        weights[static_cast<std::size_t>((size - n) / 2 + i)] -= excess > 0 ? 1 : -1;
    }
    return weights;
}

bool Gaussian(ReferenceRun& run, const SquareSizeParams& params) {
    if (!IsSize(params.size) || !run.IsGreyOrColour()) {
        return false;
    }
    const std::vector<i32> weights = GaussianWeights(params.size);
    const auto blur = [&](i32 position, auto sample) {
        return (524288 + WindowSum(position, params.size,
                                   [&](i32 at, i32 t) {
                                       return sample(at) * weights[static_cast<std::size_t>(t)];
                                   })) >>
               20;
    };
    return TwoPasses(
        run,
        [&](i32 x, i32 y, i32 c) { return blur(x, [&](i32 at) { return run.Near(at, y, c); }); },
        [&](i32 x, i32 y, i32 c, auto middle) {
            return blur(y, [&](i32 at) { return middle(x, at, c); });
        });
}

bool UnsharpMask(ReferenceRun& run, const UnsharpMaskParams& params) {
    if (!IsSize(params.size) || params.effect < 1 || params.effect > 500 || params.threshold < 0 ||
        params.threshold > 255 || !run.IsGreyOrColour()) {
        return false;
    }
    const auto gain = [&](i64 k) {
        return k < params.threshold ? 0 : (50 + k * params.effect) / 100;
    };
    return TwoPasses(
        run, [&](i32 x, i32 y, i32 c) { return RowBox(run, x, y, c, params.size); },
        [&](i32 x, i32 y, i32 c, auto middle) {
            const i64 sum = ColumnSum(x, y, c, params.size, middle);
            const i64 d = run.At(x, y, c) - (sum + params.size / 2) / params.size;
            return ClampByte(run.At(x, y, c) + (d >= 0 ? gain(d) : -gain(-d - 1)));
        });
}

bool Rank(ReferenceRun& run, const RankFilterParams& params) {
    if (!IsSize(params.size) || !run.IsGreyOrColour()) {
        return false;
    }
    // The end samples that repeat outside the line change no extreme.
    const auto extreme = [&](i32 position, auto sample) {
        i32 found = sample(position);
        WindowSum(position, params.size, [&](i32 at, i32) {
            found =
                params.takeMaximum != 0 ? std::max(found, sample(at)) : std::min(found, sample(at));
            return 0;
        });
        return found;
    };
    return TwoPasses(
        run,
        [&](i32 x, i32 y, i32 c) { return extreme(x, [&](i32 at) { return run.Near(at, y, c); }); },
        [&](i32 x, i32 y, i32 c, auto middle) {
            return extreme(y, [&](i32 at) { return middle(x, at, c); });
        });
}

bool Median(ReferenceRun& run, const SquareSizeParams& params) {
    if (!IsSize(params.size) || !run.IsGreyOrColour()) {
        return false;
    }
    const i32 size = params.size;
    run.CopyHead();
    std::array<i32, 3> medians{}; // walks along a row
    run.EachSample([&](i32 x, i32 y, i32 c) {
        std::array<i32, 256> counts{};
        for (i32 i = 0; i < size * size; ++i) {
            ++counts[static_cast<std::size_t>(
                run.Near(x - size / 2 + i % size, y - size / 2 + i / size, c))];
        }
        i32& m = medians[static_cast<std::size_t>(c)];
        const auto count = [&](i32 tone) { return counts[static_cast<std::size_t>(tone)]; };
        i32 balance = -(size * size + 1) / 2;
        if (x == 0) {
            for (m = 0; (balance += count(m)) < 0; ++m) {
            }
            return m;
        }
        for (i32 tone = 0; tone <= m; ++tone) {
            balance += count(tone);
        }
        const bool wasAbove = balance > 0;
        while (balance > 0) {
            balance -= count(m--);
        }
        if (wasAbove && balance < 0) {
            balance += count(++m);
        }
        while (!wasAbove && balance < 0) {
            balance += count(++m);
        }
        return m;
    });
    return true;
}

bool EdgeKeepingSmooth(ReferenceRun& run, const NoParams&) {
    if (!run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    run.EachSample([&](i32 x, i32 y, i32 c) {
        i32 s[3][3], sum = 0;
        for (i32 i = 0; i < 9; ++i) {
            sum += s[i / 3][i % 3] = run.Near(x + i % 3 - 1, y + i / 3 - 1, c);
        }
        const i32 gy = 2 * (s[2][1] - s[0][1]) + s[2][0] + s[2][2] - s[0][0] - s[0][2];
        const i32 gx = 2 * (s[1][2] - s[1][0]) + s[0][2] + s[2][2] - s[0][0] - s[2][0];
        return std::abs(gx) + std::abs(gy) < 128 ? (sum + 4) / 9 : s[1][1];
    });
    return true;
}

bool LineSharpen(ReferenceRun& run, const LineSharpenParams& params) {
    if (!run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    const i32 dx = params.axis == 0 ? 1 : 0, dy = 1 - dx;
    run.EachSample([&](i32 x, i32 y, i32 c) {
        const i32 t =
            4 * run.At(x, y, c) - run.Near(x - dx, y - dy, c) - run.Near(x + dx, y + dy, c);
        return t <= 0 ? 0 : std::min(t / 2, 255);
    });
    return true;
}

bool FindContour(ReferenceRun& run, const FindContourParams& params) {
    if (params.mode == 0 || params.channel < 0 || params.channel > 3 || params.threshold < 1 ||
        params.threshold > 254 || !run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    for (i32 y = 1; y < run.h - 1; ++y) {
        run.Line(y, run.h);
        for (i32 x = 1; x < run.w - 1; ++x) {
            for (i32 c = 0; c < run.channels; ++c) {
                const auto above = [&](i32 atX, i32 atY) {
                    return run.At(atX, atY, c) > params.threshold;
                };
                const bool traced =
                    run.channels == 1 || params.channel == 0 || c == 3 - params.channel;
                const bool inside =
                    above(x - 1, y) && above(x + 1, y) && above(x, y + 1) && above(x, y - 1);
                run.Put(x, y, c, traced && above(x, y) && !inside ? 255 : 0);
            }
        }
    }
    return true;
}

bool UserFilter(ReferenceRun& run, const UserFilterParams& params) {
    if (params.scale == 0 || !run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    run.EachSample([&](i32 x, i32 y, i32 c) {
        u32 wrapped = 0;
        for (i32 k = 0; k < 25; ++k) {
            const double p = run.Near(x + k % 5 - 2, y + 2 - k / 5, c);
            wrapped += static_cast<u32>(
                static_cast<i64>(p * 262144.0 * params.cells[k] / params.scale + 0.5));
        }
        const u32 rounded = static_cast<i32>(wrapped) >= 0
                                ? static_cast<u32>(static_cast<i32>(wrapped + 131072) >> 18)
                                : 0 - static_cast<u32>(static_cast<i32>(131072 - wrapped) >> 18);
        return ClampByte(static_cast<i32>(rounded + static_cast<u32>(params.bias)));
    });
    return true;
}

bool EdgeFade(ReferenceRun& run, const EdgeFadeParams& params) {
    if (params.radius < 1 || params.radius > 128 || !run.IsByteOrColour() || run.channels == 3) {
        return false;
    }
    std::copy_n(run.block.begin(), run.head, run.result.begin());
    const i32 radius = static_cast<i32>(params.radius);
    for (i32 y = 0; y < run.h; ++y) {
        for (i32 x = 0; x < run.w; ++x) {
            i32 least = run.At(x, y, 0) == 0 ? 0 : 255;
            for (i32 direction = 0; direction < 9; ++direction) {
                const i32 dx = direction % 3 - 1, dy = direction / 3 - 1;
                i32 sum = 0;
                for (i32 k = 0; k <= radius; ++k) {
                    const i32 atX = x + k * dx, atY = y + k * dy;
                    const bool inside = atX >= 0 && atX < run.w && atY >= 0 && atY < run.h;
                    sum += inside ? run.At(atX, atY, 0) : 0;
                }
                least = direction == 4 ? least : std::min(least, sum / (radius + 1));
            }
            run.Put(x, y, 0, least);
        }
    }
    return true;
}

constexpr ReferenceRow kRows[] = {
    {8, With<Average>},
    {9, With<CentreWeighted>},
    {16, With<EdgeKeepingSmooth>},
    {17, With<Gaussian>},
    {18, With<UnsharpMask>},
    {19, With<LineSharpen>},
    {20, With<Rank>},
    {21, With<Median>},
    {22, With<FindContour>},
    {25, With<UserFilter>},
    {68, With<EdgeFade>, true, false},
};

} // namespace

const std::span<const ReferenceRow> kNeighbourhoodReferences = kRows;
