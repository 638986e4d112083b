#pragma once

#include "assets/CataloguePicture.h"
#include "canvas/type/TextInk.h"
#include "canvas/type/TypeItem.h"
#include "display/panel/Legibility.h"
#include "display/panel/PanelItem.h"
#include "tests/unit/display/SceneFixture.h"

namespace tarnwick {

/// Measures the display as it is painted, with the texts left out.
class LegibilityFixture : public SceneFixture {
protected:
    struct Worst {
        double share = 100; ///< of the contrast that is needed
        QString where;
    };

    /// The scene as it is now, without type and logo.
    QImage pictureWithoutType() {
        for (QQuickItem* item : itemsBelow(renderer->root())) {
            if (qobject_cast<TypeItem*>(item) || qobject_cast<CataloguePicture*>(item))
                item->setVisible(false);
        }
        return renderer->render();
    }

    PanelItem& panel() { return *renderer->root().findChild<PanelItem*>(); }

    /// The lines that are shown, and the contrast that each needs.
    std::vector<std::pair<QRectF, double>> panelBoxes() {
        std::vector<std::pair<QRectF, double>> boxes;
        const PanelLayout& layout = panel().layout();
        for (const PanelLine& line : layout.lines)
            boxes.emplace_back(line.box, neededContrast(typeSize(line.font)));
        if (layout.clock)
            boxes.emplace_back(layout.clock->box, 3);
        if (layout.logo)
            boxes.emplace_back(layout.logo->box, 4.5);
        if (layout.progress) {
            boxes.emplace_back(layout.progress->elapsed.box, 4.5);
            boxes.emplace_back(layout.progress->duration.box, 4.5);
        }
        return boxes;
    }

    /// The least share of the needed contrast that any block of 4 by 4 pixels under the boxes has.
    Worst worstOf(const QImage& picture, const std::vector<std::pair<QRectF, double>>& boxes) {
        const Colour ink = stage().shown().scene.text;
        Worst worst;
        for (const auto& [box, ratio] : boxes) {
            const QRect area = box.toRect() & picture.rect();
            for (int y = area.top(); y + 3 <= area.bottom(); y += 4) {
                for (int x = area.left(); x + 3 <= area.right(); x += 4) {
                    const double share = contrastOver(ink, meanAt(picture, x, y)) / ratio;
                    if (share < worst.share)
                        worst = {share, QStringLiteral("(%1, %2) of a box at %3, %4")
                                            .arg(x)
                                            .arg(y)
                                            .arg(box.x())
                                            .arg(box.y())};
                }
            }
        }
        return worst;
    }

    static Colour meanAt(const QImage& picture, int x, int y) {
        double red = 0;
        double green = 0;
        double blue = 0;
        for (int row = y; row < y + 4; ++row) {
            const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(row));
            for (int column = x; column < x + 4; ++column) {
                red += qRed(line[column]);
                green += qGreen(line[column]);
                blue += qBlue(line[column]);
            }
        }
        constexpr double whole = 16 * 255;
        return {red / whole, green / whole, blue / whole, 1};
    }
};

} // namespace tarnwick
