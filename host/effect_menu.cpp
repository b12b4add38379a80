#include "host/effect_menu.h"

#include "dialogs/catalogue.h"

#include <QMenu>

namespace {

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

void FillEffectMenu(QMenu& menu, const std::function<void(EffectId)>& choose) {
    QString taken;
    for (const EffectRow& row : EffectCatalogue()) {
        const EffectId id = row.id;
        menu.addAction(WithMnemonic(QString::fromLatin1(row.title), taken) + "...",
                       [choose, id] { choose(id); });
    }
}
