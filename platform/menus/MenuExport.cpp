#include "platform/menus/MenuExport.h"

#include <QGuiApplication>

namespace tarnwick::menus {

MenuExport::MenuExport(MenuModel& model, const QDBusConnection& bus, const QString& path)
    : m_bus(bus), m_path(path) {
    registerMenuTypes();
    new MenuAdaptor(this, model);
    m_bus.registerObject(m_path, this);
}

MenuExport::~MenuExport() { m_bus.unregisterObject(m_path); }

MenuAdaptor::MenuAdaptor(QObject* parent, MenuModel& model) : QDBusAbstractAdaptor(parent), m_model(model) {
    connect(&model, &MenuModel::changed, this, [this] { Q_EMIT LayoutUpdated(++m_revision, 0); });
}

QString MenuAdaptor::textDirection() const {
    return QGuiApplication::isRightToLeft() ? QStringLiteral("rtl") : QStringLiteral("ltr");
}

uint MenuAdaptor::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                            LayoutItem& layout) {
    layout = layoutOf(m_model, parentId, recursionDepth, propertyNames);
    return m_revision;
}

QList<ItemProperties> MenuAdaptor::GetGroupProperties(const QList<int>& ids,
                                                      const QStringList& propertyNames) {
    QList<ItemProperties> all;
    for (const int id : ids)
        if (const Entry* entry = m_model.entry(id))
            all.append({id, propertiesOf(*entry, propertyNames)});
    return all;
}

QDBusVariant MenuAdaptor::GetProperty(int id, const QString& name) {
    const Entry* entry = m_model.entry(id);
    return QDBusVariant(entry ? propertiesOf(*entry, {name}).value(name, QString()) : QVariant(QString()));
}

void MenuAdaptor::Event(int id, const QString& eventId, const QDBusVariant& data, uint timestamp) {
    Q_UNUSED(data)
    Q_UNUSED(timestamp)
    if (eventId != QLatin1String("clicked"))
        return;
    // After the reply, so that the panel is not kept waiting by what the command does.
    QMetaObject::invokeMethod(
        &m_model, [model = &m_model, id] { model->trigger(id); }, Qt::QueuedConnection);
}

QList<int> MenuAdaptor::EventGroup(const QList<MenuEvent>& events) {
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        if (m_model.entry(event.number))
            Event(event.number, event.kind, event.data, event.timestamp);
        else
            unknown.append(event.number);
    }
    return unknown;
}

bool MenuAdaptor::AboutToShow(int id) {
    Q_UNUSED(id)
    const uint before = m_revision;
    Q_EMIT m_model.aboutToShow();
    return m_revision != before;
}

QList<int> MenuAdaptor::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    QList<int> changed;
    for (const int id : ids) {
        if (!m_model.entry(id))
            idErrors.append(id);
        else if (AboutToShow(id))
            changed.append(id);
    }
    return changed;
}

} // namespace tarnwick::menus
