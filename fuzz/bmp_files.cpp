// BMP files as they come.
#include "fuzz/picture_reading.h"

void RunOnBytes(FuzzedBytes bytes) {
    std::vector<u8> file = {'B', 'M'};
    const auto rest = bytes.Take(SIZE_MAX);
    file.insert(file.end(), rest.begin(), rest.end());
    ReadPictureBytes(file);
}
