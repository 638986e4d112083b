#include "display/panel/PanelFonts.h"

#include "canvas/type/TextInk.h"

#include <QStringList>

namespace tarnwick {

QFont systemFont() {
    QFont font;
    font.setFamilies({fonts::systemFontFamily(), QStringLiteral("Noto Sans"),
                      QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Noto Sans Arabic"),
                      QStringLiteral("Noto Sans Hebrew"), QStringLiteral("Noto Color Emoji")});
    return font;
}

QFont SystemPanelFonts::font(const QString& /*name*/) const { return systemFont(); }

QFont RegisteredPanelFonts::font(const QString& name) const {
    const auto face = m_registry ? m_registry->find(name) : std::nullopt;
    QFont font = systemFont();
    if (face) {
        font.setFamilies(QStringList(face->family) + font.families());
        font.setStyleName(face->style);
    }
    return font;
}

QFont panelFont(const QFont& font, double points, int weight) {
    QFont sized = sizedFont(font, points);
    sized.setHintingPreference(QFont::PreferVerticalHinting);
    if (sized.styleName().isEmpty())
        sized.setWeight(static_cast<QFont::Weight>(weight));
    else if (weight >= QFont::DemiBold)
        sized.setStyleName(fonts::bolderStyle({sized.families().constFirst(), sized.styleName()}));
    return sized;
}

} // namespace tarnwick
