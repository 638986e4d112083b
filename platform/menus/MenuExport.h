#pragma once

#include "platform/menus/MenuModel.h"
#include "platform/menus/MenuWire.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>

namespace tarnwick::menus {

/// A menu on the bus, as `com.canonical.dbusmenu`, for as long as this object lives.
class MenuExport : public QObject {
    Q_OBJECT

public:
    /// `model` must outlive this object.
    MenuExport(MenuModel& model, const QDBusConnection& bus, const QString& path);
    ~MenuExport() override;

private:
    QDBusConnection m_bus;
    const QString m_path;
};

/// The interface as the bus sees it. The names are the protocol's.
class MenuAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.canonical.dbusmenu")
    Q_PROPERTY(uint Version READ version)
    Q_PROPERTY(QString TextDirection READ textDirection)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(QStringList IconThemePath READ iconThemePath)

public:
    MenuAdaptor(QObject* parent, MenuModel& model);

    uint version() const { return 3; }
    QString textDirection() const;
    QString status() const { return QStringLiteral("normal"); }
    QStringList iconThemePath() const { return {}; }

public Q_SLOTS:
    uint GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                   tarnwick::menus::LayoutItem& layout);
    QList<tarnwick::menus::ItemProperties> GetGroupProperties(const QList<int>& ids,
                                                              const QStringList& propertyNames);
    QDBusVariant GetProperty(int id, const QString& name);
    void Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp);
    QList<int> EventGroup(const QList<tarnwick::menus::MenuEvent>& events);
    bool AboutToShow(int id);
    QList<int> AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors);

Q_SIGNALS:
    void ItemsPropertiesUpdated(const QList<tarnwick::menus::ItemProperties>& updated,
                                const QList<tarnwick::menus::ItemProperties>& removed);
    void LayoutUpdated(uint revision, int parent);
    void ItemActivationRequested(int id, uint timestamp);

private:
    MenuModel& m_model;
    uint m_revision = 1;
};

} // namespace tarnwick::menus
