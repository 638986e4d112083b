#include "controls/assistive/AccessibleStates.h"

#include <QAccessible>
#include <QColor>
#include <QMetaMethod>
#include <QMetaProperty>
#include <QPointer>
#include <QQuickItem>

namespace tarnwick {

namespace {

constexpr const char* expanded = "isExpanded";
constexpr const char* spoken = "spokenNow";

AccessibleStates& shared() {
    static AccessibleStates states;
    return states;
}

bool hasProperty(const QObject& object, const char* name) {
    return object.metaObject()->indexOfProperty(name) >= 0;
}

bool isToldHere(const QObject& object) {
    return object.inherits("QQuickControl") || hasProperty(object, expanded) || hasProperty(object, spoken);
}

} // namespace

/// The toolkit's interface of an item, and what is added to it. With the item both go, in whichever order,
/// and until then what is still asked gets nothing.
class ToldControl : public QAccessibleInterface {
public:
    /// `inner` is the toolkit's, in its cache, from where it is taken with this.
    ToldControl(QQuickItem& item, QAccessibleInterface& inner)
        : m_item(&item), m_inner(inner), m_id(QAccessible::uniqueId(&inner)) {
        shared().follow(item);
    }
    ToldControl(const ToldControl&) = delete;
    ToldControl& operator=(const ToldControl&) = delete;

    QAccessible::State state() const override {
        if (!m_item)
            return {};
        QAccessible::State state = m_inner.state();
        state.disabled = !m_item->isEnabled();
        const QVariant isExpanded = m_item->property(expanded);
        if (isExpanded.typeId() == QMetaType::Bool) {
            state.expandable = true;
            state.expanded = isExpanded.toBool();
            state.collapsed = !state.expanded;
        }
        return state;
    }
    QString text(QAccessible::Text what) const override {
        if (!m_item)
            return {};
        const QString now =
            what == QAccessible::Description ? m_item->property(spoken).toString() : QString();
        return now.isEmpty() ? m_inner.text(what) : now;
    }

    bool isValid() const override { return m_item && m_inner.isValid(); }
    QObject* object() const override { return m_item; }
    QWindow* window() const override { return m_item ? m_inner.window() : nullptr; }
    QList<QPair<QAccessibleInterface*, QAccessible::Relation>>
    relations(QAccessible::Relation match) const override {
        return m_item ? m_inner.relations(match) : decltype(m_inner.relations(match))();
    }
    QAccessibleInterface* focusChild() const override { return m_item ? m_inner.focusChild() : nullptr; }
    QAccessibleInterface* childAt(int x, int y) const override {
        return m_item ? m_inner.childAt(x, y) : nullptr;
    }
    QAccessibleInterface* parent() const override { return m_item ? m_inner.parent() : nullptr; }
    QAccessibleInterface* child(int index) const override { return m_item ? m_inner.child(index) : nullptr; }
    int childCount() const override { return m_item ? m_inner.childCount() : 0; }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return m_item ? m_inner.indexOfChild(child) : -1;
    }
    void setText(QAccessible::Text what, const QString& text) override {
        if (m_item)
            m_inner.setText(what, text);
    }
    QRect rect() const override { return m_item ? m_inner.rect() : QRect(); }
    QAccessible::Role role() const override { return m_item ? m_inner.role() : QAccessible::NoRole; }
    QColor foregroundColor() const override { return m_item ? m_inner.foregroundColor() : QColor(); }
    QColor backgroundColor() const override { return m_item ? m_inner.backgroundColor() : QColor(); }
    void* interface_cast(QAccessible::InterfaceType type) override {
        return m_item ? m_inner.interface_cast(type) : nullptr;
    }

protected:
    ~ToldControl() override { QAccessible::deleteAccessibleInterface(m_id); }

private:
    const QPointer<QQuickItem> m_item;
    QAccessibleInterface& m_inner;
    const QAccessible::Id m_id;
};

namespace {

/// The toolkit makes its interfaces by the name of the class that all items are.
QAccessibleInterface* make(const QString& className, QObject* object) {
    static bool asksToolkit = false;
    auto* item = qobject_cast<QQuickItem*>(object);
    if (asksToolkit || !item || className != QLatin1String("QQuickItem") || !isToldHere(*item))
        return nullptr;
    asksToolkit = true;
    QAccessibleInterface* inner = QAccessible::queryAccessibleInterface(item);
    asksToolkit = false;
    return inner ? new ToldControl(*item, *inner) : nullptr;
}

void announce(QObject* item, QAccessible::State changed) {
    QAccessibleStateChangeEvent event(item, changed);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void AccessibleStates::install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(isInstalled)
}

void AccessibleStates::follow(QObject& item) {
    connect(&item, SIGNAL(enabledChanged()), this, SLOT(tellEnabled()), Qt::UniqueConnection);
    const QMetaProperty property = item.metaObject()->property(item.metaObject()->indexOfProperty(expanded));
    if (property.isValid() && property.hasNotifySignal())
        connect(&item, property.notifySignal(), this,
                metaObject()->method(metaObject()->indexOfSlot("tellExpanded()")), Qt::UniqueConnection);
}

void AccessibleStates::tellEnabled() {
    QAccessible::State changed;
    changed.disabled = true;
    announce(sender(), changed);
}

void AccessibleStates::tellExpanded() {
    QAccessible::State changed;
    changed.expanded = true;
    announce(sender(), changed);
}

} // namespace tarnwick
