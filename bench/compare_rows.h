// What is compared with what: effects with their parameters, the speed that they are to reach, and
// the nearest operation of OpenCV.
#pragma once

#include "platform/types.h"
#include <zq/document.h>

#include <functional>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

// Writes `to`, which has the size and depth of `from` and warm memory.
using OpenCvOperation = std::function<void(const cv::Mat& from, cv::Mat& to)>;

struct CompareRow {
    std::string name; // the effect's and what is chosen of its parameters
    EffectId id;
    std::vector<u8> record; // empty for an effect without one
    double goal;            // as a share of the speed of memcpy
    std::string openCvName; // empty when there is no relative
    OpenCvOperation openCv;
    bool grey = false; // the picture that it takes
};

std::vector<CompareRow> CompareRows();
