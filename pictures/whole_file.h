// A file that appears whole or not at all.
#pragma once

#include "pictures/pictures.h"

#include <cstdio>
#include <string>

// What the failed call that left its reason in errno means to a person.
PictureResult FileFailure(PictureResult otherwise);

// Collects what is written in a temporary file beside `path`. Commit puts it in the path's place;
// without it the temporary file goes away and the path is as it was.
class WholeFile {
public:
    WholeFile() = default;
    WholeFile(const WholeFile&) = delete;
    WholeFile& operator=(const WholeFile&) = delete;
    ~WholeFile();

    PictureResult Create(const char* path);
    std::FILE* Stream() const { return stream_; }
    PictureResult Commit();

private:
    std::string path_;
    std::string temporary_;
    std::FILE* stream_ = nullptr;
};
