#pragma once

#include "platform/images/Image.h"

#include <QColor>
#include <QHash>
#include <QImage>
#include <QStringList>

#include <memory>
#include <mutex>
#include <optional>

namespace tarnwick {

/// The pictures that come with the program, by name. Any thread may ask; what a name stands for never
/// changes. Names are case-sensitive, and one that is missing gives no picture.
class Catalogue {
public:
    enum class Kind {
        Picture, ///< "AppIcon", "applogo800", "nocover"
        Disc,    ///< the disc pictures and their blanks
        Logo,    ///< file formats
        Flag,    ///< countries
        Symbol,  ///< monochrome, takes the tint it is asked for
    };

    /// The catalogue of the program.
    static const Catalogue& shared();

    /// The catalogue that lies under `root`, a folder with one folder a kind.
    explicit Catalogue(const QString& root);

    bool contains(const QString& name) const { return m_entries.contains(name); }

    /// None when the name is missing.
    std::optional<Kind> kind(const QString& name) const;

    /// Every name of a kind, sorted.
    QStringList names(Kind kind) const;

    /// The size in which the picture was drawn; its proportions matter more. Empty when missing.
    QSize naturalSize(const QString& name) const;

    /// The picture at `size` device pixels, premultiplied, fitted to it exactly. Rendered once and kept
    /// for as long as somebody holds it. Vectors take milliseconds, discs tens of them, so ask for
    /// discs off the main thread. `tint` colours symbols and is ignored by the rest. Null when the
    /// name is missing or the size empty.
    std::shared_ptr<const QImage> picture(const QString& name, QSize size,
                                          const QColor& tint = Qt::black) const;

    /// A handle on the picture at its natural size, decoded when its pixels are first asked for. The
    /// same handle as long as one is alive. None when missing.
    std::optional<images::Image> image(const QString& name) const;

    /// The name of a handle that came from `image`; empty for any other picture.
    QString nameOf(const images::Image& image) const;

private:
    struct Entry {
        Kind kind;
        QString path;
    };

    QImage render(const Entry& entry, QSize size, const QColor& tint) const;

    QHash<QString, Entry> m_entries;
    mutable std::mutex m_mutex;
    mutable QHash<QString, QSize> m_sizes; ///< natural ones, of what was asked for
    mutable QHash<QString, std::weak_ptr<const QImage>> m_rendered;
    mutable QHash<QString, std::weak_ptr<images::Image::Content>> m_handles;
};

} // namespace tarnwick
