#pragma once

#include "script/values/Value.h"

#include <QByteArray>
#include <QString>

#include <vector>

namespace tarnwick::script {

struct ContainerCell;

/// What the values of one run weigh together, and which lists and records it has made. Values made on a
/// thread are counted by the innermost heap there; without one they are not counted. When the heap goes,
/// lists that contain themselves are taken apart.
class Heap {
public:
    /// `bytes` for all values together, `listLength` items in one list, `textLength` units in one text.
    Heap(qsizetype bytes, qsizetype listLength, qsizetype textLength);
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;
    ~Heap();

    static Heap* current() { return s_current; }

    /// Counts `bytes` more; throws error -108 when that is too much.
    void charge(qsizetype bytes) {
        m_bytes += bytes;
        if (m_bytes > m_limit) [[unlikely]]
            overflow(bytes);
    }
    void refund(qsizetype bytes) { m_bytes -= bytes; }
    /// Throws error -108 when a list or a text may not have this length.
    void checkListLength(qsizetype length) const {
        if (length > m_listLength) [[unlikely]]
            throwOutOfMemory();
    }
    void checkTextLength(qsizetype length) const {
        if (length > m_textLength) [[unlikely]]
            throwOutOfMemory();
    }

    void add(ContainerCell& cell);
    void remove(ContainerCell& cell);

private:
    [[noreturn]] static void throwOutOfMemory();
    [[noreturn]] void overflow(qsizetype bytes);

    static thread_local Heap* s_current;

    Heap* m_previous;
    qsizetype m_bytes = 0;
    qsizetype m_limit;
    qsizetype m_listLength;
    qsizetype m_textLength;
    ContainerCell* m_containers = nullptr;
};

struct TextCell : Cell {
    explicit TextCell(const QString& value);
    ~TextCell();
    qsizetype weight() const { return static_cast<qsizetype>(sizeof(TextCell)) + 2 * text.size(); }
    const QString text;
};

struct ConstantCell : Cell {
    ConstantCell(Term c, const QString& n) : Cell(Kind::Constant), code(c), name(n) {}
    const Term code;
    const QString name;
};

struct DataCell : Cell {
    explicit DataCell(const QByteArray& value) : Cell(Kind::Data), bytes(value) {}
    const QByteArray bytes;
};

struct AliasCell : Cell {
    explicit AliasCell(const QString& value) : Cell(Kind::Alias), path(value) {}
    const QString path;
};

struct ObjectCell : Cell {
    explicit ObjectCell(ObjectPointer value) : Cell(Kind::Object), object(std::move(value)) {}
    const ObjectPointer object;
};

/// A cell that can be part of a ring. Known to its heap while it lives.
struct ContainerCell : Cell {
    explicit ContainerCell(Kind kind);
    ~ContainerCell();

    /// Counts that the content has come to take `bytes`.
    void weigh(qsizetype bytes) {
        if (heap) {
            heap->charge(bytes - charged);
            charged = bytes;
        }
    }

    Heap* heap;
    ContainerCell* previous = nullptr;
    ContainerCell* next = nullptr;
    qsizetype charged = 0;
};

struct ListCell : ContainerCell {
    explicit ListCell(std::vector<Value> content);
    void append(Value value) {
        if (items.size() == items.capacity())
            grow();
        items.push_back(std::move(value));
    }
    void prepend(Value value);
    std::vector<Value> items;

private:
    void grow();
};

struct RecordCell : ContainerCell {
    explicit RecordCell(std::vector<std::pair<QString, Value>> content);
    /// Null when there is no such field. Letter case does not count.
    Value* find(const QString& key);
    void set(const QString& key, Value value);
    std::vector<std::pair<QString, Value>> fields;
};

struct ItemReferenceCell : ContainerCell {
    ItemReferenceCell(Value l, qsizetype i)
        : ContainerCell(Kind::ItemReference), list(std::move(l)), index(i) {}
    Value list;
    qsizetype index;
};

// What a value of that kind shares.
inline const QString& textIn(const Value& value) { return static_cast<TextCell*>(value.cell())->text; }
inline ListCell& listIn(const Value& value) { return *static_cast<ListCell*>(value.cell()); }
inline RecordCell& recordIn(const Value& value) { return *static_cast<RecordCell*>(value.cell()); }
inline ItemReferenceCell& referenceIn(const Value& value) {
    return *static_cast<ItemReferenceCell*>(value.cell());
}

/// Lists inside each other, references to references: deeper than this is error -2706.
inline constexpr int MaximumNesting = 500;

/// The value itself, or what a loop variable stands for at the moment. Throws error -1728 when that item is
/// gone.
const Value& contentsOfReference(const Value& reference);
inline const Value& contents(const Value& value) {
    return value.is(Kind::ItemReference) ? contentsOfReference(value) : value;
}

} // namespace tarnwick::script
