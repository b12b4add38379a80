// Moves pixels by a curve from the editor: along the rows, along the columns, along the rays from
// the centre, or around it. Pixels are only moved, so 8-bit pictures may have any palette.
#include "engine/distortion/distortion_kernels.h"
#include "engine/distortion/elliptical_warp.h"
#include "engine/pixel.h"
#include "engine/vector/row_map.h"

#include <cmath>

namespace {

enum Mapping : i32 { kHorizontal = 0, kVertical = 1, kRadial = 2, kAngular = 3 };

// The curve between its 256 points.
double CurveAt(const u8* curve, double u) {
    const i32 i = static_cast<i32>(u);
    const double left = (i + 1 - u) * curve[i];
    return i >= 255 ? left : left + (u - i) * curve[i + 1];
}

// Calls `set(k, from)` for each column or row with the one that it comes from. The steps along the
// curve are summed up, not multiplied, and their small errors with them. An axis of one pixel
// counts as two.
template <class Set>
void MapAxis(i32 extent, const u8* curve, const Set& set) {
    const i32 count = std::max(extent, 2);
    const double step = 255.0 / (count - 1);
    const double scale = (count - 1) * 0.00392156862745098;
    double u = 0.0;
    for (i32 k = 0; k < extent; ++k) {
        const i32 from = static_cast<i32>(CurveAt(curve, u) * scale + 0.5);
        set(k, std::min(from, extent - 1));
        u += step;
    }
}

WorkEnd MirrorColumns(const KernelRun& run, const u8* curve) {
    const RowMap columns(run.source.width, PixelBytes(run.source));
    if (!columns) {
        return WorkEnd::NoMemory;
    }
    MapAxis(run.source.width, curve, [&](i32 x, i32 from) { columns.Set(x, from); });
    columns.Finish();
    run.CopyHead();
    return run.ForEachRow([&](const u8* from, u8* to) { columns.Fetch(from, to); },
                          RowRhythm::Rare);
}

WorkEnd MirrorRows(const KernelRun& run, const u8* curve) {
    const DibView& source = run.source;
    const BlockTable<i32> rows(static_cast<u64>(source.height));
    if (!rows) {
        return WorkEnd::NoMemory;
    }
    MapAxis(source.height, curve,
            [&](i32 y, i32 from) { rows[static_cast<std::size_t>(y)] = from; });
    run.CopyHead();
    return run.ForEachRow(
        [&](const u8*, u8* to, i32 y) {
            std::memcpy(to, source.Row(rows[static_cast<std::size_t>(y)]), source.rowBytes);
        },
        RowRhythm::Rare);
}

constexpr double kCurveStep = 0.498046875; // 255 / 512

// A curve below the identity takes pixels from farther out and shrinks the picture there, one
// above it swells it.
TurnTable RadialTurns(const u8* curve) {
    TurnTable table{};
    for (std::size_t ring = 1; ring < table.size(); ++ring) {
        const double u = static_cast<double>(ring) * kCurveStep;
        const double drop = u - CurveAt(curve, u);
        const double change = drop * 0.01;
        const double factor = drop >= 0.0 ? 1.0 + change : 1.0 / (1.0 - change);
        table[ring].cos = static_cast<i32>(factor * kTurnUnit);
    }
    return table;
}

TurnTable AngularTurns(const u8* curve) {
    TurnTable table;
    for (std::size_t ring = 0; ring < table.size(); ++ring) {
        const double u = static_cast<double>(ring) * kCurveStep;
        const double angle = (u - CurveAt(curve, u)) * 0.031415926500000003;
        table[ring] = {static_cast<i32>(std::cos(angle) * kTurnUnit),
                       static_cast<i32>(std::sin(angle) * kTurnUnit)};
    }
    return table;
}

WorkEnd Mirror(const KernelRun& run, Mapping mapping, const u8* curve) {
    switch (mapping) {
    case kHorizontal:
        return MirrorColumns(run, curve);
    case kVertical:
        return MirrorRows(run, curve);
    case kRadial:
        return WarpEllipse(run, RadialTurns(curve), RowRhythm::Rare);
    default:
        return WarpEllipse(run, AngularTurns(curve), RowRhythm::Rare);
    }
}

} // namespace

DibHandle MagicMirror(DibHandle source, const MagicMirrorParams& params) {
    if (params.mapping < kHorizontal || params.mapping > kAngular) {
        return 0;
    }
    return RunKernel(source, Depths::AnyByteOrColour, [&](const KernelRun& run) {
        return Mirror(run, static_cast<Mapping>(params.mapping), params.curve);
    });
}
