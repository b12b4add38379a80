#include "platform/win32.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

TEST(Rectangles, MoveCompareAndAreEmpty) {
    RECT rect = {1, 2, 3, 4};
    EXPECT_TRUE(OffsetRect(&rect, 10, -20));
    const RECT moved = {11, -18, 13, -16};
    EXPECT_TRUE(EqualRect(&rect, &moved));
    for (LONG RECT::*side : {&RECT::left, &RECT::top, &RECT::right, &RECT::bottom}) {
        RECT other = moved;
        ++(other.*side);
        EXPECT_FALSE(EqualRect(&rect, &other));
    }
    rect = {0, 0, INT_MAX, 1};
    EXPECT_TRUE(OffsetRect(&rect, 1, 0)) << "wraps";

    EXPECT_FALSE(IsRectEmpty(&moved));
    for (const RECT& empty : {RECT{0, 0, 0, 5}, RECT{0, 0, 5, 0}, RECT{4, 0, 3, 9}}) {
        EXPECT_TRUE(IsRectEmpty(&empty));
    }
    EXPECT_FALSE(OffsetRect(nullptr, 1, 1) || EqualRect(nullptr, &moved) ||
                 EqualRect(&moved, nullptr));
    EXPECT_TRUE(IsRectEmpty(nullptr));
}

} // namespace
