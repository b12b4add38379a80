#include "host/effect_offers.h"

#include "dialogs/catalogue.h"

#include <QMenu>

#include <algorithm>
#include <vector>

namespace {

constexpr EffectId kMaximumOrMinimum = 20;
constexpr const char* kOtherFamily = "&Other";

struct Family {
    const char* name;
    std::vector<EffectId> effects;
};

std::vector<Family> Families() {
    return {
        {"&Colour", {1, 2, 4, 7, 33, 67}},
        {"&Blur, Sharpen and Edges", {8, 17, 18, 20, 21, 22, 25}},
        {"&Artistic", {32, 34, 35, 36, 37, 38, 39, 40}},
        {"&Distortion", {41, 48, 49, 50, 56, 65}},
        {"&Relief and Motion", {51, 52, 53, 54}},
        {kOtherFamily, {}},
    };
}

bool Belongs(const EffectRow& row, const Family& family, const std::vector<Family>& families) {
    const auto holds = [&](const Family& each) {
        return std::ranges::find(each.effects, row.id) != each.effects.end();
    };
    return family.name == kOtherFamily ? std::ranges::none_of(families, holds) : holds(family);
}

std::vector<EffectOffer> MakeOffers() {
    std::vector<EffectOffer> offers;
    const std::vector<Family> families = Families();
    for (const Family& family : families) {
        for (const EffectRow& row : EffectCatalogue()) {
            if (!Belongs(row, family, families)) {
                continue;
            }
            if (row.id == kMaximumOrMinimum) {
                offers.push_back({row.id, "Maximum", family.name, 1});
                offers.push_back({row.id, "Minimum", family.name, 0});
            } else {
                offers.push_back({row.id, row.title, family.name, 0});
            }
        }
    }
    return offers;
}

// Marks the first letter that no entry above has taken; none where all are taken.
QString WithMnemonic(const QString& title, QString& taken) {
    for (qsizetype i = 0; i < title.size(); ++i) {
        const QChar letter = title[i].toLower();
        if (letter.isLetterOrNumber() && !taken.contains(letter)) {
            taken += letter;
            return QString(title).insert(i, '&');
        }
    }
    return title;
}

} // namespace

std::span<const EffectOffer> EffectOffers() {
    static const std::vector<EffectOffer> offers = MakeOffers();
    return offers;
}

const EffectOffer* FindEffectOffer(EffectId id) {
    const auto found = std::ranges::find(EffectOffers(), id, &EffectOffer::id);
    return found == EffectOffers().end() ? nullptr : &*found;
}

void AddEffectMenus(QMenu& menu, const std::function<void(const EffectOffer&)>& choose) {
    QMenu* family = nullptr;
    const char* familyName = nullptr;
    QString taken;
    for (const EffectOffer& offer : EffectOffers()) {
        if (offer.family != familyName) {
            familyName = offer.family;
            family = menu.addMenu(QString::fromLatin1(familyName));
            taken.clear();
        }
        family->addAction(WithMnemonic(QString::fromLatin1(offer.name), taken) + "...",
                          [choose, &offer] { choose(offer); });
    }
}
