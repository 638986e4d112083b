#pragma once

#include "script/values/Term.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

namespace tarnwick::script {

/// What a descriptor holds, as its four-character code.
enum class DescriptorType : quint32 {
    Null = quint32(term("null")),
    MissingValue = quint32(term("msng")),
    Boolean = quint32(term("bool")),
    Integer = quint32(term("comp")),
    Real = quint32(term("doub")),
    Text = quint32(term("utxt")),
    Constant = quint32(term("enum")),
    Data = quint32(term("tdta")),
    Alias = quint32(term("alis")),
    Object = quint32(term("obj ")),
    List = quint32(term("list")),
    Record = quint32(term("reco")),
};

/// A script's reply: an immutable snapshot, cheap to copy, safe to pass between threads. Its readings
/// never fail; they convert where the language would and are absent (or 0) where it would not.
class Descriptor {
public:
    using List = std::vector<Descriptor>;
    using Record = std::vector<std::pair<QString, Descriptor>>;

    /// The reply of a script that has none.
    Descriptor() = default;

    static Descriptor missing();
    static Descriptor boolean(bool value);
    static Descriptor integer(qint64 value);
    static Descriptor real(double value);
    static Descriptor text(const QString& value);
    static Descriptor constant(const QString& name);
    static Descriptor data(const QByteArray& bytes);
    static Descriptor alias(const QString& posixPath);
    /// `specifier` is how a script writes the object.
    static Descriptor object(const QString& specifier);
    static Descriptor list(List items);
    static Descriptor record(Record fields);

    DescriptorType type() const;
    bool isList() const { return type() == DescriptorType::List; }

    /// Items of a list, fields of a record, otherwise 0.
    int numberOfItems() const;
    /// Item `index` of a list, counted from 1; absent outside of it and for what is no list.
    std::optional<Descriptor> item(int index) const;
    /// The field of a record; absent when there is none. Letter case does not count.
    std::optional<Descriptor> field(const QString& key) const;
    /// A list as it stands, any other value as a list of it; absent without a value.
    std::optional<Descriptor> coerceToList() const;
    /// Texts, numbers, booleans, constants, aliases; absent for the rest, `missing value` among it.
    std::optional<QString> text() const;
    /// How a script writes an object; empty for what is none.
    QString specifier() const;
    /// The integer, else 0.
    qint64 integerValue() const;
    /// Numbers, booleans and texts that are a number; else 0.
    double doubleValue() const;
    /// As `doubleValue()`, rounded; 0 when outside of 32 bits.
    qint32 int32Value() const;
    /// Booleans, numbers other than 0, the text "true"; else false.
    bool booleanValue() const;
    /// The bytes of data (the buffer the application handed out), else empty.
    QByteArray data() const;

    const List& items() const;    ///< empty for what is no list
    const Record& fields() const; ///< empty for what is no record

    /// Same type, same content; texts letter by letter.
    bool operator==(const Descriptor& other) const;

private:
    struct Missing {
        bool operator==(const Missing&) const = default;
    };
    struct Named { // constants, aliases and objects
        DescriptorType type;
        QString name;
        bool operator==(const Named&) const = default;
    };
    using Content = std::variant<std::monostate, Missing, bool, qint64, double, QString, QByteArray, Named,
                                 std::shared_ptr<const List>, std::shared_ptr<const Record>>;

    explicit Descriptor(Content content) : m_content(std::move(content)) {}

    Content m_content;
};

} // namespace tarnwick::script
