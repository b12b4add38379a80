#include "bench/compare_rows.h"

#include "bench/opencv_operations.h"
#include "tools/effect_table.h"

#include <array>
#include <cstring>

namespace {

template <class Params>
std::vector<u8> Record(const Params& params) {
    std::vector<u8> record(sizeof params);
    std::memcpy(record.data(), &params, sizeof params);
    return record;
}

std::vector<u8> Defaults(EffectId id) {
    const EffectDescription& effect = *FindEffect(id);
    const auto* bytes = static_cast<const u8*>(effect.defaults);
    return bytes == nullptr ? std::vector<u8>()
                            : std::vector<u8>(bytes, bytes + effect.recordBytes);
}

class Rows {
public:
    // `choice` is what the record differs in from the defaults.
    void Add(EffectId id, const std::string& choice, const std::vector<u8>& record, double goal,
             const std::string& openCvName, const OpenCvOperation& openCv) {
        const std::string title = FindEffect(id)->title;
        rows.push_back({choice.empty() ? title : std::string(title).append(", ").append(choice), id,
                        record, goal, openCvName, openCv});
    }
    void Add(EffectId id, double goal, const std::string& openCvName,
             const OpenCvOperation& openCv) {
        Add(id, "", Defaults(id), goal, openCvName, openCv);
    }

    std::vector<CompareRow> rows;
};

std::string SizeText(i32 size) {
    return std::string("size ").append(std::to_string(size));
}

void AddToneMaps(Rows& rows) {
    constexpr double kOneTable = 0.65;
    constexpr double kThreeTables = 0.5;
    const char* const name = "`LUT`";
    const char* const nameOfThree = "`LUT` with three tables";
    const ToneAdjustmentParams levels{20, 10, -15, ZQ_CHANNEL_RGB};
    rows.Add(1, kOneTable, name, OneTable());
    rows.Add(1, "red", Record(BrightnessContrastParams{ZQ_CHANNEL_RED, 30, 20}), kThreeTables,
             nameOfThree, ThreeTables());
    rows.Add(3, kOneTable, name, OneTable());
    ToneTableParams table;
    std::memcpy(&table, Defaults(3).data(), sizeof table);
    table.channel = ZQ_CHANNEL_GREEN;
    rows.Add(3, "green", Record(table), kThreeTables, nameOfThree, ThreeTables());
    rows.Add(4, kOneTable, name, OneTable());
    rows.Add(4, "blue", Record(ColorReductionParams{ZQ_CHANNEL_BLUE, 8}), kThreeTables, nameOfThree,
             ThreeTables());
    rows.Add(23, kOneTable, name, OneTable());
    rows.Add(24, kOneTable, name, OneTable());
    rows.Add(67, "", Record(levels), kOneTable, name, OneTable());
    rows.Add(67, "red", Record(ToneAdjustmentParams{20, 10, -15, ZQ_CHANNEL_RED}), kThreeTables,
             nameOfThree, ThreeTables());
    rows.Add(70, kOneTable, name, OneTable());
    rows.Add(2, 0.2, "`cvtColor` to HSV and back, `LUT`", TurnHue());
    rows.Add(5, 0.16, "`calcHist`, `LUT`", SpreadTones());
    rows.Add(6, 0.95, "`bitwise_not`", Invert());
    rows.Add(7, 0.6, "`cvtColor` to grey, `threshold` (the result is grey)", GreyThreshold());
}

void AddNeighbourhoods(Rows& rows) {
    struct SizeGoal {
        i32 size;
        double goal;
    };
    for (const auto& [size, goal] : {SizeGoal{3, 0.28}, {10, 0.25}, {32, 0.24}}) {
        rows.Add(8, SizeText(size), Record(SquareSizeParams{size}), goal, "`blur`", Box(size));
        const double near = 0.8 * goal;
        rows.Add(9, SizeText(size), Record(CentreWeightedParams{size, 5}), near,
                 "`blur`, `addWeighted`", BoxAndSource(size, 0.2));
        rows.Add(18, SizeText(size), Record(UnsharpMaskParams{size, 100, 0}), near,
                 "`blur`, `addWeighted`", BoxAndSource(size, 2.0));
    }
    for (const auto& [size, goal] : {SizeGoal{3, 0.27}, {11, 0.14}, {32, 0.07}}) {
        rows.Add(17, SizeText(size), Record(SquareSizeParams{size}), goal,
                 size % 2 != 0 ? "`GaussianBlur` (weights of 8 bits, here 20)" : "`sepFilter2D`",
                 Gaussian(size));
    }
    for (const auto& [size, goal] : {SizeGoal{3, 0.5}, {10, 0.4}, {32, 0.3}}) {
        rows.Add(20, SizeText(size), Record(RankFilterParams{size, 1}), goal, "`dilate`",
                 Dilate(size));
    }
    for (const auto& [size, goal] : {SizeGoal{3, 0.2}, {5, 0.08}, {15, 0.01}, {31, 0.006}}) {
        rows.Add(21, SizeText(size), Record(SquareSizeParams{size}), goal, "`medianBlur`",
                 Median(size));
    }
    rows.Add(16, 0.3, "`blur`, two `Sobel`, masked copy", SmoothBetweenEdges());
    rows.Add(19, 0.55, "`filter2D` 3 x 1", LineFilter());
    rows.Add(22, 0.5, "`threshold`, `erode`, `subtract`", InnerOutline());
    rows.Add(32, 0.25, "two `Sobel`, `convertScaleAbs`, `add`", SobelSum());
    rows.Add(33, 0.2, "`LUT`, `filter2D` 3 x 3", MapAndSharpen());
    for (const i32 cells : {13, 25}) {
        UserFilterParams filter{};
        for (i32 i = 0; i < 25; ++i) {
            const bool inDiamond = std::abs(i % 5 - 2) + std::abs(i / 5 - 2) <= 2;
            filter.cells[i] = cells == 25 || inDiamond ? 1 + (i * 7) % 5 : 0;
            filter.scale += filter.cells[i];
        }
        rows.Add(25, std::to_string(cells).append(" cells"), Record(filter),
                 cells == 25 ? 0.08 : 0.12, "`filter2D` 5 x 5", CellFilter(filter));
    }
}

void AddArtistic(Rows& rows) {
    for (const i32 radius : {2, 7}) {
        rows.Add(40, std::string("radius ").append(std::to_string(radius)),
                 Record(IntensityParams{radius}), radius == 2 ? 0.05 : 0.03,
                 "`xphoto::oilPainting`", OilPaint(radius));
    }
    rows.Add(34, 0.6, "`randu`, `add`", AddRandom());
    rows.Add(38, 0.1, "two `randu`, masked copy", ReplaceByRandom());
    const char* const remap = "`remap` nearest, map prepared";
    rows.Add(35, 0.08, remap, Remap(MapKind::Scattered));
    rows.Add(36, 0.2, remap, Remap(MapKind::Scattered));
    rows.Add(37, 0.2, remap, Remap(MapKind::Scattered));
    rows.Add(39, 0.02, "", nullptr);
}

std::vector<u8> MirrorRecord(i32 mapping) {
    MagicMirrorParams params{mapping, {}};
    std::memcpy(params.curve, Defaults(3).data() + offsetof(ToneTableParams, table), 256);
    return Record(params);
}

void AddWarps(Rows& rows) {
    const char* const remap = "`remap` nearest, map prepared";
    for (const EffectId id : {41, 48, 49, 50, 55, 57, 64}) {
        rows.Add(id, 0.17, remap, Remap(MapKind::Twisted));
    }
    const std::array<const char*, 4> mappings = {"horizontal", "vertical", "radial", "angular"};
    for (std::size_t i = 0; i < mappings.size(); ++i) {
        rows.Add(56, mappings[i], MirrorRecord(static_cast<i32>(i)), i < 2 ? 0.4 : 0.17, remap,
                 Remap(i < 2 ? MapKind::Stretched : MapKind::Twisted));
    }
    rows.Add(65, 0.45, remap, Remap(MapKind::Stretched));
    rows.Add(66, 0.4, remap, Remap(MapKind::Stretched));
}

void AddRelief(Rows& rows) {
    rows.Add(51, 0.7, "`add`", AddPattern());
    rows.Add(51, "irregular", Record(Grid3DParams{3, 0, 1}), 0.7, "`add`", AddPattern());
    for (const i32 size : {5, 16}) {
        rows.Add(52, SizeText(size), Record(MosaicParams{size, size}), 0.5, "`resize` down and up",
                 ShrinkAndGrow(size));
    }
    rows.Add(54, "midtone", Record(EmbossParams{5, 2, 2, 0}), 0.6, "`addWeighted`",
             Difference(false));
    rows.Add(54, "gray", Record(EmbossParams{5, 3, 2, 0}), 0.3, "two `cvtColor`, `addWeighted`",
             Difference(true));
    rows.Add(53, "left 10", Record(MotionBlurParams{4, 10}), 0.3, "`boxFilter` 10 x 1", Row(10));
    rows.Add(53, "top 10", Record(MotionBlurParams{2, 10}), 0.3, "`boxFilter` 1 x 10", Column(10));
    for (const i32 size : {10, 32}) {
        const std::string length = std::to_string(size);
        rows.Add(53, std::string("top left ").append(length), Record(MotionBlurParams{1, size}),
                 0.25, "`filter2D`", Diagonal(size));
    }
}

} // namespace

std::vector<CompareRow> CompareRows() {
    Rows rows;
    AddToneMaps(rows);
    AddNeighbourhoods(rows);
    AddArtistic(rows);
    AddWarps(rows);
    AddRelief(rows);
    rows.Add(68, 0.15, "eight `filter2D`, `min`", LeastRay(20));
    rows.rows.back().grey = true;
    return rows.rows;
}
