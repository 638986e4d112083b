#include "platform/launchctl/DesktopEntry.h"

namespace tarnwick::launchctl {

namespace {

/// Quoted when it must be; what a desktop entry does to texts comes on top of that.
QString quoted(const QString& argument) {
    static const QString reserved = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    bool needsQuotes = argument.isEmpty();
    QString escaped;
    for (const QChar c : argument) {
        needsQuotes = needsQuotes || reserved.contains(c);
        if (QStringView(u"\"`$\\").contains(c))
            escaped += u'\\';
        escaped += c;
        if (c == u'%')
            escaped += u'%'; // else it is a field code
    }
    return needsQuotes ? u'"' + escaped + u'"' : escaped;
}

} // namespace

QString execValue(const QStringList& arguments) {
    QStringList parts;
    for (const QString& argument : arguments)
        parts.append(quoted(argument));
    return stringValue(parts.join(u' '));
}

QString stringValue(QString text) {
    text.replace(u'\\', QStringLiteral("\\\\"));
    text.replace(u'\n', QStringLiteral("\\n"));
    text.replace(u'\t', QStringLiteral("\\t"));
    text.replace(u'\r', QStringLiteral("\\r"));
    return text;
}

} // namespace tarnwick::launchctl
