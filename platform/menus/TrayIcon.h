#pragma once

#include "platform/menus/MenuExport.h"

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QImage>

namespace tarnwick::menus {

/// One picture of an icon as the bus carries it: 32 bits a pixel, alpha first, in network order.
struct IconPicture {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};

/// What is shown when the pointer rests on the icon.
struct ToolTip {
    QString icon;
    QList<IconPicture> pictures;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const IconPicture& picture);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPicture& picture);
QDBusArgument& operator<<(QDBusArgument& argument, const ToolTip& tip);
const QDBusArgument& operator>>(const QDBusArgument& argument, ToolTip& tip);

/// The application in the desktop's tray, as a StatusNotifierItem. Without a tray there is nothing to see.
class TrayIcon : public QObject {
    Q_OBJECT

public:
    /// `name` is the application's name to the user, `identifier` that of its icon in the theme. `model`
    /// must outlive this object. Returns at once.
    TrayIcon(MenuModel& model, const QDBusConnection& bus, const QString& name, const QString& identifier);
    ~TrayIcon() override;

    /// Shows `icon` instead of the one in the theme; null takes it back.
    void setIcon(const QImage& icon);

    /// Whether a tray has taken the icon in and somebody draws what is in it.
    bool isShown() const { return m_isTaken && m_hasHost; }

Q_SIGNALS:
    /// The user pressed the icon itself.
    void activated();
    /// The user pressed it with the middle button.
    void secondaryActivated();
    /// The user turned the wheel over it, by so many eighths of a degree; away is positive.
    void turned(int eighths);

private Q_SLOTS:
    void askForHost();

private:
    void announce();

    QDBusConnection m_bus;
    MenuExport m_export;
    QDBusServiceWatcher m_watcher;
    class TrayAdaptor* m_adaptor;
    bool m_isTaken = false;
    bool m_hasHost = false;
};

/// The interface as the bus sees it. The names are the protocol's.
class TrayAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")
    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QList<tarnwick::menus::IconPicture> IconPixmap READ iconPixmap)
    Q_PROPERTY(tarnwick::menus::ToolTip ToolTip READ toolTip)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QDBusObjectPath Menu READ menu)

public:
    TrayAdaptor(TrayIcon* parent, QString name, QString identifier);

    void setPictures(QList<IconPicture> pictures);

    QString category() const { return QStringLiteral("ApplicationStatus"); }
    QString id() const { return m_identifier; }
    QString title() const { return m_name; }
    QString status() const { return QStringLiteral("Active"); }
    int windowId() const { return 0; }
    QString iconName() const { return m_pictures.isEmpty() ? m_identifier : QString(); }
    QList<IconPicture> iconPixmap() const { return m_pictures; }
    menus::ToolTip toolTip() const { return {m_identifier, {}, m_name, {}}; }
    bool itemIsMenu() const { return false; }
    QDBusObjectPath menu() const;

public Q_SLOTS:
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewOverlayIcon();
    void NewToolTip();
    void NewStatus(const QString& status);

private:
    TrayIcon& m_icon;
    const QString m_name;
    const QString m_identifier;
    QList<IconPicture> m_pictures;
};

} // namespace tarnwick::menus

Q_DECLARE_METATYPE(tarnwick::menus::IconPicture)
Q_DECLARE_METATYPE(tarnwick::menus::ToolTip)
