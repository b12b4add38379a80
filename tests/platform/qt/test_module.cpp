#include "tests/platform/qt/drive.h"

#include <fstream>
#include <iterator>
#include <vector>

HINSTANCE TestModule() {
    static std::ifstream file(ZQ_TEST_RESOURCES, std::ios::binary);
    static const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    static const HINSTANCE__ module{reinterpret_cast<const u8*>(bytes.data()), bytes.size()};
    return &module;
}
