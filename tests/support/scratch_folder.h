// A folder for a test's files, removed at the end.
#pragma once

#include "platform/types.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>
#include <vector>

class ScratchFolder {
public:
    ScratchFolder() {
        const std::string name = "scratch-" + std::to_string(getpid()) + "-";
        int number = 0;
        do {
            folder_ = std::filesystem::temp_directory_path() / (name + std::to_string(number++));
        } while (!std::filesystem::create_directory(folder_));
    }
    ~ScratchFolder() { std::filesystem::remove_all(folder_); }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }

    std::string Put(const std::string& name, const std::vector<u8>& bytes) const {
        std::ofstream(Path(name), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return Path(name);
    }

    std::vector<u8> Bytes(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::vector<std::string> Names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path folder_;
};
