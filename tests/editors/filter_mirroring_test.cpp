#include "editors/filter_mirroring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

constexpr int Cell(int row, int column) {
    return 5 * row + column;
}

using Cells = std::vector<int>;

} // namespace

TEST(Mirroring, WritesTheCellsThatTheSymmetryAsksForInTheirOrder) {
    const struct {
        int cell;
        Cells horizontal;
        Cells vertical;
        Cells fourWay;
    } kTable[] = {
        {Cell(0, 1), {Cell(0, 3)}, {Cell(4, 1)}, {Cell(0, 3), Cell(4, 1), Cell(4, 3)}},
        {Cell(3, 4), {Cell(3, 0)}, {Cell(1, 4)}, {Cell(3, 0), Cell(1, 4), Cell(1, 0)}},
        {Cell(2, 0),
         {Cell(2, 4)},
         {},
         {Cell(2, 4), Cell(2, 4), Cell(0, 2), Cell(4, 2), Cell(0, 2)}},
        {Cell(1, 2),
         {},
         {Cell(3, 2)},
         {Cell(3, 2), Cell(3, 2), Cell(2, 1), Cell(2, 1), Cell(2, 3)}},
        {Cell(2, 2), {}, {}, {}},
    };
    for (const auto& row : kTable) {
        SCOPED_TRACE(row.cell);
        EXPECT_EQ(MirroredCells(row.cell, FilterSymmetry::None), Cells{});
        EXPECT_EQ(MirroredCells(row.cell, FilterSymmetry::Horizontal), row.horizontal);
        EXPECT_EQ(MirroredCells(row.cell, FilterSymmetry::Vertical), row.vertical);
        EXPECT_EQ(MirroredCells(row.cell, FilterSymmetry::FourWay), row.fourWay);
    }
}

// Whichever cell of a family is changed, all others follow.
TEST(Mirroring, TiesTheSameCellsTogetherFromEachOfThem) {
    for (const auto symmetry :
         {FilterSymmetry::Horizontal, FilterSymmetry::Vertical, FilterSymmetry::FourWay}) {
        for (int cell = 0; cell < kFilterCells; ++cell) {
            const auto familyOf = [symmetry](int one) {
                const Cells others = MirroredCells(one, symmetry);
                EXPECT_EQ(std::ranges::count(others, one), 0) << "the cell itself";
                std::set<int> family(others.begin(), others.end());
                family.insert(one);
                return family;
            };
            const std::set<int> family = familyOf(cell);
            for (const int other : family) {
                EXPECT_EQ(familyOf(other), family) << cell << " and " << other;
            }
        }
    }
}
