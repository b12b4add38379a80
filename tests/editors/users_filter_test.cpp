#include "editors/filter_mirroring.h"
#include "preview/preview_control.h"
#include "tests/editors/editor_dialog_test.h"
#include <zq/params.h>

#include <algorithm>
#include <numeric>

namespace {

constexpr int kFirstCell = 4237;
constexpr int kCentre = 12;
constexpr int kScale = 4281;
constexpr int kBias = 4282;
constexpr int kNo = 4283;
constexpr int kFourWay = 4286;
constexpr int kLoad = 4287;
constexpr int kSave = 4288;
constexpr int kReset = 4289;
constexpr u32 kCurveMagic = 0x43435552;
constexpr u32 kFilterMagic = 0x43554446;

using Cells = std::vector<i32>;

Cells DefaultCells() {
    Cells cells(25, 0);
    cells[kCentre] = 1;
    return cells;
}

// scale, bias, symmetry, cells
std::vector<i32> Record(i32 scale, i32 bias, i32 symmetry, const Cells& cells) {
    std::vector<i32> record = {scale, bias, symmetry};
    record.insert(record.end(), cells.begin(), cells.end());
    return record;
}

void TypeCell(HWND dialog, int cell, const std::string& text) {
    SetDlgItemTextA(dialog, kFirstCell + cell, text.c_str());
}

Cells CellsShown(HWND dialog) {
    Cells cells;
    for (int cell = 0; cell < 25; ++cell) {
        cells.push_back(std::atoi(TextOf(dialog, kFirstCell + cell).c_str()));
    }
    return cells;
}

class UsersFilterDialog : public EditorDialogTest {
protected:
    i32 Run(const DialogScript& script) {
        buffer_ = {};
        return RunEffectDialog(25, colour_.Handle(), buffer_.words.data(), script);
    }

    std::vector<i32> Buffer() const { return buffer_.First(28); }

    CallerBuffer buffer_;
};

const std::vector<i32> kDefault = Record(1, 0, 0, DefaultCells());

TEST_F(UsersFilterDialog, OpensWithTheDefaultFilterAndGivesTheEditedOneAtOk) {
    EXPECT_EQ(Run([&](HWND dialog) {
                  EXPECT_EQ(TitleOf(dialog), "User's Filter");
                  EXPECT_EQ(CellsShown(dialog), DefaultCells());
                  EXPECT_EQ(TextOf(dialog, kScale), "1");
                  EXPECT_EQ(TextOf(dialog, kBias), "0");
                  EXPECT_TRUE(IsChecked(dialog, kNo));
                  EXPECT_EQ(Buffer(), kDefault);
                  EXPECT_EQ(AnnouncedRecord(dialog, 28), kDefault);
                  EXPECT_TRUE(TakeAnnouncement(dialog));

                  TypeCell(dialog, 3, "-7");
                  SetDlgItemInt(dialog, kScale, 4, TRUE);
                  SetDlgItemInt(dialog, kBias, 300, TRUE);
                  EXPECT_EQ(AnnouncedRecord(dialog, 7), (std::vector<i32>{4, 300, 0, 0, 0, 0, -7}));
                  EXPECT_EQ(Buffer(), kDefault) << "before OK";
                  PressOk(dialog);
              }),
              1);
    Cells cells = DefaultCells();
    cells[3] = -7;
    EXPECT_EQ(Buffer(), Record(4, 300, 0, cells));
    EXPECT_EQ(buffer_.words[28], kUntouched);

    EXPECT_EQ(Run([](HWND dialog) { TypeCell(dialog, 0, "5"); }), 0);
    EXPECT_EQ(Buffer(), kDefault);
}

TEST_F(UsersFilterDialog, MirrorsEveryCellUnderEverySymmetry) {
    Run([](HWND dialog) {
        int value = 100;
        for (int radio = kNo; radio <= kFourWay; ++radio) {
            TakeAnnouncement(dialog);
            const Cells before = CellsShown(dialog);
            Click(dialog, radio);
            EXPECT_EQ(CellsShown(dialog), before) << "the radio alone changes nothing";
            EXPECT_FALSE(TakeAnnouncement(dialog));
            const auto symmetry = static_cast<FilterSymmetry>(radio - kNo);
            for (int cell = 0; cell < 25; ++cell) {
                SCOPED_TRACE(testing::Message() << "cell " << cell << ", radio " << radio);
                Cells expected = CellsShown(dialog);
                value = value > 0 ? -value : 1 - value;
                expected[static_cast<std::size_t>(cell)] = value;
                for (const int other : MirroredCells(cell, symmetry)) {
                    expected[static_cast<std::size_t>(other)] = value;
                }
                TypeCell(dialog, cell, std::to_string(value));
                EXPECT_EQ(CellsShown(dialog), expected);
                EXPECT_TRUE(TakeAnnouncement(dialog));
                EXPECT_EQ(AnnouncedRecord(dialog, 28), Record(1, 0, radio - kNo, expected));
            }
        }
    });
}

TEST_F(UsersFilterDialog, GoesOnWithEmptyFieldsAndTakesThemAtOkForCancel) {
    for (const int field : {kFirstCell + 13, kFirstCell, kBias, kScale}) {
        for (const char* text : {"", "-", "x"}) {
            SCOPED_TRACE(testing::Message() << field << " \"" << text << '"');
            EXPECT_EQ(Run([&](HWND dialog) {
                          TypeCell(dialog, 11, "4");
                          TakeAnnouncement(dialog);
                          SetDlgItemTextA(dialog, field, text);
                          EXPECT_TRUE(TakeAnnouncement(dialog));
                          TypeCell(dialog, 24, "9");
                          // What stands behind the field keeps its earlier value.
                          EXPECT_EQ(AnnouncedRecord(dialog, 28)[27], field < kScale ? 0 : 9);
                          PressOk(dialog);
                      }),
                      0);
            Cells partly = DefaultCells();
            if (field != kFirstCell) {
                partly[11] = 4;
            }
            if (field > kFirstCell + 24) {
                partly[24] = 9;
            }
            EXPECT_EQ(Buffer(), Record(field == kScale ? 0 : 1, 0, 0, partly));
        }
    }
}

TEST_F(UsersFilterDialog, MirrorsAnEmptyCellAsZero) {
    Run([](HWND dialog) {
        Click(dialog, kNo + 1);
        TypeCell(dialog, 0, "8");
        TypeCell(dialog, 0, "");
        EXPECT_EQ(TextOf(dialog, kFirstCell), "");
        EXPECT_EQ(TextOf(dialog, kFirstCell + 4), "0");
    });
}

TEST_F(UsersFilterDialog, GoesBackToTheDefaultFilterAtReset) {
    Run([&](HWND dialog) {
        Click(dialog, kFourWay);
        TypeCell(dialog, 7, "6");
        SetDlgItemTextA(dialog, kScale, "");
        TakeAnnouncement(dialog);
        Click(dialog, kReset);
        EXPECT_EQ(CellsShown(dialog), DefaultCells());
        EXPECT_EQ(TextOf(dialog, kScale), "1");
        EXPECT_TRUE(IsChecked(dialog, kNo));
        EXPECT_FALSE(IsChecked(dialog, kFourWay));
        EXPECT_EQ(Buffer(), kDefault);
        EXPECT_TRUE(TakeAnnouncement(dialog));
        const auto* after = PreviewControlOf(GetDlgItem(dialog, kAfterPaneId));
        EXPECT_EQ(after->params, static_cast<void*>(buffer_.words.data()));
        TypeCell(dialog, 0, "2");
        EXPECT_NE(after->params, static_cast<void*>(buffer_.words.data()));
        EXPECT_EQ(AnnouncedRecord(dialog, 4), (std::vector<i32>{1, 0, 0, 2}));
    });
}

TEST_F(UsersFilterDialog, SavesWhatTheFieldsShow) {
    Run([&](HWND dialog) {
        TypeCell(dialog, 0, "-32769");
        TypeCell(dialog, 1, "");
        TypeCell(dialog, 2, "-5");
        SetDlgItemInt(dialog, kScale, 10, TRUE);
        Click(dialog, kFourWay);
        TakeAnnouncement(dialog);
        PressWithFile(dialog, kSave, Path("mine"));
        EXPECT_FALSE(TakeAnnouncement(dialog));
        const FileDialogRequest save = LastFileDialogRequest();
        EXPECT_TRUE(save.saves);
        EXPECT_EQ(save.title, "Save User Defined Filter");
        EXPECT_EQ(save.flags, 14u);
        Cells cells = DefaultCells();
        cells[0] = 32767;
        cells[2] = -5;
        cells.insert(cells.end(), {10, 0, 3});
        EXPECT_EQ(Bytes("mine.UDF"), FileBytes(kFilterMagic, 5, 5, 16, 56, Words(cells)));
        PressWithFile(dialog, kSave, "/dev/full");
        PressWithFile(dialog, kSave, Path("no/folder"));
        EXPECT_EQ(TextOf(dialog, kFirstCell + 2), "-5");
    });
}

TEST_F(UsersFilterDialog, LoadsAFilterAndMirrorsItByTheRadioThatWasChecked) {
    Cells cells(25);
    std::iota(cells.begin(), cells.end(), -3);
    std::vector<i32> values = cells;
    values.insert(values.end(), {7, -20, 2});
    Put("f.udf", FileBytes(kFilterMagic, 5, 5, 16, 56, Words(values)));
    for (int radio = kNo; radio <= kFourWay; ++radio) {
        SCOPED_TRACE(radio);
        // Later cells overwrite the mirrors of earlier ones.
        Cells expected = DefaultCells();
        for (int cell = 0; cell < 25; ++cell) {
            const i32 value = cells[static_cast<std::size_t>(cell)];
            expected[static_cast<std::size_t>(cell)] = value;
            for (const int other : MirroredCells(cell, static_cast<FilterSymmetry>(radio - kNo))) {
                expected[static_cast<std::size_t>(other)] = value;
            }
        }
        EXPECT_EQ(expected == cells, radio == kNo);
        EXPECT_EQ(Run([&](HWND dialog) {
                      Click(dialog, radio);
                      TakeAnnouncement(dialog);
                      PressWithFile(dialog, kLoad, Path("f.udf"));
                      EXPECT_TRUE(TakeAnnouncement(dialog));
                      EXPECT_EQ(CellsShown(dialog), expected);
                      EXPECT_TRUE(IsChecked(dialog, kNo + 2));
                      PressOk(dialog);
                  }),
                  1);
        EXPECT_EQ(Buffer(), Record(7, -20, 2, expected));
    }
    const FileDialogRequest load = LastFileDialogRequest();
    EXPECT_EQ(load.title, "Load User Defined Filter");
    EXPECT_EQ(load.filter, "User Defined Filter (*.udf)");
    EXPECT_EQ(load.extension, ".UDF");
    EXPECT_EQ(load.folder, "");
    EXPECT_EQ(load.flags, 12u);
}

TEST_F(UsersFilterDialog, TakesFromAFileWhatItHolds) {
    std::vector<i32> nines(150, 9);
    struct {
        u16 columns;
        u16 rows;
        u32 payloadSize;
        i32 cells; // that become 9
        bool others;
    } const cases[] = {{100, 5, 56, 25, true}, {5, 4, 56, 20, true},  {5, 5, 0, 0, false},
                       {5, 5, 2, 1, false},    {5, 5, 255, 25, true}, {5, 5, 300, 25, true},
                       {3, 100, 56, 15, true}};
    for (const auto& file : cases) {
        SCOPED_TRACE(testing::Message()
                     << file.columns << " x " << file.rows << ", " << file.payloadSize << " bytes");
        std::vector<u8> payload = Words(nines);
        payload.resize(file.payloadSize);
        Put("f.udf",
            FileBytes(kFilterMagic, file.columns, file.rows, 16, file.payloadSize, payload));
        Run([&](HWND dialog) {
            PressWithFile(dialog, kLoad, Path("f.udf"));
            const Cells shown = CellsShown(dialog);
            EXPECT_EQ(std::ranges::count(shown, 9), file.cells);
            EXPECT_EQ(TextOf(dialog, kScale), file.others ? "9" : "1");
            EXPECT_EQ(TextOf(dialog, kBias), file.others ? "9" : "0");
            EXPECT_EQ(IsChecked(dialog, kNo), !file.others) << "there is no ninth symmetry";
        });
    }
}

TEST_F(UsersFilterDialog, RefusesOtherFilesInSilence) {
    Run([&](HWND dialog) {
        TypeCell(dialog, 5, "55");
        const Cells before = CellsShown(dialog);
        const std::size_t windows = LiveWindowCount();
        TakeAnnouncement(dialog);
        for (const std::string& file : RefusedFiles(kFilterMagic, kCurveMagic)) {
            SCOPED_TRACE(file);
            PressWithFile(dialog, kLoad, file);
            EXPECT_EQ(LiveWindowCount(), windows);
            EXPECT_EQ(CellsShown(dialog), before);
            EXPECT_FALSE(TakeAnnouncement(dialog));
        }
    });
}

} // namespace
