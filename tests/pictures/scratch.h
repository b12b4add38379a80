// A folder for a test's files, and pictures in and out of it.
#pragma once

#include "pictures/pictures.h"
#include "tests/support/dib_maker.h"
#include "tests/support/leak_guard.h"
#include "tests/support/scratch_folder.h"

#include <string>
#include <vector>

class PictureTest : public LeakGuardTest, protected ScratchFolder {
protected:
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

    // Every colour of pictures with short palettes comes back from a file of this name.
    void ExpectBlackBeyondThePalette(const char* name) const {
        for (const ImageClass kind :
             {ImageClass::Mono, ImageClass::Palette4, ImageClass::Palette8}) {
            for (const u32 entries : {0u, 1u, 9u}) {
                const OwnedBlock dib = MakeDib(kind, 21, 4, {.paletteEntries = entries});
                ASSERT_EQ(WritePicture(Path(name).c_str(), dib.Handle()), PictureResult::Ok);
                EXPECT_EQ(Colours(Read(Path(name)).Handle()), Colours(dib.Handle()))
                    << "class " << static_cast<i32>(kind) << ", " << entries;
            }
        }
    }
};
