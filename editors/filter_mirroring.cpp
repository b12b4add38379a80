#include "editors/filter_mirroring.h"

namespace {

struct Place {
    int row;
    int column;
};

std::vector<Place> Mirrored(Place place, FilterSymmetry symmetry) {
    const auto [row, column] = place;
    constexpr int kLast = kFilterSide - 1;
    constexpr int kCentre = kLast / 2;
    const Place beside{row, kLast - column};
    const Place opposite{kLast - row, column};
    switch (symmetry) {
    case FilterSymmetry::Horizontal:
        return {beside};
    case FilterSymmetry::Vertical:
        return {opposite};
    case FilterSymmetry::FourWay: {
        std::vector<Place> places = {beside, opposite, {kLast - row, kLast - column}};
        if (row == kCentre || column == kCentre) {
            places.insert(places.end(),
                          {{column, row}, {kLast - column, row}, {column, kLast - row}});
        }
        return places;
    }
    default:
        return {};
    }
}

} // namespace

std::vector<int> MirroredCells(int cell, FilterSymmetry symmetry) {
    std::vector<int> cells;
    for (const Place& place : Mirrored({cell / kFilterSide, cell % kFilterSide}, symmetry)) {
        const int other = place.row * kFilterSide + place.column;
        if (other != cell) {
            cells.push_back(other);
        }
    }
    return cells;
}
