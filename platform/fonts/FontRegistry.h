#pragma once

#include <QFont>
#include <QHash>
#include <QString>

#include <optional>

namespace tarnwick::fonts {

/// What Qt needs to draw one face and no other.
struct FontFace {
    QString family;
    QString style;

    friend bool operator==(const FontFace&, const FontFace&) = default;
};

/// The family of texts whose font is not chosen, or cannot be found.
QString systemFontFamily();

/// The style of `face`'s family in which a bold line is set beside it: as slanted and as wide, bold, or where
/// it is bold itself the next heavier one; where there is none of these the heaviest that is heavier. Its own
/// style when there is nothing heavier.
QString bolderStyle(const FontFace& face);

/// The PostScript name of the first face of a font file; none when it is no font or its face has none.
std::optional<QString> postScriptName(const QString& path);

/// The fonts that this process has registered for itself. Main thread only.
class FontRegistry {
public:
    FontRegistry() = default;
    FontRegistry(const FontRegistry&) = delete;
    FontRegistry& operator=(const FontRegistry&) = delete;
    ~FontRegistry();

    /// Registers the first face of a font file and returns its PostScript name. None when the file is no
    /// font that can be drawn, its face has no name, or a font of that name is registered already.
    std::optional<QString> add(const QString& path);

    /// Takes back the font of that name; one that is not registered changes nothing.
    void remove(const QString& name);

    /// The face that bears a PostScript name: a registered one, else an installed one. None when there is
    /// none. Letter case matters.
    std::optional<FontFace> find(const QString& name) const;

    /// As `find`, for drawing: the system font when there is none.
    QFont font(const QString& name) const;

private:
    struct Registration {
        int id; ///< of Qt
        FontFace face;
    };

    QHash<QString, Registration> m_registered;
    mutable QHash<QString, std::optional<FontFace>> m_installed; ///< what was looked up so far
};

} // namespace tarnwick::fonts
