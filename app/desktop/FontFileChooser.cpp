#include "app/desktop/FontFileChooser.h"

#include <QQmlComponent>
#include <QUrl>

namespace tarnwick {

namespace {

/// The toolkit's own dialog leaves what it is made of to its window. Once it is closed and assistive
/// technology has looked at it, Qt 6.4 crashes in its end, so it is kept until the program's.
void keepWhatIsLeft(const QQuickWindow& window) {
    for (QObject* child : window.findChildren<QObject*>(Qt::FindDirectChildrenOnly))
        if (child->inherits("QQuickFileDialogImpl"))
            child->setParent(nullptr);
}

/// One choice: the dialog and who waits for it. It ends with the window that it stands over.
class FontFileChoice : public QObject {
    Q_OBJECT

public:
    FontFileChoice(QObject* dialog, const QQuickWindow& window,
                   std::function<void(const QStringList&)> chosen)
        : QObject(dialog), m_dialog(dialog), m_window(window), m_chosen(std::move(chosen)) {
        connect(dialog, SIGNAL(accepted()), SLOT(accept()));
        connect(dialog, SIGNAL(rejected()), SLOT(reject()));
    }

private Q_SLOTS:
    void accept() {
        QStringList paths;
        const auto files = m_dialog->property("selectedFiles").value<QList<QUrl>>();
        for (const QUrl& file : files)
            if (file.isLocalFile())
                paths.append(file.toLocalFile());
        end(paths);
    }
    void reject() { end({}); }

private:
    void end(const QStringList& paths) {
        m_chosen(paths);
        m_dialog->deleteLater();
        keepWhatIsLeft(m_window);
    }

    QObject* m_dialog;
    const QQuickWindow& m_window;
    std::function<void(const QStringList&)> m_chosen;
};

} // namespace

FontChooser fontFileChooser(QQmlEngine& engine, std::function<QQuickWindow*()> parent) {
    return [&engine, parent = std::move(parent),
            open = QPointer<QObject>()](const std::function<void(const QStringList&)>& chosen) mutable {
        if (open)
            return chosen({});
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/App/FontFileDialog.qml")));
        open = component.create();
        if (!open) {
            qWarning("%s", qPrintable(component.errorString()));
            return chosen({});
        }
        QQuickWindow* window = parent();
        open->setParent(window);
        open->setProperty("parentWindow", QVariant::fromValue<QWindow*>(window));
        QMetaObject::invokeMethod(open, "open");
        if (!open->property("visible").toBool()) { // Qt has said why
            delete open;
            return chosen({});
        }
        new FontFileChoice(open, *window, chosen);
    };
}

} // namespace tarnwick

#include "FontFileChooser.moc"
