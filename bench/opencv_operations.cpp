#include "bench/opencv_operations.h"

#include <opencv2/imgproc.hpp>
#include <opencv2/xphoto/oilpainting.hpp>

#include <cmath>
#include <memory>

namespace {

cv::Mat RisingTable(int type) {
    cv::Mat table(1, 256, type);
    for (int i = 0; i < 256 * table.channels(); ++i) {
        table.data[i] = static_cast<uchar>(255 - i / table.channels() / 2);
    }
    return table;
}

cv::Mat DiagonalWeights(i32 size) {
    return cv::Mat::eye(size, size, CV_32F) / size;
}

OpenCvOperation Filter(const cv::Mat& weights) {
    return [weights](const cv::Mat& from, cv::Mat& to) { cv::filter2D(from, to, -1, weights); };
}

} // namespace

OpenCvOperation OneTable() {
    return [table = RisingTable(CV_8UC1)](const cv::Mat& from, cv::Mat& to) {
        cv::LUT(from, table, to);
    };
}

OpenCvOperation ThreeTables() {
    return [table = RisingTable(CV_8UC3)](const cv::Mat& from, cv::Mat& to) {
        cv::LUT(from, table, to);
    };
}

OpenCvOperation TurnHue() {
    return [table = RisingTable(CV_8UC3), hsv = cv::Mat(),
            turned = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        cv::cvtColor(from, hsv, cv::COLOR_BGR2HSV);
        cv::LUT(hsv, table, turned);
        cv::cvtColor(turned, to, cv::COLOR_HSV2BGR);
    };
}

OpenCvOperation SpreadTones() {
    return [counts = cv::Mat(), table = RisingTable(CV_8UC1)](const cv::Mat& from,
                                                              cv::Mat& to) mutable {
        const cv::Mat samples = from.reshape(1);
        const int channel = 0;
        const int bins = 256;
        const float range[] = {0, 256};
        const float* ranges = range;
        cv::calcHist(&samples, 1, &channel, cv::noArray(), counts, 1, &bins, &ranges);
        float below = 0;
        for (int i = 0; i < bins; ++i) {
            table.data[i] =
                static_cast<uchar>(below * 255.0F / static_cast<float>(samples.total()));
            below += counts.at<float>(i);
        }
        cv::LUT(from, table, to);
    };
}

OpenCvOperation Invert() {
    return [](const cv::Mat& from, cv::Mat& to) { cv::bitwise_not(from, to); };
}

OpenCvOperation GreyThreshold() {
    return [grey = cv::Mat(), result = cv::Mat()](const cv::Mat& from, cv::Mat&) mutable {
        cv::cvtColor(from, grey, cv::COLOR_BGR2GRAY);
        cv::threshold(grey, result, 128, 255, cv::THRESH_BINARY);
    };
}

OpenCvOperation Box(i32 size) {
    return [size](const cv::Mat& from, cv::Mat& to) { cv::blur(from, to, cv::Size(size, size)); };
}

OpenCvOperation BoxAndSource(i32 size, double shareOfSource) {
    return [size, shareOfSource, blurred = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        cv::blur(from, blurred, cv::Size(size, size));
        cv::addWeighted(from, shareOfSource, blurred, 1 - shareOfSource, 0, to);
    };
}

OpenCvOperation Gaussian(i32 size) {
    if (size % 2 != 0) {
        return [size](const cv::Mat& from, cv::Mat& to) {
            cv::GaussianBlur(from, to, cv::Size(size, size), 0);
        };
    }
    cv::Mat weights(size, 1, CV_32F);
    for (i32 i = 0; i < size; ++i) {
        const double distance = (i - (size - 1) / 2.0) / (size / 6.0);
        weights.at<float>(i) = static_cast<float>(std::exp(-distance * distance / 2));
    }
    weights /= cv::sum(weights)[0];
    return [weights](const cv::Mat& from, cv::Mat& to) {
        cv::sepFilter2D(from, to, -1, weights, weights);
    };
}

OpenCvOperation Dilate(i32 size) {
    return [square = cv::Mat(cv::Mat::ones(size, size, CV_8U))](const cv::Mat& from, cv::Mat& to) {
        cv::dilate(from, to, square);
    };
}

OpenCvOperation Median(i32 size) {
    return [size](const cv::Mat& from, cv::Mat& to) { cv::medianBlur(from, to, size); };
}

OpenCvOperation SmoothBetweenEdges() {
    return [across = cv::Mat(), up = cv::Mat(), strengths = std::array<cv::Mat, 3>(),
            edges = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        cv::blur(from, to, cv::Size(3, 3));
        cv::Sobel(from, across, CV_16S, 1, 0);
        cv::Sobel(from, up, CV_16S, 0, 1);
        cv::convertScaleAbs(across, strengths[0]);
        cv::convertScaleAbs(up, strengths[1]);
        cv::add(strengths[0], strengths[1], strengths[2]);
        cv::compare(strengths[2], 128, edges, cv::CMP_GE);
        // The mask of a masked copy has one channel.
        from.reshape(1).copyTo(to.reshape(1), edges.reshape(1));
    };
}

OpenCvOperation LineFilter() {
    return Filter((cv::Mat_<float>(1, 3) << -0.5F, 2.0F, -0.5F));
}

OpenCvOperation InnerOutline() {
    return [cross = cv::getStructuringElement(cv::MORPH_CROSS, cv::Size(3, 3)), bright = cv::Mat(),
            inside = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        cv::threshold(from, bright, 128, 255, cv::THRESH_BINARY);
        cv::erode(bright, inside, cross);
        cv::subtract(bright, inside, to);
    };
}

OpenCvOperation SobelSum() {
    return [across = cv::Mat(), up = cv::Mat(), acrossSize = cv::Mat(),
            upSize = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        cv::Sobel(from, across, CV_16S, 1, 0);
        cv::Sobel(from, up, CV_16S, 0, 1);
        cv::convertScaleAbs(across, acrossSize);
        cv::convertScaleAbs(up, upSize);
        cv::add(acrossSize, upSize, to);
    };
}

OpenCvOperation MapAndSharpen() {
    cv::Mat weights(3, 3, CV_32F, cv::Scalar(-0.1));
    weights.at<float>(1, 1) = 1.8F;
    return [weights, table = RisingTable(CV_8UC1), mapped = cv::Mat()](const cv::Mat& from,
                                                                       cv::Mat& to) mutable {
        cv::LUT(from, table, mapped);
        cv::filter2D(mapped, to, -1, weights);
    };
}

OpenCvOperation CellFilter(const UserFilterParams& filter) {
    cv::Mat weights(5, 5, CV_32F);
    for (int i = 0; i < 25; ++i) {
        weights.at<float>(i / 5, i % 5) =
            static_cast<float>(filter.cells[i]) / static_cast<float>(filter.scale);
    }
    return Filter(weights);
}

OpenCvOperation LeastRay(i32 radius) {
    const i32 side = 2 * radius + 1;
    std::vector<cv::Mat> rays;
    for (const auto& [dx, dy] :
         {std::pair{-1, -1}, {0, -1}, {1, -1}, {-1, 0}, {1, 0}, {-1, 1}, {0, 1}, {1, 1}}) {
        cv::Mat ray(side, side, CV_32F, cv::Scalar(0));
        for (i32 step = 0; step <= radius; ++step) {
            ray.at<float>(radius + step * dy, radius + step * dx) =
                1.0F / static_cast<float>(radius + 1);
        }
        rays.push_back(ray);
    }
    return [rays, mean = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        cv::filter2D(from, to, -1, rays.front());
        for (std::size_t i = 1; i < rays.size(); ++i) {
            cv::filter2D(from, mean, -1, rays[i]);
            cv::min(to, mean, to);
        }
    };
}

OpenCvOperation OilPaint(i32 radius) {
    return [radius](const cv::Mat& from, cv::Mat& to) {
        cv::xphoto::oilPainting(from, to, radius, 1, cv::COLOR_BGR2GRAY);
    };
}

OpenCvOperation AddRandom() {
    return [grain = cv::Mat(), grains = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        grain.create(from.size(), CV_8UC1);
        cv::randu(grain, 0, 50);
        cv::cvtColor(grain, grains, cv::COLOR_GRAY2BGR);
        cv::add(from, grains, to);
    };
}

OpenCvOperation ReplaceByRandom() {
    return [dice = cv::Mat(), chosen = cv::Mat(), colours = cv::Mat()](const cv::Mat& from,
                                                                       cv::Mat& to) mutable {
        dice.create(from.size(), CV_8UC1);
        colours.create(from.size(), from.type());
        cv::randu(dice, 0, 100);
        cv::compare(dice, 50, chosen, cv::CMP_LT);
        cv::randu(colours, 0, 256);
        from.copyTo(to);
        colours.copyTo(to, chosen);
    };
}

namespace {

cv::Vec2f PlaceOf(MapKind kind, int x, int y, cv::Size size, cv::RNG& random) {
    const auto fx = static_cast<float>(x);
    const auto fy = static_cast<float>(y);
    if (kind == MapKind::Scattered) {
        return {fx + static_cast<float>(random.uniform(-5, 6)),
                fy + static_cast<float>(random.uniform(-5, 6))};
    }
    if (kind == MapKind::Stretched) {
        return {fx, fy + 40 * std::sin(fx * 0.01F)};
    }
    const float dx = fx - static_cast<float>(size.width) / 2;
    const float dy = fy - static_cast<float>(size.height) / 2;
    const float turn = 1 - std::min(1.0F, std::hypot(dx, dy) / static_cast<float>(size.height) * 2);
    return {fx + dx * (std::cos(turn) - 1) - dy * std::sin(turn),
            fy + dx * std::sin(turn) + dy * (std::cos(turn) - 1)};
}

} // namespace

OpenCvOperation Remap(MapKind kind) {
    return [kind, map = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        if (map.empty()) {
            cv::RNG random(1);
            cv::Mat places(from.size(), CV_32FC2);
            for (int y = 0; y < from.rows; ++y) {
                for (int x = 0; x < from.cols; ++x) {
                    places.at<cv::Vec2f>(y, x) = PlaceOf(kind, x, y, from.size(), random);
                }
            }
            cv::Mat none;
            cv::convertMaps(places, cv::noArray(), map, none, CV_16SC2, true);
        }
        cv::remap(from, to, map, cv::noArray(), cv::INTER_NEAREST, cv::BORDER_REPLICATE);
    };
}

OpenCvOperation AddPattern() {
    return [pattern = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        if (pattern.empty()) {
            pattern.create(from.size(), from.type());
            cv::randu(pattern, 0, 60);
        }
        cv::add(from, pattern, to);
    };
}

OpenCvOperation ShrinkAndGrow(i32 size) {
    return [size, means = cv::Mat()](const cv::Mat& from, cv::Mat& to) mutable {
        const cv::Size cells((from.cols + size - 1) / size, (from.rows + size - 1) / size);
        cv::resize(from, means, cells, 0, 0, cv::INTER_AREA);
        cv::resize(means, to, from.size(), 0, 0, cv::INTER_NEAREST);
    };
}

OpenCvOperation Difference(bool withoutColour) {
    return [withoutColour, grey = cv::Mat(), slope = cv::Mat()](const cv::Mat& from,
                                                                cv::Mat& to) mutable {
        const auto subtract = [](const cv::Mat& picture, cv::Mat& result) {
            const int columns = picture.cols - 2;
            cv::Mat inner = result.colRange(0, columns);
            cv::addWeighted(picture.colRange(2, picture.cols), 1, picture.colRange(0, columns), -1,
                            128, inner);
        };
        if (!withoutColour) {
            subtract(from, to);
            return;
        }
        cv::cvtColor(from, grey, cv::COLOR_BGR2GRAY);
        slope.create(grey.size(), grey.type());
        subtract(grey, slope);
        cv::cvtColor(slope, to, cv::COLOR_GRAY2BGR);
    };
}

OpenCvOperation Row(i32 size) {
    return [size](const cv::Mat& from, cv::Mat& to) {
        cv::boxFilter(from, to, -1, cv::Size(size, 1));
    };
}

OpenCvOperation Column(i32 size) {
    return [size](const cv::Mat& from, cv::Mat& to) {
        cv::boxFilter(from, to, -1, cv::Size(1, size));
    };
}

OpenCvOperation Diagonal(i32 size) {
    return Filter(DiagonalWeights(size));
}
