#include "script/values/Descriptor.h"

#include "script/values/Coercion.h"

#include <QLocale>

#include <cmath>

namespace tarnwick::script {

Descriptor Descriptor::missing() { return Descriptor(Content(Missing{})); }

Descriptor Descriptor::boolean(bool value) { return Descriptor(Content(value)); }

Descriptor Descriptor::integer(qint64 value) { return Descriptor(Content(value)); }

Descriptor Descriptor::real(double value) { return Descriptor(Content(value)); }

Descriptor Descriptor::text(const QString& value) { return Descriptor(Content(value)); }

Descriptor Descriptor::constant(const QString& name) {
    return Descriptor(Content(Named{DescriptorType::Constant, name}));
}

Descriptor Descriptor::data(const QByteArray& bytes) { return Descriptor(Content(bytes)); }

Descriptor Descriptor::alias(const QString& posixPath) {
    return Descriptor(Content(Named{DescriptorType::Alias, posixPath}));
}

Descriptor Descriptor::object(const QString& specifier) {
    return Descriptor(Content(Named{DescriptorType::Object, specifier}));
}

Descriptor Descriptor::list(List items) {
    return Descriptor(Content(std::make_shared<const List>(std::move(items))));
}

Descriptor Descriptor::record(Record fields) {
    return Descriptor(Content(std::make_shared<const Record>(std::move(fields))));
}

DescriptorType Descriptor::type() const {
    static constexpr DescriptorType types[] = {
        DescriptorType::Null, DescriptorType::MissingValue, DescriptorType::Boolean, DescriptorType::Integer,
        DescriptorType::Real, DescriptorType::Text,         DescriptorType::Data,    DescriptorType::Null,
        DescriptorType::List, DescriptorType::Record};
    if (const auto* named = std::get_if<Named>(&m_content))
        return named->type;
    return types[m_content.index()];
}

int Descriptor::numberOfItems() const { return static_cast<int>(items().size() + fields().size()); }

std::optional<Descriptor> Descriptor::item(int index) const {
    if (index < 1 || static_cast<std::size_t>(index) > items().size())
        return {};
    return items()[static_cast<std::size_t>(index) - 1];
}

std::optional<Descriptor> Descriptor::field(const QString& key) const {
    for (const auto& [name, value] : fields()) {
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

std::optional<Descriptor> Descriptor::coerceToList() const {
    if (isList())
        return *this;
    if (type() == DescriptorType::Null)
        return {};
    return list({*this});
}

std::optional<QString> Descriptor::text() const {
    if (const auto* text = std::get_if<QString>(&m_content))
        return *text;
    if (const auto* integer = std::get_if<qint64>(&m_content))
        return QString::number(*integer);
    if (const auto* real = std::get_if<double>(&m_content))
        return realText(*real);
    if (const auto* boolean = std::get_if<bool>(&m_content))
        return *boolean ? QStringLiteral("true") : QStringLiteral("false");
    if (const auto* named = std::get_if<Named>(&m_content); named && named->type != DescriptorType::Object)
        return named->name;
    return {};
}

QString Descriptor::specifier() const {
    const auto* named = std::get_if<Named>(&m_content);
    return named && named->type == DescriptorType::Object ? named->name : QString();
}

qint64 Descriptor::integerValue() const {
    const auto* integer = std::get_if<qint64>(&m_content);
    return integer ? *integer : 0;
}

double Descriptor::doubleValue() const {
    if (const auto* integer = std::get_if<qint64>(&m_content))
        return static_cast<double>(*integer);
    if (const auto* real = std::get_if<double>(&m_content))
        return *real;
    if (const auto* boolean = std::get_if<bool>(&m_content))
        return *boolean ? 1.0 : 0.0;
    if (const auto* text = std::get_if<QString>(&m_content)) {
        const double number = QLocale::c().toDouble(*text);
        return std::isfinite(number) ? number : 0.0;
    }
    return 0.0;
}

qint32 Descriptor::int32Value() const {
    const double rounded = std::nearbyint(doubleValue());
    if (!(rounded >= -0x1p31 && rounded < 0x1p31))
        return 0;
    return static_cast<qint32>(rounded);
}

bool Descriptor::booleanValue() const {
    if (const auto* text = std::get_if<QString>(&m_content))
        return text->compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
    return doubleValue() != 0.0;
}

QByteArray Descriptor::data() const {
    const auto* bytes = std::get_if<QByteArray>(&m_content);
    return bytes ? *bytes : QByteArray();
}

const Descriptor::List& Descriptor::items() const {
    static const List none;
    const auto* items = std::get_if<std::shared_ptr<const List>>(&m_content);
    return items ? **items : none;
}

const Descriptor::Record& Descriptor::fields() const {
    static const Record none;
    const auto* fields = std::get_if<std::shared_ptr<const Record>>(&m_content);
    return fields ? **fields : none;
}

bool Descriptor::operator==(const Descriptor& other) const {
    if (m_content.index() != other.m_content.index())
        return false;
    if (isList())
        return items() == other.items();
    if (type() == DescriptorType::Record)
        return fields() == other.fields();
    return m_content == other.m_content;
}

} // namespace tarnwick::script
