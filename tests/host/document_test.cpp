#include "host/document.h"

#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"

#include <zq/params.h>

namespace {

class AHostDocument : public LeakGuardTest {
protected:
    static bool Fill(HostDocument& document, ImageClass kind = ImageClass::Colour) {
        return document.SetPicture(MakeDib(kind, 20, 10), MakeDib(ImageClass::Grey, 20, 10));
    }

    static bool Brighten(HostDocument& document, i32 brightness) {
        const BrightnessContrastParams record = {0, brightness, 0};
        return document.ApplyEffect(1, &record);
    }

    // What the library would find.
    static ImageDocument Record(const HostDocument& document) {
        const BlockLock lock(document.Handle());
        return *reinterpret_cast<const ImageDocument*>(lock.Bytes());
    }

    static void ExpectRecordInStep(const HostDocument& document) {
        const ImageDocument record = Record(document);
        EXPECT_EQ(record.layerCount, 1);
        EXPECT_EQ(record.currentLayer, 0);
        EXPECT_EQ(record.layers[0].image, document.Image());
        EXPECT_EQ(record.layers[0].mask, document.Mask());
        EXPECT_NE(BlockSize(document.Image()), 0u);
        EXPECT_NE(BlockSize(document.Mask()), 0u);
    }
};

TEST_F(AHostDocument, GoesBackThroughEveryStepToTheBytesBefore) {
    HostDocument document;
    ASSERT_TRUE(Fill(document));
    std::vector<std::vector<u8>> images, masks;
    const auto remember = [&] {
        images.push_back(BytesOf(document.Image()));
        masks.push_back(BytesOf(document.Mask()));
    };
    remember();
    EXPECT_TRUE(Brighten(document, 40));
    remember();
    EXPECT_TRUE(document.SetMask(MakeDib(ImageClass::Grey, 20, 10, {.seed = 9})));
    remember();
    const ColorReductionParams few = {0, 3};
    EXPECT_TRUE(document.ApplyEffect(4, &few));
    EXPECT_NE(BytesOf(document.Image()), images.back());
    EXPECT_EQ(BytesOf(document.Mask()), masks.back());
    for (std::size_t step = images.size(); step-- > 0;) {
        ExpectRecordInStep(document);
        EXPECT_TRUE(document.IsModified());
        ASSERT_TRUE(document.Undo());
        EXPECT_EQ(BytesOf(document.Image()), images[step]);
        EXPECT_EQ(BytesOf(document.Mask()), masks[step]);
    }
    EXPECT_FALSE(document.IsModified());
    EXPECT_FALSE(document.Undo());
    ExpectRecordInStep(document);
}

TEST_F(AHostDocument, TakesNoStepForAnEffectThatChangesNothing) {
    HostDocument document;
    EXPECT_FALSE(Brighten(document, 40)) << "without a picture";
    ASSERT_TRUE(Fill(document));
    const DibHandle image = document.Image();
    const SquareSizeParams size = {0};
    EXPECT_FALSE(Brighten(document, 0));
    EXPECT_FALSE(document.ApplyEffect(17, &size)) << "on the road through the mask";
    EXPECT_FALSE(document.ApplyEffect(5000, nullptr));
    EXPECT_FALSE(document.SetMask(MakeDib(ImageClass::Grey, 10, 20)));
    EXPECT_EQ(document.Image(), image);
    EXPECT_FALSE(document.CanUndo());
}

TEST_F(AHostDocument, KeepsItsPictureWhenTheNextOneDoesNotFitItsMask) {
    HostDocument document;
    ASSERT_TRUE(Fill(document));
    const DibHandle image = document.Image();
    EXPECT_FALSE(document.SetPicture(MakeDib(ImageClass::Colour, 20, 10),
                                     MakeDib(ImageClass::Grey, 20, 11)));
    EXPECT_FALSE(document.SetPicture(MakeDib(ImageClass::Colour, 20, 10),
                                     MakeDib(ImageClass::Palette8, 20, 10)));
    EXPECT_FALSE(document.SetPicture(OwnedBlock(), MakeDib(ImageClass::Grey, 20, 10)));
    EXPECT_EQ(document.Image(), image);
}

TEST_F(AHostDocument, TellsTheLibraryItsSizeAndWhetherItIsGrey) {
    for (const bool grey : {false, true}) {
        HostDocument document;
        ASSERT_TRUE(Fill(document, grey ? ImageClass::Grey : ImageClass::Colour));
        EXPECT_EQ(Record(document).bitDepth, grey ? 8 : 24);
        EXPECT_EQ(Record(document).width, 20);
        EXPECT_EQ(Record(document).height, 10);
    }
}

TEST_F(AHostDocument, ForgetsTheOldestStepsWhenTheyTakeTooMuchRoom) {
    const std::size_t step = BlockSize(MakeDib(ImageClass::Colour, 20, 10).Handle());
    for (const std::size_t kept : {1u, 3u}) {
        HostDocument document(kept * step);
        ASSERT_TRUE(Fill(document));
        for (i32 i = 1; i <= 6; ++i) {
            ASSERT_TRUE(Brighten(document, i));
        }
        for (std::size_t i = 0; i < kept; ++i) {
            EXPECT_TRUE(document.Undo());
        }
        EXPECT_FALSE(document.CanUndo());
        EXPECT_TRUE(document.IsModified());
    }
    HostDocument poor(1);
    ASSERT_TRUE(Fill(poor) && Brighten(poor, 1) && Brighten(poor, 2));
    EXPECT_TRUE(poor.Undo()) << "the last step stays, however large";
    EXPECT_FALSE(poor.Undo());
}

TEST_F(AHostDocument, SavedIsWhereItWasSavedEvenAfterUndo) {
    HostDocument document;
    ASSERT_TRUE(Fill(document) && Brighten(document, 9));
    document.MarkSaved();
    EXPECT_FALSE(document.IsModified());
    ASSERT_TRUE(document.Undo());
    EXPECT_TRUE(document.IsModified());
}

} // namespace
