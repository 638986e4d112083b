#include "platform/fonts/FontRegistry.h"

#include <QFile>
#include <QFontDatabase>
#include <fontconfig/fontconfig.h>
#include <ft2build.h>

#include <memory>
#include FT_FREETYPE_H

namespace tarnwick::fonts {

namespace {

// The largest fonts there are, with every character of Chinese, are a third of this.
constexpr qint64 maximumBytes = qint64{64} * 1024 * 1024;

struct NamedFace {
    QString name;
    FontFace face;
};

QByteArray contentsOf(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > maximumBytes)
        return {};
    return file.read(maximumBytes);
}

/// The names of the first face, as FreeType reads them; Qt lists light cuts under two families.
std::optional<NamedFace> firstFace(const QByteArray& bytes) {
    FT_Library library = nullptr;
    if (bytes.isEmpty() || FT_Init_FreeType(&library) != 0)
        return std::nullopt;
    const std::unique_ptr<FT_LibraryRec_, decltype(&FT_Done_FreeType)> libraryHolder(library,
                                                                                     FT_Done_FreeType);
    FT_Face face = nullptr;
    if (FT_New_Memory_Face(library, reinterpret_cast<const FT_Byte*>(bytes.constData()),
                           static_cast<FT_Long>(bytes.size()), 0, &face) != 0)
        return std::nullopt;
    const std::unique_ptr<FT_FaceRec_, decltype(&FT_Done_Face)> faceHolder(face, FT_Done_Face);
    const char* name = FT_Get_Postscript_Name(face);
    if (!name || *name == '\0')
        return std::nullopt;
    return NamedFace{QString::fromUtf8(name),
                     {QString::fromUtf8(face->family_name), QString::fromUtf8(face->style_name)}};
}

std::optional<FontFace> installedFace(const QString& name) {
    using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
    const Pattern pattern(FcPatternCreate(), FcPatternDestroy);
    const QByteArray bytes = name.toUtf8();
    FcPatternAddString(pattern.get(), FC_POSTSCRIPT_NAME,
                       reinterpret_cast<const FcChar8*>(bytes.constData()));
    const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> wanted(
        FcObjectSetBuild(FC_FAMILY, FC_STYLE, FC_POSTSCRIPT_NAME, nullptr), FcObjectSetDestroy);
    const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> fonts(
        FcFontList(nullptr, pattern.get(), wanted.get()), FcFontSetDestroy);
    const auto text = [](FcPattern* font, const char* object) {
        FcChar8* value = nullptr;
        return FcPatternGetString(font, object, 0, &value) == FcResultMatch
                   ? QString::fromUtf8(reinterpret_cast<const char*>(value))
                   : QString();
    };
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        // fontconfig compares without regard to letter case.
        if (text(fonts->fonts[i], FC_POSTSCRIPT_NAME) == name)
            return FontFace{text(fonts->fonts[i], FC_FAMILY), text(fonts->fonts[i], FC_STYLE)};
    }
    return std::nullopt;
}

/// What a style's name says of its width; empty for the usual one.
QString widthOf(const QString& style) {
    for (const char* word :
         {"SemiCondensed", "Semi Condensed", "ExtraCondensed", "Extra Condensed", "Condensed", "Narrow",
          "Compressed", "SemiExpanded", "Expanded", "Extended", "Wide"}) {
        if (style.contains(QLatin1String(word), Qt::CaseInsensitive))
            return QString::fromLatin1(word).remove(u' ');
    }
    return {};
}

} // namespace

QString bolderStyle(const FontFace& face) {
    const int weight = QFontDatabase::weight(face.family, face.style);
    const bool isSlanted = QFontDatabase::italic(face.family, face.style);
    const QString width = widthOf(face.style);
    QString bolder = face.style;
    int bolderWeight = weight;
    for (const QString& style : QFontDatabase::styles(face.family)) {
        const int other = QFontDatabase::weight(face.family, style);
        if (other <= weight || QFontDatabase::italic(face.family, style) != isSlanted ||
            widthOf(style) != width)
            continue;
        if (bolderWeight >= QFont::Bold && bolderWeight > weight
                ? other >= QFont::Bold && other < bolderWeight
                : other > bolderWeight) {
            bolder = style;
            bolderWeight = other;
        }
    }
    return bolder;
}

QString systemFontFamily() { return QStringLiteral("Inter"); }

std::optional<QString> postScriptName(const QString& path) {
    const auto found = firstFace(contentsOf(path));
    return found ? std::optional(found->name) : std::nullopt;
}

FontRegistry::~FontRegistry() {
    for (const Registration& registration : std::as_const(m_registered))
        QFontDatabase::removeApplicationFont(registration.id);
}

std::optional<QString> FontRegistry::add(const QString& path) {
    const QByteArray bytes = contentsOf(path);
    const auto found = firstFace(bytes);
    if (!found || m_registered.contains(found->name))
        return std::nullopt;
    const int id = QFontDatabase::addApplicationFontFromData(bytes);
    if (id < 0)
        return std::nullopt;
    FontFace face = found->face;
    const QStringList families = QFontDatabase::applicationFontFamilies(id);
    if (!families.contains(face.family) && !families.isEmpty())
        face.family = families.front();
    m_registered.insert(found->name, {id, face});
    return found->name;
}

void FontRegistry::remove(const QString& name) {
    const auto registration = m_registered.constFind(name);
    if (registration == m_registered.cend())
        return;
    QFontDatabase::removeApplicationFont(registration->id);
    m_registered.erase(registration);
}

std::optional<FontFace> FontRegistry::find(const QString& name) const {
    if (const auto registered = m_registered.constFind(name); registered != m_registered.cend())
        return registered->face;
    auto known = m_installed.constFind(name);
    if (known == m_installed.cend())
        known = m_installed.insert(name, name.isEmpty() ? std::nullopt : installedFace(name));
    return *known;
}

QFont FontRegistry::font(const QString& name) const {
    const auto face = find(name);
    QFont font(face ? face->family : systemFontFamily());
    if (face)
        font.setStyleName(face->style);
    return font;
}

} // namespace tarnwick::fonts
