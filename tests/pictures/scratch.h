// A folder for a test's files, and pictures in and out of it.
#pragma once

#include "pictures/pictures.h"
#include "tests/support/dib_maker.h"
#include "tests/support/leak_guard.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

class PictureTest : public LeakGuardTest {
protected:
    PictureTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "pictures-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    ~PictureTest() override { std::filesystem::remove_all(folder_); }

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

    // The picture of a file that must be readable.
    static OwnedBlock Read(const std::string& path, OwnedBlock* alpha = nullptr) {
        DibHandle dib = 0;
        DibHandle mask = 0;
        EXPECT_EQ(ReadPicture(path.c_str(), dib, alpha != nullptr ? &mask : nullptr),
                  PictureResult::Ok)
            << path;
        if (alpha != nullptr) {
            *alpha = OwnedBlock(mask);
        }
        return OwnedBlock(dib);
    }

    static PictureResult TryRead(const std::string& path) {
        DibHandle dib = 1;
        const PictureResult result = ReadPicture(path.c_str(), dib);
        const OwnedBlock owned(dib);
        EXPECT_EQ(dib != 0, result == PictureResult::Ok) << DescribePictureResult(result);
        return result;
    }

    // Every pixel's colour, row 0 first, through palette or ramp; black beyond the palette.
    static std::vector<Bgr> Colours(DibHandle dib) {
        const DibCopy copy(dib);
        std::vector<Bgr> colours;
        for (i32 y = 0; copy.Valid() && y < copy.View().height; ++y) {
            for (i32 x = 0; x < copy.View().width; ++x) {
                const bool direct = copy.View().bits == 24;
                const u32 index = direct ? 0 : copy.At(x, y);
                colours.push_back(direct                               ? copy.ColourAt(x, y)
                                  : index < copy.View().paletteEntries ? copy.PaletteAt(index)
                                                                       : Bgr{});
            }
        }
        return colours;
    }

private:
    std::filesystem::path folder_;
};
