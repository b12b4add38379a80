// Lays a grid over the picture whose cells look like raised tiles: the pixels one step in from each
// grid line are lightened or darkened. In the irregular shape the lines wander.
#include "engine/pixel.h"
#include "engine/relief/relief_kernels.h"

namespace {

constexpr std::size_t kLargestCell = 64;

// The change of brightness by the two places in the cell.
class Bevels {
public:
    Bevels(u32 cellMask, i32 bevel) : cellMask_(cellMask) {
        for (u32 a = 0; a <= cellMask; ++a) {
            for (u32 b = 0; b <= cellMask; ++b) {
                changes_[a][b] = static_cast<i16>(ChangeAt(a, b, bevel));
            }
        }
    }

    // Places run on from cell to cell; negative ones are given wrapped.
    i32 At(u32 a, u32 b) const { return changes_[a & cellMask_][b & cellMask_]; }

private:
    i32 ChangeAt(u32 a, u32 b, i32 bevel) const {
        const auto isGroove = [&](u32 place) { return place == 0 || place == cellMask_; };
        if (isGroove(a) || isGroove(b)) {
            return 0;
        }
        if (a == 1) {
            return -bevel;
        }
        if (a == cellMask_ - 1) {
            return bevel;
        }
        if (b == 1) {
            return bevel;
        }
        return b == cellMask_ - 1 ? -bevel : 0;
    }

    const u32 cellMask_;
    std::array<std::array<i16, kLargestCell>, kLargestCell> changes_{};
};

void RandomStep(i32& walk) {
    switch (EngineRandom() & 3) {
    case 1:
        ++walk;
        break;
    case 2:
        --walk;
        break;
    default:
        break;
    }
}

template <class ChangeOf>
void BevelRow(const DibView& source, const u8* from, u8* to, const ChangeOf& changeOf) {
    WithPixelBytes(source, [&](auto bytes) {
        for (i32 x = 0; x < source.width; ++x, from += bytes, to += bytes) {
            const i32 change = changeOf(static_cast<u32>(x));
            for (std::size_t channel = 0; channel < bytes; ++channel) {
                to[channel] = ClampToByte(from[channel] + change);
            }
        }
    });
}

WorkEnd DrawRegular(const KernelRun& run, const Bevels& bevels) {
    run.CopyHead();
    return run.ForEachRow([&](const u8* from, u8* to, i32 y) {
        BevelRow(run.source, from, to, [&](u32 x) { return bevels.At(static_cast<u32>(y), x); });
    });
}

// The two places change roles here, and with them the sides that the light falls on.
WorkEnd DrawIrregular(const KernelRun& run, const Bevels& bevels) {
    const auto width = static_cast<std::size_t>(run.source.width);
    const BlockTable<i32> columnDrift(width);
    if (!columnDrift) {
        return WorkEnd::NoMemory;
    }
    i32 walk = 0;
    for (std::size_t x = 0; x < width; ++x) {
        RandomStep(walk);
        columnDrift[x] = walk;
    }
    run.CopyHead();
    i32 rowDrift = 0;
    return run.ForEachRow([&](const u8* from, u8* to, i32 y) {
        RandomStep(rowDrift);
        BevelRow(run.source, from, to, [&](u32 x) {
            return bevels.At(static_cast<u32>(rowDrift) + x,
                             static_cast<u32>(columnDrift[x]) + static_cast<u32>(y));
        });
    });
}

} // namespace

DibHandle Grid3D(DibHandle source, const Grid3DParams& params) {
    if (params.size < 1 || params.size > 3 || params.height < 0 || params.height > 2 ||
        params.shape < 0 || params.shape > 1) {
        return 0;
    }
    const u32 cellMask = params.size == 3 ? 63 : (params.size == 1 ? 31 : 15);
    const Bevels bevels(cellMask, 92 - 32 * params.height);
    return RunKernel(source, Depths::GreyOrColour, [&](const KernelRun& run) {
        return params.shape == 0 ? DrawRegular(run, bevels) : DrawIrregular(run, bevels);
    });
}
