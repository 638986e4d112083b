#pragma once

#include <QColor>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>

namespace tarnwick {

/// Covers that try the colours which are taken from them; any number, each `side` pixels square.
inline QImage testCover(int number, int side = 240) {
    QImage cover(side, side, QImage::Format_RGB32);
    QPainter painter(&cover);
    const auto upright = [&](std::initializer_list<QColor> colours) {
        QLinearGradient gradient(0, 0, 0, side);
        double place = 0;
        for (const QColor& colour : colours) {
            gradient.setColorAt(place, colour);
            place += 1.0 / static_cast<double>(colours.size() - 1);
        }
        painter.fillRect(cover.rect(), gradient);
    };
    switch (number) {
    case 0:
        upright({"#fbfbf8", "#eceae4"});
        break; // a white sleeve
    case 1:
        upright({"#0b0b10", "#141018"});
        break; // near black
    case 2:
        upright({"#22345f", "#8c5a6a", "#f0a060", "#241a3a"});
        break; // dusk
    case 3:
        upright({"#eaf2f4", "#9fc4cc", "#1f5f78"});
        break; // pale blue sea
    case 4:
        upright({"#777777", "#757575"});
        break; // where both texts tie
    case 5:    // black beside white
        painter.fillRect(cover.rect(), Qt::black);
        painter.fillRect(side / 2, 0, side / 2, side, Qt::white);
        break;
    case 6: // poster colours
        painter.fillRect(cover.rect(), QColor("#123c5c"));
        painter.fillRect(0, 0, side / 2, side / 2, QColor("#e34a33"));
        painter.setBrush(QColor("#f3c95f"));
        painter.drawEllipse(side / 4, side / 4, side / 2, side / 2);
        break;
    case 7: // a fine chequer
        for (int y = 0; y < side; y += 6) {
            for (int x = 0; x < side; x += 6)
                painter.fillRect(x, y, 6, 6,
                                 (x / 6 + y / 6) % 2 == 0 ? QColor("#ffe14a") : QColor("#1b2bb0"));
        }
        break;
    default: { // blocks of any colour, from a plain generator
        quint32 state = static_cast<quint32>(number) * 2654435761U;
        const auto next = [&state](int below) {
            state = state * 1664525U + 1013904223U;
            return static_cast<int>((state >> 16) % static_cast<quint32>(below));
        };
        upright({QColor::fromHsv(next(360), next(256), next(256)),
                 QColor::fromHsv(next(360), next(256), next(256))});
        for (int block = next(9); block > 0; --block)
            painter.fillRect(next(side), next(side), next(side), next(side),
                             QColor::fromHsv(next(360), next(256), next(256)));
    }
    }
    painter.end();
    return cover;
}

} // namespace tarnwick
