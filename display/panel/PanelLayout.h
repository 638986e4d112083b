#pragma once

#include "display/panel/PanelFonts.h"
#include "display/panel/PanelSizes.h"

#include <QObject>
#include <QRectF>
#include <QStringList>
#include <QtQmlIntegration/qqmlintegration.h>

#include <optional>
#include <vector>

namespace tarnwick {

/// The parts of the panel, top to bottom. Each but the lines of a text stands or falls as a whole.
enum class PanelBlock { Progress, Title, Artist, Album, Logo, Details, Clock, Flags, Comment };

/// What the panel has to say. An empty text is not shown.
struct PanelFacts {
    /// The times of the progress row, which is shown when there is one. Only their shape counts.
    std::optional<QString> elapsed;
    QString duration;

    QString labels; ///< number and disc, before the title
    QString title;
    QString artist; ///< in capitals
    QString album;
    QString group;
    QString year;
    QString logo;                 ///< name of a picture
    double logoAspect = 1;        ///< its width by its height
    QStringList details;          ///< a line each
    std::optional<QString> clock; ///< the clock is shown when there is one; only its shape counts
    QString date;
    QStringList flags; ///< names of pictures
    QString comment;

    QString trackFont; ///< names for `PanelFonts`
    QString clockFont;

    friend bool operator==(const PanelFacts&, const PanelFacts&) = default;
};

// All positions and sizes of a layout are points in the window.

/// One line of text. Its ink ends where every line's does.
struct PanelLine {
    PanelBlock block = PanelBlock::Title;
    QString text;
    QFont font;
    double x = 0; ///< where the text begins; its ink may begin a little further right
    double baseline = 0;
    QRectF box{};         ///< as wide as the ink, as high as the line
    bool clipped = false; ///< the ink is taller than any line may be and is cut off at the box
    QString spoken{};     ///< for a screen reader: the whole text at its first line, empty at the others

    friend bool operator==(const PanelLine&, const PanelLine&) = default;
};

/// A text of figures and colons that changes: each figure stands in the middle of a cell.
struct PanelFigures {
    Q_GADGET
    QML_VALUE_TYPE(panelFigures)
    Q_PROPERTY(QFont font MEMBER font)
    Q_PROPERTY(double baseline MEMBER baseline)
    Q_PROPERTY(double raise MEMBER raise)
    Q_PROPERTY(QRectF box MEMBER box)

public:
    QFont font;
    double baseline = 0;
    double raise = 0; ///< how far colons stand above the baseline
    QRectF box;

    friend bool operator==(const PanelFigures&, const PanelFigures&) = default;
};

/// The row at the top.
struct PanelProgress {
    PanelFigures elapsed;
    QRectF bar; ///< round at both ends
    PanelFigures duration;

    friend bool operator==(const PanelProgress&, const PanelProgress&) = default;
};

/// A picture of the catalogue.
struct PanelPicture {
    Q_GADGET
    QML_VALUE_TYPE(panelPicture)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QRectF box MEMBER box)

public:
    QString name;
    QRectF box;

    friend bool operator==(const PanelPicture&, const PanelPicture&) = default;
};

/// Everything the panel shows and where it stands.
struct PanelLayout {
    std::optional<PanelProgress> progress;
    std::vector<PanelLine> lines; ///< top to bottom
    std::optional<PanelPicture> logo;
    std::optional<PanelFigures> clock; ///< its date is among the lines
    std::vector<PanelPicture> flags;

    friend bool operator==(const PanelLayout&, const PanelLayout&) = default;

    /// What a block covers; empty when it is not there.
    QRectF bounds(PanelBlock block) const;

    /// Whether a block gives way to a bar that covers `bar`: a clock, flags, comment or details that come
    /// within `margin` of it.
    bool givesWay(PanelBlock block, const QRectF& bar, double margin) const;
};

/// Puts the facts into the top right corner of `frame`. Lines that are too wide are set smaller and then
/// cut; lines, and blocks that go as a whole, that do not fit the height are left out from below.
PanelLayout layoutPanel(const PanelFacts& facts, const PanelFrame& frame, const PanelFonts& fonts);

} // namespace tarnwick
