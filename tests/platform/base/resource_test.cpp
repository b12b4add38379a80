#include "platform/base/module.h"
#include "platform/base/resource_file.h"
#include "resources/module.h"
#include "resources/resource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <memory>

namespace {

// The dialogs of the effects.
constexpr u16 kDialogs[] = {4341, 4342, 4343, 4344, 4345, 4347, 4349,
                            4350, 4351, 4352, 4353, 4356, 4357, 4360};

// Little-endian words, as resources hold them.
class ResourceWriter {
public:
    ResourceWriter& Words(std::initializer_list<int> words) {
        for (const int word : words) {
            bytes_.push_back(static_cast<u8>(word));
            bytes_.push_back(static_cast<u8>(word >> 8));
        }
        return *this;
    }
    ResourceWriter& Text(std::string_view text) {
        for (const char letter : text) {
            Words({static_cast<u8>(letter)});
        }
        return Words({0});
    }
    ResourceWriter& Align() {
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
        return *this;
    }
    // Adds a resource with everything written to `data`.
    ResourceWriter& Add(int type, int id, const ResourceWriter& data) {
        Words({static_cast<int>(data.bytes_.size()), 0, 32, 0, 0xFFFF, type, 0xFFFF, id});
        Words({0, 0, 0, 0, 0, 0, 0, 0});
        bytes_.insert(bytes_.end(), data.bytes_.begin(), data.bytes_.end());
        return Align();
    }
    // Adds a resource of the library as it is.
    ResourceWriter& Copy(u16 type, u16 id) {
        const auto found = FindResourceBytes(ResourceModule(), type, id);
        EXPECT_FALSE(found.empty()) << type << ", " << id;
        ResourceWriter data;
        data.bytes_.assign(found.begin(), found.end());
        return Add(type, id, data);
    }
    const std::vector<u8>& Bytes() const { return bytes_; }

private:
    std::vector<u8> bytes_;
};

// A module over a copy in memory of its own, so that a read beyond its end is found out.
struct CopiedModule {
    std::unique_ptr<u8[]> bytes;
    HINSTANCE__ module;

    CopiedModule(const u8* source, std::size_t size)
        : bytes(new u8[size]), module{bytes.get(), size} {
        std::copy_n(source, size, bytes.get());
    }
    explicit CopiedModule(const ResourceWriter& writer)
        : CopiedModule(writer.Bytes().data(), writer.Bytes().size()) {}
};

// One resource of each type.
ResourceWriter SmallModule() {
    ResourceWriter writer;
    writer.Copy(kResourceCursor, 1).Copy(kResourceBitmap, IDB_FIRST_DIRECTION);
    writer.Copy(kResourceDialog, IDD_EMBOSS).Copy(kResourceString, IDS_GRAY / 16 + 1);
    return writer.Copy(kResourceGroupCursor, IDR_OPEN_HAND);
}

bool IsRadio(const DialogItemTemplate& item) {
    return item.className == "Button" && (item.style & 15) == BS_AUTORADIOBUTTON;
}

bool IsInteractive(const DialogItemTemplate& item) {
    return (item.style & WS_TABSTOP) != 0 || item.className == "PREVIEWWND" || IsRadio(item);
}

bool Overlap(const DialogItemTemplate& one, const DialogItemTemplate& other) {
    return one.x < other.x + other.width && other.x < one.x + one.width &&
           one.y < other.y + other.height && other.y < one.y + one.height;
}

const DialogItemTemplate* FindItem(const DialogTemplate& dialog, int id) {
    const auto found = std::find_if(dialog.items.begin(), dialog.items.end(),
                                    [id](const auto& item) { return item.id == id; });
    return found == dialog.items.end() ? nullptr : &*found;
}

TEST(ResourceFile, ControlsLieInTheirDialogsAndApartFromEachOther) {
    for (const u16 id : kDialogs) {
        const auto dialog = LoadDialogTemplate(ResourceModule(), id);
        ASSERT_TRUE(dialog) << id;
        EXPECT_EQ(dialog->width, 185);
        EXPECT_EQ(dialog->fontFace, "MS Sans Serif");
        EXPECT_EQ(dialog->fontPoints, 10);
        for (auto item = dialog->items.begin(); item != dialog->items.end(); ++item) {
            SCOPED_TRACE(item->text + " of " + dialog->title);
            EXPECT_GE(item->x, 0);
            EXPECT_GE(item->y, 0);
            EXPECT_LE(item->x + item->width, dialog->width);
            EXPECT_LE(item->y + item->height, dialog->height);
            EXPECT_TRUE(item->style & WS_VISIBLE);
            for (auto other = dialog->items.begin(); other != item; ++other) {
                const bool statics = item->className == "Static" && other->className == "Static";
                if ((IsInteractive(*item) && IsInteractive(*other)) || statics) {
                    EXPECT_FALSE(Overlap(*item, *other)) << other->text;
                }
            }
        }
    }
}

TEST(ResourceFile, DialogsAreTabbedThroughTheirControlsThenOkThenCancel) {
    for (const u16 id : kDialogs) {
        const auto dialog = LoadDialogTemplate(ResourceModule(), id);
        ASSERT_TRUE(dialog) << id;
        std::vector<int> stops;
        bool amongRadios = false;
        bool groupBegins = false;
        for (const auto& item : dialog->items) {
            groupBegins |= (item.style & WS_GROUP) != 0;
            if ((item.style & WS_TABSTOP) != 0) {
                stops.push_back(item.id);
            }
            if (item.className == "ScrollBar") {
                EXPECT_TRUE(item.style & WS_TABSTOP) << item.id;
            }
            if (IsInteractive(item)) {
                // The arrow keys stay among the radios of a group.
                EXPECT_TRUE(groupBegins || IsRadio(item) == amongRadios) << item.id;
                amongRadios = IsRadio(item);
                groupBegins = false;
            }
        }
        ASSERT_GE(stops.size(), 3u);
        EXPECT_EQ(std::vector<int>(stops.end() - 2, stops.end()), (std::vector<int>{1, 2}));
        EXPECT_TRUE(FindItem(*dialog, IDOK)->style & WS_GROUP);
        EXPECT_EQ(FindItem(*dialog, IDOK)->style & 15, BS_DEFPUSHBUTTON);
    }
}

TEST(ResourceFile, StringsAreFoundByTheirNumberOnly) {
    const std::pair<u16, const char*> expected[] = {
        {4329, "Film Grain"}, {4335, "Whirlpool"},    {4336, "Spiral"},  {4340, "Oil Painting"},
        {4341, "Gray"},       {4371, "Circle"},       {4381, "Average"}, {4380, "Load Magic Curve"},
        {4384, "Minimum"},    {4385, "Gaussian Blur"}};
    for (const auto& [id, text] : expected) {
        EXPECT_EQ(LoadStringResource(ResourceModule(), id), text) << id;
    }
    for (const u16 absent : std::initializer_list<u16>{0, 4328, 4342, 4386, 65535}) {
        EXPECT_FALSE(LoadStringResource(ResourceModule(), absent)) << absent;
    }
    EXPECT_FALSE(LoadStringResource(nullptr, 4341));
}

TEST(ResourceFile, TheOpenHandIsWhiteWithABlackOutlineOnNothing) {
    const auto hand = LoadCursorImage(ResourceModule(), IDR_OPEN_HAND);
    ASSERT_TRUE(hand);
    EXPECT_EQ(hand->width, 32);
    EXPECT_EQ(hand->height, 32);
    EXPECT_EQ(hand->hotX, 15);
    EXPECT_EQ(hand->hotY, 16);
    ASSERT_EQ(hand->argb.size(), 32u * 32u);
    EXPECT_EQ(hand->argb[0], 0u);
    EXPECT_EQ(hand->argb[16 * 32 + 15], 0xFFFFFFFFu);
    EXPECT_EQ(hand->argb[8 * 32 + 14], 0xFF000000u); // the longest finger's tip
    EXPECT_EQ(hand->argb[23 * 32 + 14], 0xFFFFFFFFu);
}

TEST(ResourceFile, TheArrowsAreRaisedTilesThatPointOutwards) {
    for (int direction = 0; direction < 8; ++direction) {
        SCOPED_TRACE(direction);
        const int cell = direction < 4 ? direction : direction + 1; // of nine
        const auto arrow =
            LoadBitmapImage(ResourceModule(), static_cast<u16>(IDB_FIRST_DIRECTION + direction));
        ASSERT_TRUE(arrow);
        ASSERT_EQ(arrow->width, 20);
        ASSERT_EQ(arrow->height, 20);
        const auto at = [&](int x, int y) {
            return arrow->rgb[static_cast<std::size_t>(y * 20 + x)];
        };
        EXPECT_EQ(at(0, 0), 0xFFFFFFu);
        EXPECT_EQ(at(19, 19), 0u);
        EXPECT_EQ(at(2, 2), 0xC0C0C0u);
        const int dx = cell % 3 - 1;
        const int dy = cell / 3 - 1;
        int outwards = 0; // black pixels of that half, less those of the other
        for (int y = 2; y < 18; ++y) {
            for (int x = 2; x < 18; ++x) {
                const int side = (2 * x - 19) * dx + (2 * y - 19) * dy;
                outwards += at(x, y) == 0 ? (side > 0) - (side < 0) : 0;
            }
        }
        EXPECT_GT(outwards, 5);
    }
}

TEST(ResourceFile, ExtendedTemplatesAreReadLikePlainOnes) {
    ResourceWriter dialog;
    dialog.Words({1, 0xFFFF, 0, 0, 7, 0, 0x40, 0x80C0}); // help id, extended style, style
    dialog.Words({2, 1, 2, 100, 50, 0, 0}).Text("Title");
    dialog.Words({8, 400, 1}).Text("Arial").Align();
    dialog.Words({0, 0, 5, 0, 3, 0x5000, -1, -2, 30, 10, -1, -1, 0xFFFF, 0x84, 0xFFFF, 9, 3});
    dialog.Words({0x1111, 0x22}).Align(); // creation data of 3 bytes
    dialog.Words({0, 0, 0, 0, 0, 0x5001, 4, 5, 6, 7, 300, 0}).Text("own").Text("caf\xE9");
    dialog.Words({0});
    const CopiedModule copy(ResourceWriter().Add(5, 11, dialog));
    const auto read = LoadDialogTemplate(&copy.module, 11);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->title, "Title");
    EXPECT_EQ(read->style, 0x80C00040u);
    EXPECT_EQ(read->exStyle, 7u);
    EXPECT_EQ(read->fontFace, "Arial");
    EXPECT_EQ(read->fontPoints, 8);
    ASSERT_EQ(read->items.size(), 2u);
    EXPECT_EQ(read->items[0].className, "ScrollBar");
    EXPECT_EQ(read->items[0].id, 65535);
    EXPECT_EQ(read->items[0].y, -2);
    EXPECT_EQ(read->items[0].exStyle, 5u);
    EXPECT_EQ(read->items[0].style, 0x50000003u);
    EXPECT_EQ(read->items[1].className, "own");
    EXPECT_EQ(read->items[1].text, "caf\xE9");
    EXPECT_EQ(read->items[1].id, 300);
}

TEST(ResourceFile, TheCursorsDepthsAgreeAndTheUsualSizeIsPreferred) {
    // One white pixel left of a transparent one; then a mask with a black and an inverting one.
    const auto head = [](int width, int bits) {
        return ResourceWriter().Words(
            {1, 0, 40, 0, width, 0, 2, 0, 1, bits, 0, 0, 0, 0, 0, 0, 0, 0, bits == 8 ? 2 : 0,
             0, 0, 0});
    };
    const struct {
        int bits;
        ResourceWriter data;
    } cases[] = {
        {1, head(2, 1).Words({0, 0, -1, 0xFF, 0x80, 0, 0x40, 0})},
        {8, head(2, 8).Words({0, 0, -1, 0xFF, 1, 0, 0x40, 0})},
        {24, head(2, 24).Words({-1, 0xFF, 0, 0, 0x40, 0})},
        {32, head(2, 32).Words({-1, -1, 0, 0, 0, 0})},
    };
    for (const auto& [bits, data] : cases) {
        ResourceWriter group;
        group.Words({0, 2, 1, 2, 2, 1, bits, 0, 0, 3});
        const CopiedModule copy(ResourceWriter().Add(1, 3, data).Add(12, 20, group));
        const auto cursor = LoadCursorImage(&copy.module, 20);
        ASSERT_TRUE(cursor) << bits;
        EXPECT_EQ(cursor->hotX, 1);
        EXPECT_EQ(cursor->argb, (std::vector<u32>{0xFFFFFFFF, 0})) << bits;
    }
    ResourceWriter both;
    both.Words({0, 2, 2, 2, 2, 1, 24, 0, 0, 1, 3, 2, 1, 1, 0, 0, 2});
    ResourceWriter inverting = head(3, 1).Words({0, 0, -1, 0xFF, 0x40, 0, 0x60, 0});
    const CopiedModule copy(
        ResourceWriter().Add(1, 1, cases[2].data).Add(1, 2, inverting).Add(12, 20, both));
    const auto cursor = LoadCursorImage(&copy.module, 20);
    ASSERT_TRUE(cursor);
    EXPECT_EQ(cursor->argb, (std::vector<u32>{0xFF000000, 0xFF000000, 0}));
}

// Reads a resource of each type.
void ExpectWholeOrNothing(const HINSTANCE__& module) {
    const auto isWhole = [](const auto& image, const std::vector<u32>& pixels) {
        return pixels.size() ==
               static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    };
    const auto dialog = LoadDialogTemplate(&module, IDD_EMBOSS);
    EXPECT_TRUE(!dialog || dialog->items.size() <= 0xFFFF);
    const auto cursor = LoadCursorImage(&module, IDR_OPEN_HAND);
    EXPECT_TRUE(!cursor || isWhole(*cursor, cursor->argb));
    const auto bitmap = LoadBitmapImage(&module, IDB_FIRST_DIRECTION);
    EXPECT_TRUE(!bitmap || isWhole(*bitmap, bitmap->rgb));
    LoadStringResource(&module, IDS_GRAY);
}

TEST(ResourceFile, ACutFileOrAFlippedByteIsSurvived) {
    const ResourceWriter whole = SmallModule();
    for (std::size_t at = 0; at < whole.Bytes().size(); ++at) {
        const CopiedModule cut(whole.Bytes().data(), at);
        ExpectWholeOrNothing(cut.module);
        EXPECT_FALSE(LoadCursorImage(&cut.module, IDR_OPEN_HAND));
        CopiedModule flipped(whole);
        flipped.bytes[at] ^= 0xFF;
        ExpectWholeOrNothing(flipped.module);
    }
}

TEST(ResourceFile, ACutResourceInAWholeFileIsNotFound) {
    const auto dialog = FindResourceBytes(ResourceModule(), kResourceDialog, IDD_EMBOSS);
    ASSERT_FALSE(dialog.empty());
    for (std::size_t words = 0; words < dialog.size() / 2; ++words) {
        ResourceWriter cut;
        for (std::size_t i = 0; i < words; ++i) {
            cut.Words({dialog[2 * i] | dialog[2 * i + 1] << 8});
        }
        const CopiedModule copy(ResourceWriter().Add(kResourceDialog, 1, cut));
        EXPECT_FALSE(LoadDialogTemplate(&copy.module, 1)) << words;
    }
}

} // namespace
