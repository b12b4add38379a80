#include "host/effect_offers.h"

#include "dialogs/catalogue.h"
#include "tools/effect_table.h"

#include <QApplication>
#include <QMenu>

#include <gtest/gtest.h>

#include <cstring>
#include <set>
#include <string_view>
#include <vector>
#include <zq/params.h>

namespace {

TEST(EffectOffers, HaveEveryEffectOnceAndMaximumAndMinimumBoth) {
    std::multiset<EffectId> ids;
    for (const EffectOffer& offer : EffectOffers()) {
        ids.insert(offer.id);
        EXPECT_EQ(offer.hasDialog, FindEffectRow(offer.id) != nullptr);
    }
    for (const EffectDescription& effect : EffectTable()) {
        EXPECT_EQ(ids.count(effect.id), effect.id == 20 ? 2u : 1u) << effect.title;
    }
    EXPECT_EQ(ids.size(), EffectTable().size() + 1);
    EXPECT_GE(ids.size(), 31u + 14u + 1u);
    EXPECT_EQ(FindEffectOffer(69), nullptr);
}

TEST(EffectOffers, BeginWithTheirDefaults) {
    const auto word = [](const EffectOffer& offer, std::size_t index) {
        i32 value = 0;
        std::memcpy(&value, DefaultRecord(offer).data() + index * sizeof(value), sizeof(value));
        return value;
    };
    EXPECT_EQ(word(*FindEffectOffer(70), 0), 200);
    EXPECT_EQ(word(*FindEffectOffer(57), 1), 30);
    for (const EffectOffer& offer : EffectOffers()) {
        if (offer.id == 20) {
            EXPECT_EQ(word(offer, 1), std::string_view(offer.name) == "Maximum" ? 1 : 0);
        }
    }
}

TEST(EffectOffers, StandInMenusWithALetterOfTheirOwn) {
    int count = 1;
    char name[] = "host_widgets_test";
    char* arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    QMenu menu;
    std::vector<EffectId> chosen;
    AddEffectMenus(menu, [&](const EffectOffer& offer) { chosen.push_back(offer.id); });
    std::vector<EffectId> expected;
    for (const EffectOffer& offer : EffectOffers()) {
        expected.push_back(offer.id);
    }
    ASSERT_EQ(menu.actions().size(), 5);
    for (const QAction* family : menu.actions()) {
        std::set<QChar> letters;
        for (QAction* action : family->menu()->actions()) {
            const QString text = action->text();
            SCOPED_TRACE(text.toStdString());
            const qsizetype mark = text.indexOf('&');
            ASSERT_GE(mark, 0);
            EXPECT_TRUE(letters.insert(text[mark + 1].toLower()).second);
            action->trigger();
            EXPECT_EQ(text.endsWith("..."), FindEffectRow(chosen.back()) != nullptr);
        }
    }
    EXPECT_EQ(chosen, expected);
}

} // namespace
