#include "image/document.h"

#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"

#include <climits>

namespace {

using Document = LeakGuardTest;

TEST_F(Document, LocksTheEntriesInUseAndNoOther) {
    TestDocument doc(2, 2, ImageClass::Colour, 3);
    const struct {
        i32 layerCount, index;
        bool inUse;
    } cases[] = {{3, 0, true},        {3, 2, true},
                 {3, 3, false},       {3, -1, false},
                 {3, INT_MIN, false}, {0, 0, false},
                 {-1, -2, false},     {101, 100, true},
                 {500, 101, false},   {INT_MAX, INT_MAX - 1, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "entry " << c.index << " of " << c.layerCount);
        doc.Change([&](ImageDocument& record) { record.layerCount = c.layerCount; });
        const BlockLock lock(doc.Handle());
        const LayerEntry* entry = LockLayerEntry(doc.Handle(), c.index);
        EXPECT_EQ(GlobalFlags(ZqBlockOfHandle(doc.Handle())), c.inUse ? 2u : 1u);
        if (c.inUse) {
            EXPECT_EQ(reinterpret_cast<const u8*>(entry), lock.Bytes() + 92 + 300 * c.index);
            UnlockDocument(doc.Handle());
        } else {
            EXPECT_EQ(entry, nullptr);
        }
    }
    doc.Change([](ImageDocument& record) { record.layerCount = 3; });
}

TEST_F(Document, TellsItsCurrentLayerAndWhetherItIsGrey) {
    TestDocument doc(2, 2, ImageClass::Grey);
    EXPECT_EQ(IsGreyDocument(doc.Handle()), 1);
    doc.Change([](ImageDocument& record) {
        record.bitDepth = 24;
        record.currentLayer = 42;
    });
    EXPECT_EQ(IsGreyDocument(doc.Handle()), 0);
    EXPECT_EQ(GetCurrentLayer(doc.Handle()), 42);
}

TEST_F(Document, BlocksThatAreNoDocumentGiveNothing) {
    const u32 stale = OwnedBlock(AllocateBlock(sizeof(ImageDocument))).Handle();
    std::vector<u8> bytes(sizeof(ImageDocument) - 1, 8);
    const OwnedBlock cut = MakeBlock(bytes);
    for (const u32 handle : {0u, stale, cut.Handle()}) {
        const UnchangedGuard unchanged(handle);
        EXPECT_EQ(GetCurrentLayer(handle), 0);
        EXPECT_EQ(LockLayerEntry(handle, 0), nullptr);
        EXPECT_EQ(IsGreyDocument(handle), 0);
        UnlockDocument(handle);
    }
}

} // namespace
