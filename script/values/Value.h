#pragma once

#include "script/values/Term.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace tarnwick::script {

class Heap;
class Object;
class Value;
using ObjectPointer = std::shared_ptr<Object>;

/// What a value is.
enum class Kind : quint8 {
    Nothing, ///< no value at all: a variable never set, the reply of a command without one
    Missing, ///< `missing value`
    Boolean,
    Integer, ///< 64 bits
    Real,
    // From here on values live in a cell that they share.
    Text,
    Constant, ///< an enumerator (`playing`) or the name of a class (`integer`)
    Data,     ///< bytes; the buffer is shared, never copied
    Alias,    ///< a file, by its POSIX path
    Object,   ///< an object of an application
    List,     ///< shared by `set`, copied by `copy`
    Record,
    ItemReference, ///< the loop variable of `repeat with x in list`
};

/// What several values share: counted, but not across threads.
class Cell {
public:
    Cell(const Cell&) = delete;
    Cell& operator=(const Cell&) = delete;

    Kind kind() const { return m_kind; }
    void retain() {
        if (m_references >= 0)
            ++m_references;
    }
    void release() {
        if (m_references >= 0 && --m_references == 0)
            destroy();
    }
    /// From now on not counted, so that a compiled text's literals may be read by several threads at once;
    /// until `makeMortal()`, after which the next `release()` is the last one.
    void makeImmortal() { m_references = -1; }
    void makeMortal() { m_references = 1; }

protected:
    explicit Cell(Kind kind) : m_kind(kind) {}
    ~Cell() = default;

private:
    void destroy();

    int m_references = 0;
    Kind m_kind;
};

/// One value of a running script: 16 bytes, cheap to copy. It belongs to the thread and to the run in
/// which it was made, and must not be kept beyond that; what is to be kept or handed to another thread
/// is a `Descriptor`. Reading a value as a kind that it is not is undefined; `Coercion.h` converts.
class Value {
public:
    /// Nothing: not `missing value`, which is `missing()`.
    Value() noexcept : m_bits{} {}
    Value(const Value& other) noexcept : m_kind(other.m_kind), m_bits(other.m_bits) {
        if (isCell())
            m_bits.cell->retain();
    }
    Value(Value&& other) noexcept
        : m_kind(std::exchange(other.m_kind, Kind::Nothing)), m_bits(other.m_bits) {}
    /// Takes a share of `cell`.
    explicit Value(Cell* cell) noexcept : m_kind(cell->kind()), m_bits{.cell = cell} { cell->retain(); }
    ~Value() {
        if (isCell())
            m_bits.cell->release();
    }
    Value& operator=(const Value& other) noexcept {
        Value copy(other);
        swap(copy);
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        const bool hadCell = isCell();
        const Bits had = m_bits;
        m_kind = std::exchange(other.m_kind, Kind::Nothing);
        m_bits = other.m_bits;
        if (hadCell)
            had.cell->release();
        return *this;
    }

    static Value missing() noexcept { return {Kind::Missing, Bits{.integer = 0}}; }
    static Value boolean(bool value) noexcept { return {Kind::Boolean, Bits{.boolean = value}}; }
    static Value integer(qint64 value) noexcept { return {Kind::Integer, Bits{.integer = value}}; }
    static Value real(double value) noexcept { return {Kind::Real, Bits{.real = value}}; }
    static Value text(const QString& value);
    /// An enumerator of an application, or another constant: `name` is how a script writes it.
    static Value constant(Term code, const QString& name);
    static Value data(const QByteArray& bytes);
    /// The file at the absolute path `posixPath`.
    static Value alias(const QString& posixPath);
    /// Never null.
    static Value object(ObjectPointer object);
    static Value list(std::vector<Value> items = {});
    /// Keys are the names of properties, spelt as the terminology does.
    static Value record(std::vector<std::pair<QString, Value>> fields = {});

    Kind kind() const { return m_kind; }
    bool is(Kind kind) const { return m_kind == kind; }
    bool isNothing() const { return m_kind == Kind::Nothing; }
    bool isMissing() const { return m_kind == Kind::Missing; }
    bool isNumber() const { return m_kind == Kind::Integer || m_kind == Kind::Real; }

    bool asBoolean() const { return m_bits.boolean; }
    qint64 asInteger() const { return m_bits.integer; }
    double asReal() const { return m_bits.real; }
    const QString& asText() const;
    /// Of a constant.
    Term asTerm() const;
    /// Of a constant: how a script writes it.
    const QString& constantName() const;
    const QByteArray& asData() const;
    /// Of an alias.
    const QString& asPath() const;
    const ObjectPointer& asObject() const;
    const std::vector<Value>& asList() const;
    const std::vector<std::pair<QString, Value>>& asRecord() const;

    /// The shared cell, for kinds that have one.
    Cell* cell() const { return m_bits.cell; }

    void swap(Value& other) noexcept {
        std::swap(m_kind, other.m_kind);
        std::swap(m_bits, other.m_bits);
    }

private:
    union Bits {
        qint64 integer;
        double real;
        bool boolean;
        Cell* cell;
    };

    Value(Kind kind, Bits bits) noexcept : m_kind(kind), m_bits(bits) {}
    bool isCell() const { return m_kind >= Kind::Text; }

    Kind m_kind = Kind::Nothing;
    Bits m_bits;
};

} // namespace tarnwick::script
