#include "dialogs/catalogue.h"
#include "library/startup.h"
#include "preview/background.h"
#include "resources/module.h"
#include "tests/dialogs/dialog_driver.h"
#include "tests/drive/drive.h"
#include "tests/support/document_maker.h"
#include "tests/support/leak_guard.h"
#include <zq/zqui.h>

namespace {

class Exports : public LeakGuardTest {
protected:
    static void SetUpTestSuite() { LibraryEntry(ResourceModule()); }
};

TEST_F(Exports, RefuseEffectsWithoutADialogAndOpenNothing) {
    const TestDocument document(8, 8);
    for (EffectId effect = -1; effect <= 71; ++effect) {
        if (FindEffectRow(effect) == nullptr) {
            i32 word = 77;
            EXPECT_EQ(GetZQParam(effect, nullptr, document.Handle(), &word), -2) << effect;
            EXPECT_EQ(word, 77);
        }
    }
}

TEST_F(Exports, GiveZeroWithoutABufferAndOpenNothing) {
    const TestDocument document(8, 8);
    for (const EffectRow& row : EffectCatalogue()) {
        EXPECT_EQ(GetZQParam(row.id, nullptr, document.Handle(), nullptr), 0) << row.title;
    }
}

TEST_F(Exports, GiveTheAnswerOfADialogThatCannotBeOpened) {
    const TestDocument document(8, 8);
    LibraryEntry(ModuleWithoutDialogs());
    for (const EffectRow& row : EffectCatalogue()) {
        std::array<i32, 80> buffer{};
        EXPECT_EQ(GetZQParam(row.id, nullptr, document.Handle(), buffer.data()),
                  row.written == RecordWritten::Live || row.written == RecordWritten::AtOpeningAndOk
                      ? -2
                      : 0)
            << row.title;
    }
    LibraryEntry(ResourceModule());
}

TEST_F(Exports, KeepTheThreeBackgroundWords) {
    EXPECT_EQ(GetZquiBackgroundSetting(1, 2, 0xFFFFFFFFu), 1);
    EXPECT_EQ(backgroundWord0, 1);
    EXPECT_EQ(backgroundWord1, 2u);
    EXPECT_EQ(backgroundWord2, 0xFFFFFFFFu);
    GetZquiBackgroundSetting(0, 0, 0);
}

} // namespace
