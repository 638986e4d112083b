#pragma once

#include "settings/Options.h"

#include <QColor>
#include <QImage>
#include <QList>

namespace tarnwick {

/// What the playlist popover looks like behind its texts.
struct PopoverLook {
    PlaylistBackgroundOption option = PlaylistBackgroundOption::Standard;
    QList<QColor> gradientColors; ///< of the dynamic look
    QColor textColor = Qt::white; ///< of the dynamic look
    bool hasArrow = true;
    bool isPassePartout = false; ///< only what lies round the card's corners, to be laid over the list

    bool operator==(const PopoverLook&) const = default;
};

/// Points around the popover for its shadow and its arrow.
inline constexpr double popoverMargin = 24;

/// The popover of `width` by `height` points with its shadow, its arrow and the card for the list, with
/// `popoverMargin` around it, at `unit` device pixels a point. Premultiplied.
QImage paintPopover(const PopoverLook& look, double width, double height, double unit);

} // namespace tarnwick
