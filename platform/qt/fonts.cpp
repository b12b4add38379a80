#include "platform/qt/drawing_objects.h"
#include "platform/qt/graphics.h"

#include <QFontMetrics>

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

namespace {

constexpr const char* kInstalledSans = "Liberation Sans";
constexpr int kDialogPoints = 10;
constexpr int kDefaultPixels = 12;
constexpr int kBoldWeight = 600;

// The system's bitmap fonts and their kin. No face at all is one of them.
bool IsSystemSans(const QString& face) {
    for (const char* name :
         {"", "MS Sans Serif", "MS Shell Dlg", "MS Shell Dlg 2", "Helv", "Arial", "System"}) {
        if (face.compare(QLatin1String(name), Qt::CaseInsensitive) == 0) {
            return true;
        }
    }
    return false;
}

// At 96 dots per inch, rounded.
int PixelsOfPoints(int points) {
    return (points * 96 + 36) / 72;
}

LOGFONTA TemplateFont(const char* face, int points) {
    LOGFONTA font{};
    font.lfHeight = -PixelsOfPoints(points);
    font.lfWeight = 400;
    std::strncpy(font.lfFaceName, face, sizeof font.lfFaceName - 1);
    return font;
}

// A positive height is that of the whole cell, a negative one that of the characters.
void SetHeight(QFont& font, int height) {
    if (height == 0) {
        font.setPixelSize(kDefaultPixels);
        return;
    }
    font.setPixelSize(height < 0 ? -height : height);
    if (height > 0) {
        const int cell = std::max(QFontMetrics(font).height(), 1);
        font.setPixelSize(std::max(height * height / cell, 1));
    }
}

QFont MakeFont(const LOGFONTA& description) {
    const auto length = strnlen(description.lfFaceName, sizeof description.lfFaceName);
    const QString face =
        QString::fromLatin1(description.lfFaceName, static_cast<qsizetype>(length));
    QFont font;
    font.setFamilies(IsSystemSans(face) ? QStringList{kInstalledSans}
                                        : QStringList{face, kInstalledSans});
    font.setStyleHint(QFont::SansSerif);
    font.setBold(description.lfWeight >= kBoldWeight);
    font.setItalic(description.lfItalic != 0);
    font.setUnderline(description.lfUnderline != 0);
    font.setStrikeOut(description.lfStrikeOut != 0);
    SetHeight(font, std::clamp(description.lfHeight, -1000, 1000));
    return font;
}

} // namespace

QFont FontOfHandle(HFONT font) {
    const DrawingObject* object = FindDrawingObject(font);
    if (object == nullptr || object->kind != DrawingObjectKind::Font) {
        return MakeFont(TemplateFont("", kDialogPoints));
    }
    return MakeFont(object->font);
}

HFONT FontForTemplate(const char* face, int points) {
    static auto* fonts = new std::map<std::pair<std::string, int>, HFONT>;
    HFONT& font = (*fonts)[{face, points}];
    if (font == nullptr) {
        font = AddDrawingObject({DrawingObjectKind::Font, 0, TemplateFont(face, points), true});
    }
    return font;
}

QSize DialogBaseUnits(const char* face, int points) {
    // Those of the system's own bitmap fonts, so that dialogs have one size everywhere.
    if (IsSystemSans(QString::fromLatin1(face))) {
        if (points == kDialogPoints) {
            return {8, 16};
        }
        if (points == 8) {
            return {6, 13};
        }
    }
    const QFontMetrics metrics(MakeFont(TemplateFont(face, points)));
    const int letters = metrics.horizontalAdvance(
        QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz"));
    return {std::max((letters / 26 + 1) / 2, 1), std::max(metrics.height(), 1)};
}
