#pragma once

#include <QProcess>
#include <xcb/screensaver.h>

#include <cstdlib>
#include <memory>

namespace tarnwick {

/// An X server of its own, whose screen saver begins after a second without input.
class BlankingXServer {
public:
    BlankingXServer() {
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start("Xvfb", {"-displayfd", "1", "-screen", "0", "640x480x24", "-nolisten", "tcp"});
        while (!m_server.canReadLine() && m_server.waitForReadyRead()) {
        }
        if (const QByteArray number = m_server.readLine().trimmed(); !number.isEmpty())
            m_display = ':' + QString::fromLatin1(number);
        m_connection = xcb_connect(qPrintable(m_display), nullptr);
        xcb_set_screen_saver(m_connection, 1, 0, XCB_BLANKING_PREFERRED, XCB_EXPOSURES_DEFAULT);
        xcb_flush(m_connection);
    }
    BlankingXServer(const BlankingXServer&) = delete;
    BlankingXServer& operator=(const BlankingXServer&) = delete;
    ~BlankingXServer() {
        xcb_disconnect(m_connection);
        m_server.kill();
        m_server.waitForFinished();
    }

    /// Ends the screen saver, and the second begins anew.
    void wake() const {
        xcb_force_screen_saver(m_connection, XCB_SCREEN_SAVER_RESET);
        xcb_flush(m_connection);
    }

    bool isBlank() const {
        const auto root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const std::unique_ptr<xcb_screensaver_query_info_reply_t, decltype(&std::free)> info(
            xcb_screensaver_query_info_reply(m_connection, xcb_screensaver_query_info(m_connection, root),
                                             nullptr),
            &std::free);
        return info && info->state == XCB_SCREENSAVER_STATE_ON;
    }

    /// Empty when the server could not be started.
    const QString& display() const { return m_display; }

private:
    QProcess m_server;
    QString m_display;
    xcb_connection_t* m_connection = nullptr;
};

} // namespace tarnwick
