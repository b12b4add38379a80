#include "host/effect_offers.h"

#include "dialogs/catalogue.h"
#include "tools/effect_table.h"

#include <QMenu>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>
#include <zq/params.h>

namespace {

constexpr EffectId kMaximumOrMinimum = 20;

struct Family {
    const char* name;
    std::vector<EffectId> effects;
};

std::vector<Family> Families() {
    return {
        {"&Colour", {1, 2, 3, 4, 5, 6, 7, 23, 24, 33, 67, 70}},
        {"&Blur, Sharpen and Edges", {8, 9, 16, 17, 18, 19, 20, 21, 22, 25}},
        {"&Artistic", {32, 34, 35, 36, 37, 38, 39, 40, 68}},
        {"&Distortion", {41, 48, 49, 50, 55, 56, 57, 64, 65, 66}},
        {"&Relief and Motion", {51, 52, 53, 54}},
    };
}

void AddOffers(EffectId id, const char* family, std::vector<EffectOffer>& offers) {
    const EffectRow* dialog = FindEffectRow(id);
    if (id == kMaximumOrMinimum) {
        offers.push_back({id, "Maximum", family, dialog != nullptr, 1});
        offers.push_back({id, "Minimum", family, dialog != nullptr, 0});
    } else {
        const char* name = dialog != nullptr ? dialog->title : FindEffect(id)->title;
        offers.push_back({id, name, family, dialog != nullptr, 0});
    }
}

std::vector<EffectOffer> MakeOffers() {
    std::vector<EffectOffer> offers;
    for (const Family& family : Families()) {
        for (const EffectId id : family.effects) {
            AddOffers(id, family.name, offers);
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

EffectRecord DefaultRecord(const EffectOffer& offer) {
    static_assert(sizeof(EffectRecord) >= sizeof(MagicMirrorParams));
    EffectRecord record = {};
    const EffectDescription& effect = *FindEffect(offer.id);
    if (effect.defaults != nullptr) {
        std::memcpy(record.data(), effect.defaults, std::min(effect.recordBytes, record.size()));
    }
    if (offer.id == kMaximumOrMinimum) {
        std::memcpy(record.data() + offsetof(RankFilterParams, takeMaximum), &offer.takeMaximum,
                    sizeof(offer.takeMaximum));
    }
    return record;
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
        const char* more = offer.hasDialog ? "..." : "";
        family->addAction(WithMnemonic(QString::fromLatin1(offer.name), taken) + more,
                          [choose, &offer] { choose(offer); });
    }
}
