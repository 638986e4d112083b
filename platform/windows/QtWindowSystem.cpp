#include "platform/windows/QtWindowSystem.h"

#include "platform/windows/QtWindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>

#include <algorithm>

namespace tarnwick::windows {

namespace {

/// What desktops ask for. Larger ones would be copied to every window list there is.
constexpr int iconSides[] = {16, 22, 32, 48, 64, 128, 256};

} // namespace

QtWindowSystem::QtWindowSystem(dispatch::Dispatcher& dispatcher) : m_dispatcher(dispatcher) {}

QtWindowSystem::~QtWindowSystem() = default;

Window& QtWindowSystem::add(QWindow& window) {
    const auto& added = m_windows.emplace_back(std::make_unique<QtWindow>(window, m_dispatcher));
    connect(&window, &QObject::destroyed, this, [this, gone = added.get()] {
        std::erase_if(m_windows, [gone](const auto& held) { return held.get() == gone; });
    });
    return *added;
}

void QtWindowSystem::setApplicationIcon(const QImage& icon) {
    if (icon.isNull())
        return;
    m_icon = icon;
    QIcon all;
    for (const int side : iconSides)
        if (side <= std::max(icon.width(), icon.height()))
            all.addPixmap(
                QPixmap::fromImage(icon.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    QGuiApplication::setWindowIcon(all);
    for (const auto& window : m_windows) // one that has once shown the application's keeps that
        window->setIcon(all);
    Q_EMIT applicationIconChanged();
}

QList<Window*> QtWindowSystem::windows() const {
    QList<Window*> all;
    for (const auto& window : m_windows)
        all.append(window.get());
    return all;
}

} // namespace tarnwick::windows
