// Compares every effect with OpenCV's nearest operation, on one core, and prints a table.
#include "bench/bench_pictures.h"
#include "bench/compare_rows.h"
#include "bench/timing.h"
#include "engine/dib_format.h"
#include <zq/engine.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <opencv2/core/utility.hpp>
#include <sched.h>
#include <string_view>

namespace {

struct Options {
    i32 runs = 7;
    std::string only;
    bool openCv = true;
};

constexpr double kMegapixels = kBenchWidth * 1e-6 * kBenchHeight;

void PinToOneCore() {
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<std::size_t>(std::max(sched_getcpu(), 0)), &one);
    sched_setaffinity(0, sizeof one, &one);
    cv::setNumThreads(1);
}

// A picture, and memory of its size that has been written to.
class Pictures {
public:
    explicit Pictures(bool grey)
        : source_(MakeBenchPicture(kBenchWidth, kBenchHeight, grey)),
          target_(AllocateBlock(BlockSize(source_.Handle()))), sourceLock_(source_.Handle()),
          targetLock_(target_.Handle()) {
        if (*this) {
            ViewDib(sourceLock_.Bytes(), BlockSize(source_.Handle()), view_);
            std::memcpy(targetLock_.Bytes(), sourceLock_.Bytes(), view_.size);
        }
    }

    explicit operator bool() const { return sourceLock_ && targetLock_; }
    DibHandle Source() const { return source_.Handle(); }
    void Copy() const { std::memcpy(targetLock_.Bytes(), sourceLock_.Bytes(), view_.size); }
    cv::Mat SourceMat() const { return MatOf(sourceLock_.Bytes()); }
    cv::Mat TargetMat() const { return MatOf(targetLock_.Bytes()); }

private:
    cv::Mat MatOf(u8* block) const {
        return {view_.height, view_.width, view_.bits == 24 ? CV_8UC3 : CV_8UC1, block + view_.head,
                view_.stride};
    }

    const OwnedBlock source_;
    const OwnedBlock target_;
    const BlockLock sourceLock_;
    const BlockLock targetLock_;
    DibView view_;
};

// Megapixels per second.
struct Speeds {
    double copy;   // memcpy of the colour picture
    double fresh;  // of the effect, its result in memory that nobody had
    double warm;   // in memory that was just freed
    double openCv; // 0 when there is no relative
};

Speeds Measure(const CompareRow& row, const Pictures& colour, const Pictures& grey,
               const Options& options) {
    const Pictures& pictures = row.grey ? grey : colour;
    const void* record = row.record.empty() ? nullptr : row.record.data();
    const auto run = [&] {
        OwnedBlock result(RunEffect(pictures.Source(), row.id, record));
        if (!result) {
            std::fprintf(stderr, "zq_compare: %s gave no picture\n", row.name.c_str());
            std::exit(1);
        }
        return result;
    };
    const auto speed = [&](const auto& work) {
        return kMegapixels / MedianSeconds(options.runs, work);
    };
    Speeds speeds{};
    speeds.copy = speed([&] { colour.Copy(); });
    speeds.warm = speed(run);
    {
        std::vector<OwnedBlock> kept; // so that none comes again
        speeds.fresh = speed([&] { kept.push_back(run()); });
    }
    if (row.openCv != nullptr && options.openCv) {
        const cv::Mat from = pictures.SourceMat();
        cv::Mat to = pictures.TargetMat();
        speeds.openCv = speed([&] { row.openCv(from, to); });
    }
    return speeds;
}

void PrintRow(const CompareRow& row, const Speeds& speeds) {
    const double share = speeds.warm / speeds.copy;
    std::printf("| %d %s%s | %.0f | %.0f | ", row.id, row.name.c_str(),
                row.grey ? " (grey picture)" : "", speeds.fresh, speeds.warm);
    if (speeds.openCv != 0) {
        std::printf("%.3g | %.3g | ", speeds.openCv, speeds.warm / speeds.openCv);
    } else {
        std::printf("| | ");
    }
    std::printf("%.3f | %.3g%s | %s |\n", share, row.goal, share < row.goal ? " **missed**" : "",
                row.openCvName.empty() ? "no relative" : row.openCvName.c_str());
    std::fflush(stdout);
}

bool ReadOptions(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--no-opencv") {
            options.openCv = false;
        } else if (word == "--runs" && i + 1 < argc) {
            options.runs = std::atoi(argv[++i]);
        } else if (word == "--only" && i + 1 < argc) {
            options.only = argv[++i];
        } else {
            return false;
        }
    }
    return options.runs > 0;
}

// Whether a row is asked for: by the effect's number or by a part of its name.
bool IsChosen(const CompareRow& row, const std::string& only) {
    const bool isNumber = only.find_first_not_of("0123456789") == std::string::npos;
    return only.empty() ||
           (isNumber ? only == std::to_string(row.id) : row.name.find(only) != std::string::npos);
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!ReadOptions(argc, argv, options)) {
        std::fputs("usage: zq_compare [--runs N] [--only NUMBER-OR-NAME] [--no-opencv]\n", stderr);
        return 2;
    }
    PinToOneCore();
    const Pictures colour(false);
    const Pictures grey(true);
    if (!colour || !grey) {
        std::fputs("zq_compare: the pictures to work on cannot be made\n", stderr);
        return 2;
    }
    {
        // Memory that a virtual machine gives out for the first time is slower than all else.
        std::vector<OwnedBlock> touched;
        for (i32 run = 0; run <= options.runs; ++run) {
            touched.emplace_back(RunEffect(colour.Source(), 6, nullptr));
        }
    }
    const double copy = kMegapixels / MedianSeconds(25, [&] { colour.Copy(); });
    std::printf("`memcpy` of the colour picture: %.0f megapixels per second.\n\n", copy);
    std::puts("| effect | new memory | warm memory | OpenCV | ratio | share of `memcpy` | goal | "
              "OpenCV's operation |");
    std::puts("|---|--:|--:|--:|--:|--:|--:|---|");
    i32 missed = 0;
    for (const CompareRow& row : CompareRows()) {
        if (IsChosen(row, options.only)) {
            const Speeds speeds = Measure(row, colour, grey, options);
            PrintRow(row, speeds);
            missed += speeds.warm < row.goal * speeds.copy ? 1 : 0;
        }
    }
    std::printf("\n%d goals missed.\n", missed);
    return 0;
}
