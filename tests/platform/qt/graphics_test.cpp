#include "platform/qt/graphics.h"

#include "platform/base/resource_file.h"
#include "platform/qt/graphics_testing.h"
#include "platform/types.h"
#include "resources/module.h"
#include "resources/resource.h"

#include <gtest/gtest.h>

#include <QFontMetrics>
#include <QGuiApplication>
#include <QPixmap>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

constexpr QRgb kGreen = 0xFF00FF00;

// A surface with a context on it.
struct Paper {
    QImage image;
    HDC dc;

    Paper(int width, int height) : Paper(width, height, QRect(0, 0, width, height)) {}
    Paper(int width, int height, const QRegion& clip) : image(width, height, QImage::Format_RGB32) {
        image.fill(kGreen);
        dc = OpenDeviceContext(image, clip);
    }
    ~Paper() { CloseDeviceContext(dc); }
};

// The paper row by row: white, light, grey, shade, black ('#') and untouched ('.').
std::vector<std::string> RowsOf(const QImage& image) {
    const std::map<QRgb, char> letters = {{0xFFFFFFFF, 'w'}, {0xFFDFDFDF, 'l'}, {0xFFC0C0C0, 'g'},
                                          {0xFF808080, 's'}, {0xFF000000, '#'}, {kGreen, '.'}};
    std::vector<std::string> rows;
    for (int y = 0; y < image.height(); ++y) {
        std::string& row = rows.emplace_back();
        for (int x = 0; x < image.width(); ++x) {
            const auto found = letters.find(image.pixel(x, y));
            row += found == letters.end() ? '?' : found->second;
        }
    }
    return rows;
}

using Rows = std::vector<std::string>;

struct TestDib {
    struct {
        BITMAPINFOHEADER header;
        u32 palette[256]; // 0x00RRGGBB
    } info{};
    std::vector<u8> bits;
    std::size_t stride;

    TestDib(int depth, int width, int height, u32 colorsUsed = 0)
        : stride((static_cast<std::size_t>(width * depth) + 31) / 32 * 4) {
        std::mt19937 random(static_cast<u32>(depth));
        info.header.biSize = 40;
        info.header.biWidth = width;
        info.header.biHeight = height;
        info.header.biPlanes = 1;
        info.header.biBitCount = static_cast<WORD>(depth);
        info.header.biClrUsed = colorsUsed;
        const auto next = [&random] { return static_cast<u32>(random()); };
        std::ranges::generate(info.palette, next);
        bits.resize(stride * static_cast<std::size_t>(height));
        std::ranges::generate(bits, [&next] { return static_cast<u8>(next()); });
    }

    // Row 0 is the bottom row.
    QRgb At(int x, int y) const {
        const u8* row = bits.data() + stride * static_cast<std::size_t>(y);
        const int depth = info.header.biBitCount;
        if (depth == 24) {
            return qRgb(row[3 * x + 2], row[3 * x + 1], row[3 * x]);
        }
        unsigned index = 0;
        for (int bit = x * depth; bit < (x + 1) * depth; ++bit) {
            index = index << 1 | (row[bit / 8] >> (7 - bit % 8) & 1u);
        }
        const bool known = info.header.biClrUsed == 0 || index < info.header.biClrUsed;
        return 0xFF000000 | (known ? info.palette[index] : 0);
    }

    int Draw(HDC dc, QRect to, QRect from) const {
        return StretchDIBits(dc, to.x(), to.y(), to.width(), to.height(), from.x(), from.y(),
                             from.width(), from.height(), bits.data(),
                             reinterpret_cast<const BITMAPINFO*>(&info), DIB_RGB_COLORS, SRCCOPY);
    }
};

TEST(StretchDIBitsCall, CopiesEveryDepthPixelForPixelWithinTheClip) {
    for (const auto& [depth, colors] :
         {std::pair{24, 0}, {8, 0}, {8, 100}, {4, 0}, {4, 3}, {1, 0}, {1, 1}}) {
        SCOPED_TRACE(testing::Message() << depth << " bits, " << colors << " colours");
        const TestDib dib(depth, 13, 9, static_cast<u32>(colors));
        const QRegion clip = QRegion(2, 2, 10, 10) - QRegion(5, 5, 2, 2);
        Paper paper(16, 14, clip);
        // The region at (2, 1) from the lower left, at (-1, 3): one column is cut off.
        EXPECT_EQ(dib.Draw(paper.dc, {-1, 3, 11, 7}, {2, 1, 11, 7}), 7);
        for (int y = 0; y < 14; ++y) {
            for (int x = 0; x < 16; ++x) {
                const bool drawn = clip.contains(QPoint(x, y)) && x < 10 && y >= 3 && y < 10;
                const QRgb expected = drawn ? dib.At(x + 1 + 2, 1 + 6 - (y - 3)) : kGreen;
                ASSERT_EQ(paper.image.pixel(x, y), expected) << x << ", " << y;
            }
        }
    }
}

TEST(StretchDIBitsCall, TakesTheNearestPixelWhenItScales) {
    const TestDib dib(24, 6, 4);
    for (const QSize size : {QSize(18, 12), QSize(2, 2), QSize(9, 5), QSize(1, 1)}) {
        Paper paper(20, 20);
        dib.Draw(paper.dc, QRect(QPoint(1, 2), size), {0, 0, 6, 4});
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const int sourceX = static_cast<int>((x + 0.5) * 6 / size.width());
                const int sourceY = static_cast<int>((y + 0.5) * 4 / size.height());
                ASSERT_EQ(paper.image.pixel(x + 1, y + 2), dib.At(sourceX, 3 - sourceY))
                    << x << ", " << y << " of " << size.width();
            }
        }
        EXPECT_EQ(paper.image.pixel(0, 2), kGreen);
        EXPECT_EQ(paper.image.pixel(size.width() + 1, 2), kGreen);
    }
}

TEST(StretchDIBitsCall, RefusesWhatItCannotRead) {
    Paper paper(8, 8);
    const QRect whole(0, 0, 4, 4);
    const TestDib good(24, 4, 4);
    for (const QPoint corner : {QPoint(1, 0), QPoint(0, 1), QPoint(-1, 0)}) {
        EXPECT_EQ(good.Draw(paper.dc, whole, whole.translated(corner)), 0);
    }
    void (*const spoils[])(BITMAPINFOHEADER&) = {
        [](BITMAPINFOHEADER& header) { header.biWidth = 0; },
        [](BITMAPINFOHEADER& header) { header.biBitCount = 16; },
        [](BITMAPINFOHEADER& header) { header.biCompression = 1; },
    };
    for (const auto spoil : spoils) {
        TestDib dib(24, 4, 4);
        spoil(dib.info.header);
        EXPECT_EQ(dib.Draw(paper.dc, whole, whole), 0) << "case " << &spoil - spoils;
    }
    EXPECT_EQ(paper.image.pixel(0, 0), kGreen);
}

TEST(DrawEdgeCall, DrawsTwoRingsInTheClassicColours) {
    const std::pair<UINT, Rows> cases[] = {
        {EDGE_RAISED,
         {".........", ".llllll#.", ".lwwwws#.", ".lw...s#.", ".lw...s#.", ".lsssss#.", ".#######.",
          "........."}},
        {EDGE_SUNKEN,
         {".........", ".ssssssw.", ".s####lw.", ".s#...lw.", ".s#...lw.", ".slllllw.", ".wwwwwww.",
          "........."}},
    };
    for (const auto& [edge, rows] : cases) {
        Paper paper(9, 8);
        RECT rect{1, 1, 8, 7};
        EXPECT_TRUE(DrawEdge(paper.dc, &rect, edge, BF_RECT));
        EXPECT_EQ(RowsOf(paper.image), rows);
    }
}

TEST(FillRectCall, FillsWithoutRightAndBottomEdgeInTheBrushsColour) {
    const std::pair<HBRUSH, Rows> cases[] = {
        {reinterpret_cast<HBRUSH>(COLOR_BTNFACE + std::intptr_t{1}), {"....", ".gg.", "...."}},
        {GetStockObject(LTGRAY_BRUSH), {"....", ".gg.", "...."}},
        {GetStockObject(GRAY_BRUSH), {"....", ".ss.", "...."}},
        {GetStockObject(BLACK_BRUSH), {"....", ".##.", "...."}},
        {GetStockObject(WHITE_BRUSH), {"....", ".ww.", "...."}}};
    for (const auto& [brush, rows] : cases) {
        Paper paper(4, 3);
        const RECT rect{1, 1, 3, 2};
        EXPECT_NE(FillRect(paper.dc, &rect, brush), 0);
        EXPECT_EQ(RowsOf(paper.image), rows);
    }
    Paper paper(3, 1);
    const RECT whole{0, 0, 3, 1};
    const RECT reversed{2, 1, 0, 0};
    FillRect(paper.dc, &reversed, GetStockObject(BLACK_BRUSH));
    EXPECT_EQ(FillRect(paper.dc, &whole, nullptr), 0);
    EXPECT_EQ(FillRect(paper.dc, &whole, GetStockObject(SYSTEM_FONT)), 0);
    EXPECT_EQ(RowsOf(paper.image), Rows{"..."});
}

// What encloses all pixels of a colour, or all that differ from the paper.
QRect InkOf(const QImage& image, QRgb color = kGreen) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool same = image.pixel(x, y) == color;
            ink |= same == (color != kGreen) ? QRect(x, y, 1, 1) : QRect();
        }
    }
    return ink;
}

TEST(LineToCall, JoinsThePointsAndLeavesOutTheLast) {
    Paper paper(6, 4);
    POINT before{};
    EXPECT_TRUE(MoveToEx(paper.dc, 0, 3, &before));
    for (const QPoint point : {QPoint(2, 3), QPoint(2, 0), QPoint(5, 1), QPoint(5, 1)}) {
        EXPECT_TRUE(LineTo(paper.dc, point.x(), point.y()));
    }
    MoveToEx(paper.dc, 0, 0, &before);
    EXPECT_EQ(QPoint(before.x, before.y), QPoint(5, 1));
    EXPECT_EQ(RowsOf(paper.image), (Rows{"..##..", "..#.#.", "..#...", "###..."}));
}

TEST(RectangleCall, DrawsTheOutlineByPenAndTheInsideByBrush) {
    const HPEN pen = CreatePen(PS_SOLID, 1, GetSysColor(COLOR_BTNFACE));
    const HBRUSH brush = CreateSolidBrush(0);
    Paper paper(6, 4);
    const HGDIOBJ blackPen = SelectObject(paper.dc, pen);
    const HGDIOBJ whiteBrush = SelectObject(paper.dc, brush);
    EXPECT_TRUE(Rectangle(paper.dc, 1, 0, 5, 4));
    EXPECT_EQ(RowsOf(paper.image), (Rows{".gggg.", ".g##g.", ".g##g.", ".gggg."}));

    EXPECT_EQ(SelectObject(paper.dc, blackPen), pen);
    EXPECT_EQ(SelectObject(paper.dc, whiteBrush), brush);
    EXPECT_TRUE(DeleteObject(pen));
    EXPECT_TRUE(DeleteObject(brush));
    EXPECT_FALSE(DeleteObject(pen));
}

TEST(BitBltCall, CopiesABitmapsRegionOrItsInversionWithinItsSize) {
    const std::size_t before = LiveGdiObjectCount();
    const HBITMAP bitmap =
        LoadBitmapA(ResourceModule(), MAKEINTRESOURCEA(IDB_FIRST_DIRECTION)); // 20 x 20
    const auto arrow = LoadBitmapImage(ResourceModule(), IDB_FIRST_DIRECTION);
    ASSERT_TRUE(arrow);
    Paper paper(30, 30);
    EXPECT_EQ(SelectObject(paper.dc, bitmap), nullptr); // on a window's context
    EXPECT_FALSE(DeleteDC(paper.dc));
    const HDC memory = CreateCompatibleDC(paper.dc);
    const HGDIOBJ onePixel = SelectObject(memory, bitmap);
    EXPECT_TRUE(BitBlt(paper.dc, 4, 5, 28, 28, memory, 2, 1, SRCCOPY));
    EXPECT_TRUE(BitBlt(paper.dc, 1, 1, 2, 2, memory, 0, 0, NOTSRCCOPY));
    EXPECT_EQ(paper.image.pixel(4, 5), arrow->rgb[1 * 20 + 2] | 0xFF000000);
    EXPECT_EQ(paper.image.pixel(21, 23), arrow->rgb[19 * 20 + 19] | 0xFF000000);
    EXPECT_EQ(paper.image.pixel(1, 1), 0xFF000000); // the inverted light corner
    EXPECT_EQ(InkOf(paper.image), QRect(1, 1, 21, 23));

    EXPECT_FALSE(BitBlt(paper.dc, 0, 0, 30, 30, memory, 0, 0, 0x42));
    EXPECT_EQ(SelectObject(memory, onePixel), bitmap);
    SelectObject(memory, bitmap);
    EXPECT_TRUE(DeleteObject(bitmap)); // the context keeps its picture
    EXPECT_TRUE(BitBlt(paper.dc, 28, 28, 2, 2, memory, 0, 0, SRCCOPY));
    EXPECT_EQ(paper.image.pixel(28, 28), 0xFFFFFFFF);
    EXPECT_TRUE(BitBlt(paper.dc, 0, 0, 8, 8, memory, 30, 0, SRCCOPY)); // beside it
    EXPECT_TRUE(DeleteDC(memory));
    EXPECT_FALSE(DeleteDC(memory));
    EXPECT_FALSE(BitBlt(paper.dc, 0, 0, 8, 8, memory, 0, 0, SRCCOPY));
    EXPECT_EQ(paper.image.pixel(0, 0), kGreen);
    EXPECT_EQ(LiveGdiObjectCount(), before);

    EXPECT_EQ(LoadBitmapA(ResourceModule(), MAKEINTRESOURCEA(1)), nullptr);
    EXPECT_EQ(LoadBitmapA(ResourceModule(), "arrow"), nullptr);
    EXPECT_EQ(LoadBitmapA(nullptr, MAKEINTRESOURCEA(IDB_FIRST_DIRECTION)), nullptr);
}

TEST(DrawTextCall, CentresALineInItsRectangle) {
    for (const char* text : {"+", "-", "100%", "Brightness"}) {
        Paper paper(160, 60);
        SetBkMode(paper.dc, TRANSPARENT);
        RECT rect{20, 10, 120, 40};
        EXPECT_GT(DrawTextA(paper.dc, text, -1, &rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE), 0);
        const QRect ink = InkOf(paper.image);
        ASSERT_FALSE(ink.isEmpty()) << text;
        EXPECT_TRUE(QRect(20, 10, 100, 30).contains(ink)) << text;
        EXPECT_NEAR(ink.center().x(), 70, 2) << text;
        EXPECT_NEAR(ink.center().y(), 25, 4) << text;
    }
}

TEST(DrawTextCall, StaysInItsRectangleAndTakesColourModeAndLength) {
    Paper paper(100, 40);
    RECT rect{10, 5, 30, 25};
    EXPECT_EQ(SetTextColor(paper.dc, 0x0000FF), 0u);
    EXPECT_EQ(SetBkMode(paper.dc, TRANSPARENT), OPAQUE);
    DrawTextA(paper.dc, "WWWWWWWWWW", -1, &rect, DT_SINGLELINE);
    const QRect ink = InkOf(paper.image);
    EXPECT_TRUE(QRect(10, 5, 20, 20).contains(ink));
    EXPECT_FALSE(InkOf(paper.image, 0xFFFF0000).isEmpty());

    Paper shorter(100, 40);
    RECT wide{0, 0, 100, 40};
    SetBkMode(shorter.dc, TRANSPARENT);
    DrawTextA(shorter.dc, "IWWWW", 1, &wide, DT_SINGLELINE);
    EXPECT_LT(InkOf(shorter.image).right(), 10);
    SetBkMode(shorter.dc, OPAQUE);
    DrawTextA(shorter.dc, "I", 1, &wide, DT_SINGLELINE);
    EXPECT_EQ(shorter.image.pixel(0, InkOf(shorter.image).top()), 0xFFFFFFFF);
}

TEST(TextOutCall, PutsTheGivenSideOfTheTextAtThePoint) {
    const auto inkAt = [](UINT align) {
        Paper paper(120, 60);
        SetBkMode(paper.dc, TRANSPARENT);
        EXPECT_EQ(SetTextAlign(paper.dc, align), TA_LEFT | TA_TOP);
        EXPECT_TRUE(TextOutA(paper.dc, 60, 30, "HHHXX", 3));
        EXPECT_FALSE(TextOutA(paper.dc, 60, 30, nullptr, 3));
        return InkOf(paper.image);
    };
    const QRect ink = inkAt(TA_LEFT | TA_TOP);
    EXPECT_NEAR(ink.left(), 60, 2);
    EXPECT_GE(ink.top(), 30);
    EXPECT_LT(ink.width(), 45);
    EXPECT_NEAR(inkAt(TA_RIGHT | TA_TOP).right(), 60, 2);
    EXPECT_NEAR(inkAt(TA_CENTER | TA_TOP).center().x(), 60, 2);
    const QRect above = inkAt(TA_CENTER | TA_BOTTOM);
    EXPECT_LT(above.bottom(), 30);
    EXPECT_EQ(above.size(), ink.size());
}

LOGFONTA SansSerif(LONG height) {
    LOGFONTA font{};
    font.lfHeight = height;
    font.lfWeight = 400;
    std::strcpy(font.lfFaceName, "MS Sans Serif");
    return font;
}

// Made before there is an application, as a library that is being loaded does.
const LOGFONTA earlyDescription = SansSerif(-12);
const HFONT earlyFont = CreateFontIndirectA(&earlyDescription);
const HCURSOR earlyArrow = LoadCursorHandle(nullptr, IDC_ARROW);
const HCURSOR earlyHand = LoadCursorHandle(ResourceModule(), MAKEINTRESOURCEA(IDR_OPEN_HAND));

class ApplicationEnvironment : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QGuiApplication>(argc_, argv_); }
    void TearDown() override { application_.reset(); }

private:
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    int argc_ = 1;
    std::unique_ptr<QGuiApplication> application_;
};

testing::Environment* const application =
    testing::AddGlobalTestEnvironment(new ApplicationEnvironment);

TEST(DrawingObjects, StaleAndWrongHandlesAnswerNull) {
    const std::size_t before = LiveGdiObjectCount();
    const LOGFONTA description = SansSerif(-12);
    const HFONT stale = CreateFontIndirectA(&description);
    EXPECT_EQ(LiveGdiObjectCount(), before + 1);
    EXPECT_TRUE(DeleteObject(stale));
    const HFONT font = CreateFontIndirectA(&description); // in the same place
    EXPECT_NE(font, stale);
    EXPECT_FALSE(DeleteObject(stale));
    EXPECT_FALSE(DeleteObject(nullptr));

    Paper paper(4, 4);
    const HGDIOBJ first = SelectObject(paper.dc, font);
    EXPECT_EQ(first, GetStockObject(SYSTEM_FONT));
    EXPECT_EQ(SelectObject(paper.dc, stale), nullptr);
    EXPECT_EQ(SelectObject(paper.dc, first), font);
    EXPECT_EQ(SelectObject(paper.dc, GetStockObject(GRAY_BRUSH)), GetStockObject(WHITE_BRUSH));
    EXPECT_TRUE(DeleteObject(font));
    EXPECT_EQ(LiveGdiObjectCount(), before);
}

TEST(DrawingObjects, StockObjectsAndTemplateFontsOutliveTheirDeletion) {
    const std::size_t before = LiveGdiObjectCount();
    for (const int index : {WHITE_BRUSH, LTGRAY_BRUSH, BLACK_BRUSH, DEFAULT_GUI_FONT}) {
        const HGDIOBJ stock = GetStockObject(index);
        ASSERT_NE(stock, nullptr);
        EXPECT_TRUE(DeleteObject(stock));
        EXPECT_EQ(GetStockObject(index), stock);
    }
    EXPECT_EQ(GetStockObject(99), nullptr);
    const HFONT font = FontForTemplate("MS Sans Serif", 10);
    DeleteObject(font);
    EXPECT_EQ(FontForTemplate("MS Sans Serif", 10), font);
    EXPECT_EQ(FontOfHandle(font).pixelSize(), 13);
    EXPECT_EQ(LiveGdiObjectCount(), before);
}

TEST(DrawingObjects, AClosedContextDrawsNothing) {
    QImage image(4, 4, QImage::Format_RGB32);
    image.fill(kGreen);
    const HDC dc = OpenDeviceContext(image, image.rect());
    CloseDeviceContext(dc);
    RECT rect{0, 0, 4, 4};
    EXPECT_EQ(FillRect(dc, &rect, GetStockObject(BLACK_BRUSH)), 0);
    EXPECT_EQ(DrawTextA(dc, "x", 1, &rect, 0), 0);
    EXPECT_FALSE(DrawEdge(dc, &rect, EDGE_RAISED, BF_RECT));
    EXPECT_EQ(SetBkMode(dc, TRANSPARENT), 0);
    EXPECT_EQ(SetTextColor(dc, 0), CLR_INVALID);
    EXPECT_EQ(SelectObject(dc, GetStockObject(SYSTEM_FONT)), nullptr);
    EXPECT_EQ(InkOf(image), QRect());
    // Its surface is free for the next one.
    const HDC next = OpenDeviceContext(image, image.rect());
    EXPECT_EQ(FillRect(next, &rect, GetStockObject(BLACK_BRUSH)), 1);
    CloseDeviceContext(next);
}

TEST(Fonts, HeightsAreThoseOfCharactersOrCells) {
    EXPECT_EQ(FontOfHandle(earlyFont).pixelSize(), 12);
    for (const LONG height : {16, 30}) {
        const LOGFONTA description = SansSerif(height);
        const HFONT font = CreateFontIndirectA(&description);
        EXPECT_NEAR(QFontMetrics(FontOfHandle(font)).height(), height, 1);
        DeleteObject(font);
    }
    EXPECT_EQ(DialogBaseUnits("MS Sans Serif", 10), QSize(8, 16));
    EXPECT_EQ(DialogBaseUnits("MS Shell Dlg", 8), QSize(6, 13));
    const QSize large = DialogBaseUnits("MS Sans Serif", 20);
    EXPECT_GT(large.width(), 8);
    EXPECT_GT(large.height(), 20);
}

TEST(Fonts, TheDialogsTextsFitTheirControls) {
    const QFontMetrics metrics(FontOfHandle(FontForTemplate("MS Sans Serif", 10)));
    const QSize units = DialogBaseUnits("MS Sans Serif", 10);
    EXPECT_LE(metrics.height(), 10 * units.height() / 8);
    EXPECT_LE(metrics.horizontalAdvance("Brightness:"), 46 * units.width() / 4);
    EXPECT_LE(metrics.horizontalAdvance("-128"), 26 * units.width() / 4);
    EXPECT_LE(metrics.horizontalAdvance("Gray"), 32 * units.width() / 4 - 24);
}

TEST(Cursors, AreSharedAndHaveTheirShapeAndHotSpot) {
    EXPECT_EQ(CursorOfHandle(earlyArrow).shape(), Qt::ArrowCursor);
    EXPECT_EQ(CursorOfHandle(nullptr).shape(), Qt::ArrowCursor);
    EXPECT_EQ(CursorOfHandle(LoadCursorHandle(nullptr, IDC_WAIT)).shape(), Qt::WaitCursor);
    EXPECT_EQ(LoadCursorHandle(nullptr, IDC_ARROW), earlyArrow);
    EXPECT_EQ(LoadCursorHandle(nullptr, MAKEINTRESOURCEA(1)), nullptr);
    EXPECT_EQ(LoadCursorHandle(nullptr, "arrow"), nullptr);
    EXPECT_EQ(LoadCursorHandle(ResourceModule(), MAKEINTRESOURCEA(1)), nullptr);

    EXPECT_EQ(LoadCursorHandle(ResourceModule(), MAKEINTRESOURCEA(IDR_OPEN_HAND)), earlyHand);
    const QCursor hand = CursorOfHandle(earlyHand);
    EXPECT_EQ(hand.hotSpot(), QPoint(15, 16));
    EXPECT_EQ(qAlpha(hand.pixmap().toImage().pixel(0, 0)), 0);
}

TEST(LoadStringCall, CutsAtTheBuffersEnd) {
    char buffer[8] = "xxxxxxx";
    EXPECT_EQ(LoadStringA(ResourceModule(), IDS_GRAY, buffer, sizeof buffer), 4);
    EXPECT_STREQ(buffer, "Gray");
    EXPECT_EQ(LoadStringA(ResourceModule(), IDS_GAUSSIAN_BLUR, buffer, sizeof buffer), 7);
    EXPECT_STREQ(buffer, "Gaussia");
    EXPECT_EQ(LoadStringA(ResourceModule(), 1, buffer, sizeof buffer), 0);
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(LoadStringA(ResourceModule(), IDS_GRAY + 65536, buffer, sizeof buffer), 0);
    EXPECT_EQ(LoadStringA(ResourceModule(), IDS_GRAY, buffer, 0), 0);
}

} // namespace
