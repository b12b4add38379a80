#include "tests/engine/reference/reference_kernels.h"

namespace {

bool Grid3D(ReferenceRun& run, const Grid3DParams& params) {
    if (params.size < 1 || params.size > 3 || params.height < 0 || params.height > 2 ||
        params.shape < 0 || params.shape > 1 || !run.IsGreyOrColour()) {
        return false;
    }
    const i32 mask = params.size == 3 ? 63 : params.size == 1 ? 31 : 15;
    const i32 bevel = 92 - 32 * params.height;
    const bool irregular = params.shape == 1;
    const auto step = [&] {
        const i32 r = run.Draw() & 3;
        return r == 1 ? 1 : r == 2 ? -1 : 0;
    };
    std::vector<i32> columnDrifts;
    for (i32 x = 0, walk = 0; x < run.w && irregular; ++x) {
        columnDrifts.push_back(walk += step());
    }
    run.CopyHead();
    i32 rowDrift = 0;
    run.EachPixel([&](i32 x, i32 y) {
        rowDrift += irregular && x == 0 ? step() : 0;
        const i32 a = (irregular ? rowDrift + x : y) & mask;
        const i32 b = (irregular ? columnDrifts[static_cast<std::size_t>(x)] + y : x) & mask;
        const bool groove = a == 0 || a == mask || b == 0 || b == mask;
        const i32 delta = groove          ? 0
                          : a == 1        ? -bevel
                          : a == mask - 1 ? bevel
                          : b == 1        ? bevel
                          : b == mask - 1 ? -bevel
                                          : 0;
        for (i32 c = 0; c < run.channels; ++c) {
            run.Put(x, y, c, ClampByte(run.At(x, y, c) + delta));
        }
    });
    return true;
}

bool Mosaic(ReferenceRun& run, const MosaicParams& params) {
    if (params.width < 1 || params.height < 1 || !run.IsGreyOrColour()) {
        return false;
    }
    run.CopyHead();
    const i32 blockW = std::min(params.width, run.w), blockH = std::min(params.height, run.h);
    for (i32 y = 0; y < run.h; ++y) {
        if (y % blockH == 0) {
            run.Line(y, run.h);
        }
        for (i32 x = 0; x < run.w; ++x) {
            const i32 x0 = x - x % blockW, x1 = std::min(x0 + blockW, run.w);
            const i32 y0 = y - y % blockH, y1 = std::min(y0 + blockH, run.h);
            for (i32 c = 0; c < run.channels; ++c) {
                i32 sum = 0;
                for (i32 at = y0; at < y1 && x == x0 && y == y0; ++at) {
                    for (i32 column = x0; column < x1; ++column) {
                        sum += run.At(column, at, c);
                    }
                }
                run.Put(x, y, c,
                        x == x0 && y == y0 ? sum / ((x1 - x0) * (y1 - y0)) : run.Out(x0, y0, c));
            }
        }
    }
    return true;
}

// By direction, 1 top left to 8 bottom right.
constexpr i32 kBlurSteps[8][2] = {{1, -1}, {0, -1}, {-1, -1}, {1, 0},
                                  {-1, 0}, {1, 1},  {0, 1},   {-1, 1}};

bool MotionBlur(ReferenceRun& run, const MotionBlurParams& params) {
    if (params.direction < 1 || params.direction > 8 || params.speed < 2 || params.speed > 32 ||
        !run.IsGreyOrColour()) {
        return false;
    }
    const i32 n = std::min({params.speed, run.w, run.h});
    const auto [dx, dy] = kBlurSteps[params.direction - 1];
    const bool diagonal = dx != 0 && dy != 0;
    run.CopyHead();
    const i32 lines = dx == 0 ? run.w : run.h;
    for (i32 line = 0; line < lines; ++line) {
        if (diagonal && line >= run.h - n) {
            run.Ask();
        } else {
            run.Line(line, lines);
        }
    }
    for (i32 y = 0; y < run.h; ++y) {
        for (i32 x = 0; x < run.w; ++x) {
            for (i32 c = 0; c < run.channels; ++c) {
                i32 sum = run.At(x, y, c), count = 1;
                for (i32 k = 1; k < n; ++k) {
                    const i32 atX = x + k * dx, atY = y + k * dy;
                    const bool inside = atX >= 0 && atX < run.w && atY >= 0 && atY < run.h;
                    if (inside || !diagonal) {
                        sum += run.Near(atX, atY, c);
                        ++count;
                    }
                }
                run.Put(x, y, c, sum / count);
            }
        }
    }
    return true;
}

// By direction: the step in units of the reach, and the sign.
constexpr i32 kEmbossSteps[8][3] = {{-1, 1, -1}, {0, 1, -1}, {1, 1, -1}, {1, 0, 1},
                                    {1, 0, -1},  {1, 1, 1},  {0, 1, 1},  {-1, 1, 1}};

bool Emboss(ReferenceRun& run, const EmbossParams& params) {
    if (params.direction < 1 || params.direction > 8 || params.mode < 1 || params.mode > 4 ||
        params.depth < 1 || params.depth > 10 || !run.IsGreyOrColour()) {
        return false;
    }
    const i32 reach = std::min({params.depth, run.w / 2, run.h / 2});
    const auto [stepX, stepY, sign] = kEmbossSteps[params.direction - 1];
    run.CopyHead();
    for (i32 y = 0; y < run.h; ++y) {
        if (y < reach || y >= run.h - reach) {
            run.Ask();
        } else {
            run.Line(y, run.h);
        }
        for (i32 x = 0; x < run.w; ++x) {
            const bool border = x < reach || x >= run.w - reach || y < reach || y >= run.h - reach;
            Pixel relief{};
            for (i32 c = 0; c < run.channels && !border; ++c) {
                const i32 other = params.mode == 1 ? run.At(x - stepX * reach, y - stepY * reach, c)
                                                   : run.At(x, y, c);
                relief[static_cast<std::size_t>(c)] =
                    sign * (run.At(x + stepX * reach, y + stepY * reach, c) - other);
            }
            const i32 mean = (relief[0] + relief[1] + relief[2]) / run.channels;
            for (i32 c = 0; c < run.channels; ++c) {
                const i32 back = params.backColor >> 8 * (run.channels - 1 - c) & 255;
                const i32 ground = params.mode == 1   ? run.At(x, y, c)
                                   : params.mode == 4 ? back
                                                      : 128;
                const bool grey = params.mode == 1 || params.mode == 3;
                run.Put(x, y, c,
                        ClampByte(ground + (grey ? mean : relief[static_cast<std::size_t>(c)])));
            }
        }
    }
    return true;
}

constexpr ReferenceRow kRows[] = {
    {51, With<Grid3D>},
    {52, With<Mosaic>},
    {53, With<MotionBlur>},
    {54, With<Emboss>},
};

} // namespace

const std::span<const ReferenceRow> kReliefReferences = kRows;
