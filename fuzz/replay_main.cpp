// Runs a target on the files and folders that are named, without a fuzzer.
#include "fuzz/fuzz_target.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

std::size_t replayed = 0;

void Replay(const std::filesystem::path& path) {
    if (std::filesystem::is_directory(path)) {
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            Replay(entry.path());
        }
        return;
    }
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
    // A block of its own, of just this size, so that a sanitizer sees a read beyond the end.
    const std::vector<u8> bytes(content.begin(), content.end());
    std::fprintf(stderr, "%s\n", path.c_str());
    RunOnBytes(FuzzedBytes(bytes));
    ++replayed;
}

} // namespace

int main(int count, char** names) {
    for (int i = 1; i < count; ++i) {
        Replay(names[i]);
    }
    std::printf("%zu replayed\n", replayed);
    return replayed > 0 ? 0 : 1;
}
