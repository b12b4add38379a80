#include "preview/preview_document.h"

#include "image/crop_scale.h"
#include "tests/preview/fake_rkdll.h"
#include "tests/support/document_maker.h"
#include "tests/support/engine_probe.h"
#include "tests/support/leak_guard.h"

#include <gtest/gtest.h>

#include <cstring>

namespace {

constexpr ViewRegion kRegion{10, 5, 30, 29};
constexpr i32 kZoom = 50;
constexpr Extent kPane{88, 89};

ImageDocument ReadDocument(DocHandle document) {
    ImageDocument record{};
    const BlockLock lock(document);
    std::memcpy(&record, lock.Bytes(), sizeof(record));
    return record;
}

std::vector<u8> CropBytes(DibHandle source) {
    return BytesOf(OwnedBlock(CropAndScaleDib(source, 10, 5, 20, 24, 10, 12)).Handle());
}

class PreviewDocument : public LeakGuardTest {};

TEST_F(PreviewDocument, HoldsTheRegionOfTheCurrentLayerAndTheHostsOtherWords) {
    TestDocument host(40, 30, ImageClass::Colour, 3);
    host.Change([](ImageDocument& doc) {
        doc.currentLayer = 2;
        doc.selectionActive = 1;
        doc.layers[0].maskBypass = 7;
        doc.layers[2].maskBypass = 1;
    });
    const UnchangedGuard unchanged(host.Handle());

    const DocHandle preview = MakePreviewDocument(host.Handle(), kRegion, kZoom, kPane);
    ASSERT_NE(preview, 0u);
    const ImageDocument record = ReadDocument(preview);

    ImageDocument expected = host.Read();
    expected.width = 88;
    expected.height = 89;
    expected.layerCount = 1;
    expected.currentLayer = 0;
    expected.documentWord7600 = 0;
    expected.selectionActive = 0;
    LayerEntry& entry = expected.layers[0];
    entry.image = record.layers[0].image;
    entry.mask = record.layers[0].mask;
    entry.layerWord2 = 0;
    entry.left = 39;
    entry.top = 38;
    entry.layerWord70 = 1;
    entry.layerWord73 = 100;
    entry.layerWord74 = 0;
    EXPECT_EQ(std::memcmp(&record, &expected, sizeof(record)), 0);
    EXPECT_EQ(BytesOf(entry.image), CropBytes(host.Layer(2).image));
    EXPECT_EQ(BytesOf(entry.mask), CropBytes(host.Layer(2).mask));
    RkImageDelete(preview);
}

TEST_F(PreviewDocument, ShowsAnExtremelyFlatPictureAsOneRow) {
    TestDocument host(900, 2);
    const DocHandle preview = MakePreviewDocument(host.Handle(), {0, 0, 900, 2}, 1, kPane);
    ASSERT_NE(preview, 0u);
    const DibCopy image(ReadDocument(preview).layers[0].image);
    EXPECT_EQ(image.View().width, 9);
    EXPECT_EQ(image.View().height, 1);
    RkImageDelete(preview);
}

TEST_F(PreviewDocument, IsNotMadeOfADocumentThatCannotBeShown) {
    using Spoil = void (*)(TestDocument & host);
    const Spoil spoils[] = {
        [](TestDocument& host) { host.SetMask(0, OwnedBlock()); },
        [](TestDocument& host) { host.SetImage(0, OwnedBlock()); },
        [](TestDocument& host) { host.SetMask(0, MakeDib(ImageClass::Palette4, 40, 30)); },
        [](TestDocument& host) { host.Change([](ImageDocument& doc) { doc.currentLayer = 1; }); },
        [](TestDocument& host) { host.Change([](ImageDocument& doc) { doc.currentLayer = -1; }); },
    };
    for (std::size_t i = 0; i < std::size(spoils); ++i) {
        TestDocument host(40, 30);
        spoils[i](host);
        const LeakGuard guard;
        const UnchangedGuard unchanged(host.Handle());
        EXPECT_EQ(MakePreviewDocument(host.Handle(), kRegion, kZoom, kPane), 0u) << "case " << i;
    }
    TestDocument host(40, 30);
    EXPECT_EQ(MakePreviewDocument(host.Handle(), kRegion, kZoom, {0, 89}), 0u);
    EXPECT_EQ(MakePreviewDocument(host.Layer(0).image, kRegion, kZoom, kPane), 0u);
    EXPECT_EQ(MakePreviewDocument(0, kRegion, kZoom, kPane), 0u);
}

TEST_F(PreviewDocument, LeavesNothingBehindWhenMemoryIsShortOrTheUserStopsIt) {
    TestDocument host(40, 30);
    DocHandle preview = 0;
    const auto make = [&] { preview = MakePreviewDocument(host.Handle(), kRegion, kZoom, kPane); };
    const std::size_t allocations = FailEachAllocation(make, [&](bool failed) {
        EXPECT_EQ(preview == 0, failed);
        if (preview != 0) {
            RkImageDelete(preview);
        }
    });
    EXPECT_GT(allocations, 2u);

    EngineProbe probe;
    for (const std::size_t question : {2u, 13u, 15u, 26u}) { // first and last rows of both
        const LeakGuard guard;
        probe.Clear();
        probe.StopAtQuestion(question);
        make();
        EXPECT_EQ(preview, 0u) << "stopped at question " << question;
    }
}

} // namespace
