#include "app/program/PreferencesDoor.h"

namespace tarnwick {

PreferencesDoor::PreferencesDoor(Parts parts)
    : m_parts(std::move(parts)),
      m_model({.settings = m_parts.settings,
               .importFonts =
                   [this](bool isClock) {
                       importFonts(isClock, m_parts.chooseFonts, m_parts.clockFonts, m_parts.trackInfoFonts);
                   },
               .removeFont =
                   [this](bool isClock, const QString& name) {
                       BaseFontManager* manager = &m_parts.trackInfoFonts;
                       if (isClock)
                           manager = &m_parts.clockFonts;
                       manager->removeFont(name);
                   }}),
      m_opener(m_parts.engine, m_parts.settings, m_model, [this](QQuickWindow& window) {
          window.setScreen(m_parts.mainWindow.screen());
          window.setTransientParent(&m_parts.mainWindow); // which it stays above, whatever that one's level
          m_window = &m_parts.windows.add(window);
      }) {
    m_model.follow(m_parts.clockFonts, true);
    m_model.follow(m_parts.trackInfoFonts, false);
}

windows::Window* PreferencesDoor::open() {
    m_opener.open();
    return m_opener.window() ? m_window : nullptr;
}

} // namespace tarnwick
