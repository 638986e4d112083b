#include "display/panel/PanelFonts.h"

#include <QStringList>

namespace tarnwick {

QFont systemFont() {
    QFont font;
    font.setFamilies({fonts::systemFontFamily(), QStringLiteral("Noto Sans"),
                      QStringLiteral("Noto Sans CJK JP"), QStringLiteral("Noto Sans Arabic"),
                      QStringLiteral("Noto Sans Hebrew")});
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

QFont panelFont(const QFont& font, int pixels, int weight) {
    QFont sized = font;
    sized.setPixelSize(qMax(1, pixels));
    sized.setHintingPreference(QFont::PreferVerticalHinting);
    if (!sized.styleName().isEmpty() && weight < QFont::DemiBold)
        return sized;
    sized.setStyleName({});
    sized.setWeight(static_cast<QFont::Weight>(weight));
    return sized;
}

} // namespace tarnwick
