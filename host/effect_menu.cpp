#include "host/effect_menu.h"

#include "dialogs/catalogue.h"

#include <QMenu>

void FillEffectMenu(QMenu& menu, const std::function<void(EffectId)>& choose) {
    for (const EffectRow& row : EffectCatalogue()) {
        const EffectId id = row.id;
        menu.addAction(QString::fromLatin1(row.title) + QStringLiteral("..."),
                       [choose, id] { choose(id); });
    }
}
