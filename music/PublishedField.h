#pragma once

#include "music/DiscTrack.h"
#include "platform/images/Image.h"

#include <QVariant>

#include <optional>

namespace tarnwick {

/// How a field's value looks from QML and in JSON: a number, text or boolean as itself, none as null, a
/// picture as {id, width, height}, a disc as {discNumber, tracks}.
template <typename T>
QVariant fieldToVariant(const T& value) {
    return QVariant::fromValue(value);
}
template <typename T>
QVariant fieldToVariant(const std::optional<T>& value) {
    return value ? fieldToVariant(*value) : QVariant::fromValue(nullptr);
}
template <>
QVariant fieldToVariant(const images::Image& image);
template <>
QVariant fieldToVariant(const QList<double>& numbers);
template <>
QVariant fieldToVariant(const QList<DiscTrack>& discs);

} // namespace tarnwick

/// Declares a published field of a QObject: a reader, a signal that is emitted at every assignment, the
/// member, and a read-only QML property. The class assigns it with `publish` or `publishIfChanged`.
#define TARNWICK_PUBLISHED_FIELD(Type, name, initialValue)                                                   \
public:                                                                                                      \
    Q_PROPERTY(QVariant name READ name##Variant NOTIFY name##Changed)                                        \
    const Type& name() const { return m_##name; }                                                            \
    QVariant name##Variant() const { return tarnwick::fieldToVariant(m_##name); }                            \
    Q_SIGNAL void name##Changed();                                                                           \
                                                                                                             \
private:                                                                                                     \
    Type m_##name = initialValue;
