#pragma once

#include "platform/fonts/FontRegistry.h"

#include <QFont>
#include <QString>

namespace tarnwick {

/// What turns the name of a font, as the preferences hold it, into a font.
class PanelFonts {
public:
    PanelFonts() = default;
    PanelFonts(const PanelFonts&) = delete;
    PanelFonts& operator=(const PanelFonts&) = delete;
    virtual ~PanelFonts() = default;

    /// The font of that PostScript name, or the system font when there is none; family and style are
    /// set, the size is the caller's.
    virtual QFont font(const QString& name) const = 0;
};

/// Knows the system font alone.
class SystemPanelFonts : public PanelFonts {
public:
    QFont font(const QString& name) const override;
};

/// Knows what is registered and installed.
class RegisteredPanelFonts : public PanelFonts {
public:
    /// `registry` must outlive it; null knows the system font alone.
    explicit RegisteredPanelFonts(const fonts::FontRegistry* registry) : m_registry(registry) {}

    QFont font(const QString& name) const override;

private:
    const fonts::FontRegistry* m_registry;
};

/// The system font: Inter, with faces beside it for the scripts that it lacks.
QFont systemFont();

/// `font` at a size in points and a weight of 100 to 900, laid out without rounding to whole pixels sideways.
/// A face that was named keeps its style; where a bold line is asked for it is set in the face's bolder cut,
/// if there is one.
QFont panelFont(const QFont& font, double points, int weight);

} // namespace tarnwick
