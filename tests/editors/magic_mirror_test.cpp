#include "editors/curve.h"
#include "preview/preview_control.h"
#include "tests/drive/drive.h"
#include "tests/editors/editor_dialog_test.h"
#include <zq/params.h>

#include <algorithm>

namespace {

constexpr int kCurve = 4298;
constexpr int kHorizontal = 4299;
constexpr int kAngular = 4302;
constexpr int kAxis = 4303;
constexpr int kPreset = 4304;
constexpr int kOperate = 4305;
constexpr int kLoad = 4306;
constexpr int kSave = 4307;
constexpr u32 kCurveMagic = 0x43435552;
constexpr u32 kFilterMagic = 0x43554446;

class MagicMirrorDialog : public EditorDialogTest {
protected:
    i32 Run(const DialogScript& script) {
        params_ = {};
        params_.mapping = kUntouched;
        return RunEffectDialog(56, colour_.Handle(), &params_, script);
    }

    Curve CurveNow() const {
        Curve curve;
        std::ranges::copy(params_.curve, curve.begin());
        return curve;
    }

    // What is shown is what is set: radio, axis and record.
    void ExpectMapping(HWND dialog, i32 mapping) const {
        const char* axes[] = {"x", "y", "r", "r", "r"};
        EXPECT_EQ(params_.mapping, mapping);
        for (int radio = kHorizontal; radio <= kAngular; ++radio) {
            EXPECT_EQ(IsChecked(dialog, radio), radio - kHorizontal == mapping) << radio;
        }
        EXPECT_EQ(TextOf(dialog, kAxis), axes[mapping]);
    }

    static SIZE CurveSize(HWND dialog) {
        RECT client{};
        GetClientRect(GetDlgItem(dialog, kCurve), &client);
        return {client.right, client.bottom};
    }

    // Every point of the curve is black on the control's picture, and nothing of another curve is.
    void ExpectPicture(HWND dialog) const {
        const Screen picture = ScreenOf(GetDlgItem(dialog, kCurve));
        const int width = picture.width - 2;
        const int height = picture.height - 2;
        int off = 0;
        for (int i = 0; i < 255; ++i) {
            const int y = height - params_.curve[i] * height / 255 + 1;
            off += picture.At(i * width / 255 + 1, y) == 0 ? 0 : 1;
        }
        EXPECT_EQ(off, 0) << "points of the curve are not drawn";
        int black = 0;
        for (int y = 0; y < picture.height; ++y) {
            for (int x = 0; x < picture.width; ++x) {
                black += picture.At(x, y) == 0 ? 1 : 0;
            }
        }
        int length = 0; // of the polyline, at most
        for (int i = 1; i < 256; ++i) {
            length += std::max(1, std::abs(params_.curve[i] - params_.curve[i - 1]));
        }
        EXPECT_LE(black, length) << "something else is drawn, too";
    }

    MagicMirrorParams params_;
};

TEST_F(MagicMirrorDialog, OpensWithTheIdentityAndGivesItBackAtOk) {
    EXPECT_EQ(Run([&](HWND dialog) {
                  EXPECT_EQ(TitleOf(dialog), "Magic Mirror");
                  EXPECT_EQ(TextOf(dialog, kPreset), "Circle");
                  ExpectMapping(dialog, 0);
                  EXPECT_EQ(CurveNow(), IdentityCurve());
                  ExpectPicture(dialog);
                  const auto* after = PreviewControlOf(GetDlgItem(dialog, kAfterPaneId));
                  EXPECT_EQ(after->params, static_cast<void*>(&params_));
                  EXPECT_TRUE(TakeAnnouncement(dialog));
                  PressOk(dialog);
              }),
              1);
    EXPECT_EQ(params_.mapping, 0);
    EXPECT_EQ(CurveNow(), IdentityCurve());
}

TEST_F(MagicMirrorDialog, ShowsTheMappingThatIsSetAndTakesAClickOnEveryOther) {
    for (const int chosen : {kAngular, kHorizontal + 1, kHorizontal + 2}) {
        EXPECT_EQ(Run([&](HWND dialog) {
                      ExpectMapping(dialog, 0);
                      TakeAnnouncement(dialog);
                      Click(dialog, kHorizontal);
                      EXPECT_FALSE(TakeAnnouncement(dialog)) << "it was checked already";
                      for (const int radio : {kHorizontal + 1, kHorizontal, chosen}) {
                          Click(dialog, radio);
                          ExpectMapping(dialog, radio - kHorizontal);
                          EXPECT_TRUE(TakeAnnouncement(dialog));
                      }
                      PressOk(dialog);
                  }),
                  1);
        EXPECT_EQ(params_.mapping, chosen - kHorizontal);
    }
}

TEST_F(MagicMirrorDialog, FollowsThePenAndRefreshesWhenItIsLifted) {
    Run([&](HWND dialog) {
        const HWND curve = GetDlgItem(dialog, kCurve);
        const auto [width, height] = CurveSize(dialog);
        TakeAnnouncement(dialog);
        const auto expect = [&](std::size_t index, int value) {
            EXPECT_EQ(params_.curve[index], value) << "at " << index;
            EXPECT_FALSE(TakeAnnouncement(dialog));
            ExpectPicture(dialog);
        };
        PressMouse(curve, {1, 1});
        expect(0, 255);
        PressMouse(curve, {width - 1, height - 1});
        expect(255, 0);
        PressMouse(curve, {0, 0});
        DragMouse(curve, {width, height});
        expect(1, 1);

        // From the lower left, out of the control and back in at the upper right.
        PressMouse(curve, {1, height - 1});
        DragMouse(curve, {-20, 5});
        DragMouse(curve, {30, height + 40});
        expect(100, 100);
        DragMouse(curve, {width - 1, 1});
        expect(255, 255);
        EXPECT_EQ(CurveNow(), IdentityCurve()) << "a straight line without a gap";

        MoveMouse(curve, {1, 1});
        expect(0, 0);
        ReleaseMouse(curve, {1, 1});
        EXPECT_TRUE(TakeAnnouncement(dialog));
        EXPECT_EQ(AnnouncedRecord(dialog, 1)[0], 0);
    });
}

TEST_F(MagicMirrorDialog, OperatesByThePresetThatIsChosenAndRemembersItAtOk) {
    const char* names[] = {"Circle", "Exponent",   "Logarithm", "Sine",  "Arcsine",
                           "Square", "Squareroot", "Reset",     "Smooth"};
    const auto choose = [](HWND dialog, int preset) {
        SendDlgItemMessageA(dialog, kPreset, CB_SETCURSEL, static_cast<WPARAM>(preset), 0);
    };
    for (int preset = 0; preset < 9; ++preset) {
        SCOPED_TRACE(names[preset]);
        EXPECT_EQ(Run([&](HWND dialog) {
                      EXPECT_EQ(TextOf(dialog, kPreset), names[std::max(preset - 1, 0)]);
                      choose(dialog, preset);
                      EXPECT_EQ(TextOf(dialog, kPreset), names[preset]);
                      Curve expected = IdentityCurve();
                      for (int times = 0; times < 2; ++times) {
                          TakeAnnouncement(dialog);
                          Click(dialog, kOperate);
                          EXPECT_TRUE(TakeAnnouncement(dialog));
                          ApplyPreset(expected, static_cast<CurvePreset>(preset));
                          EXPECT_EQ(CurveNow(), expected);
                          ExpectPicture(dialog);
                      }
                      PressOk(dialog);
                  }),
                  1);
    }
    EXPECT_EQ(Run([&](HWND dialog) { choose(dialog, 3); }), 0);
    Run([&](HWND dialog) {
        EXPECT_EQ(TextOf(dialog, kPreset), "Smooth") << "Cancel does not count";
        EXPECT_EQ(CurveNow(), IdentityCurve()) << "no curve outlasts its dialog";
        choose(dialog, 0);
        PressOk(dialog);
    });
}

TEST_F(MagicMirrorDialog, SavesAndLoadsCurves) {
    Run([&](HWND dialog) {
        Click(dialog, kOperate);
        Click(dialog, kAngular);
        const Curve saved = CurveNow();
        TakeAnnouncement(dialog);
        PressWithFile(dialog, kSave, Path("circle"));
        EXPECT_FALSE(TakeAnnouncement(dialog));
        const FileDialogRequest save = LastFileDialogRequest();
        EXPECT_TRUE(save.saves);
        EXPECT_EQ(save.owner, dialog);
        EXPECT_EQ(save.title, "Save Magic Curve");
        EXPECT_EQ(save.flags, 14u);
        EXPECT_EQ(Bytes("circle.MMC"),
                  FileBytes(kCurveMagic, 256, 3, 8, 256, {saved.begin(), saved.end()}));

        SendDlgItemMessageA(dialog, kPreset, CB_SETCURSEL, 7, 0);
        Click(dialog, kOperate);
        Click(dialog, kHorizontal);
        TakeAnnouncement(dialog);
        PressWithFile(dialog, kLoad, Path("circle.MMC"));
        const FileDialogRequest load = LastFileDialogRequest();
        EXPECT_FALSE(load.saves);
        EXPECT_EQ(load.title, "Load Magic Curve");
        EXPECT_EQ(load.filter, "Magic Curve (*.mmc)");
        EXPECT_EQ(load.pattern, "*.mmc");
        EXPECT_EQ(load.extension, ".MMC");
        EXPECT_EQ(load.flags, 12u);
        EXPECT_NE(load.folder, "");
        EXPECT_TRUE(TakeAnnouncement(dialog));
        EXPECT_EQ(CurveNow(), saved);
        ExpectMapping(dialog, 3);
        ExpectPicture(dialog);
        Click(dialog, kHorizontal);
        ExpectMapping(dialog, 0);
    });
}

TEST_F(MagicMirrorDialog, TakesFromAFileWhatItHolds) {
    struct {
        u16 entries;
        u16 mapping;
        u32 payloadSize;
        int taken;
        i32 shown;
    } const cases[] = {{100, 1, 256, 100, 1},    {256, 4, 256, 256, 4}, {256, 2, 0, 0, 2},
                       {256, 0, 2, 2, 0},        {256, 3, 255, 255, 3}, {300, 1, 300, 256, 1},
                       {256, 65535, 256, 256, 4}};
    for (const auto& file : cases) {
        SCOPED_TRACE(testing::Message() << file.entries << " entries, mapping " << file.mapping
                                        << ", " << file.payloadSize << " bytes");
        const std::vector<u8> payload(file.payloadSize, 77);
        Put("c.mmc",
            FileBytes(kCurveMagic, file.entries, file.mapping, 8, file.payloadSize, payload));
        EXPECT_EQ(Run([&](HWND dialog) {
                      PressWithFile(dialog, kLoad, Path("c.mmc"));
                      ExpectMapping(dialog, file.shown);
                      Curve expected = IdentityCurve();
                      std::fill_n(expected.begin(), file.taken, u8{77});
                      EXPECT_EQ(CurveNow(), expected);
                      Click(dialog, kAngular);
                      ExpectMapping(dialog, 3);
                      PressOk(dialog);
                  }),
                  1);
    }
}

TEST_F(MagicMirrorDialog, RefusesOtherFilesInSilenceAndGoesOn) {
    const std::vector<std::string> files = RefusedFiles(kCurveMagic, kFilterMagic);
    Run([&](HWND dialog) {
        Click(dialog, kOperate);
        Click(dialog, kAngular);
        const Curve before = CurveNow();
        const std::size_t windows = LiveWindowCount();
        for (const std::string& file : files) {
            SCOPED_TRACE(file);
            TakeAnnouncement(dialog);
            PressWithFile(dialog, kLoad, file);
            EXPECT_EQ(LiveWindowCount(), windows);
            EXPECT_TRUE(IsWindowEnabled(dialog));
            EXPECT_EQ(CurveNow(), before);
            ExpectMapping(dialog, 3);
            EXPECT_TRUE(TakeAnnouncement(dialog)) << "whatever came of it";
        }
        for (const std::string& file : {std::string("/dev/full"), Path("no/folder"), Path("")}) {
            PressWithFile(dialog, kSave, file);
            EXPECT_EQ(CurveNow(), before);
        }
        Click(dialog, kHorizontal);
        ExpectMapping(dialog, 0);
    });
}

} // namespace
