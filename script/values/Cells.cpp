#include "script/values/Cells.h"

#include "script/values/Error.h"
#include "script/values/Printer.h"
#include "script/values/Snapshot.h"

#include <algorithm>

namespace tarnwick::script {

namespace {

constexpr qsizetype ListOverhead = sizeof(ListCell);
constexpr qsizetype RecordOverhead = sizeof(RecordCell);

qsizetype weightOf(const std::vector<std::pair<QString, Value>>& fields) {
    return RecordOverhead + static_cast<qsizetype>(fields.capacity() * sizeof(fields.front()));
}

// A chain of a million lists must not be taken apart by a million nested calls: who dies while another
// one is being destroyed waits in a row.
thread_local ContainerCell* dying = nullptr;
thread_local bool burying = false;

void destroyContainer(ContainerCell* cell) {
    switch (cell->kind()) {
    case Kind::List:
        delete static_cast<ListCell*>(cell);
        break;
    case Kind::Record:
        delete static_cast<RecordCell*>(cell);
        break;
    default:
        delete static_cast<ItemReferenceCell*>(cell);
        break;
    }
}

void bury(ContainerCell* cell) {
    if (cell->heap)
        cell->heap->remove(*cell);
    cell->next = dying;
    dying = cell;
    if (burying)
        return;
    burying = true;
    while (dying)
        destroyContainer(std::exchange(dying, dying->next));
    burying = false;
}

std::vector<Value> takeContent(ContainerCell& cell) {
    std::vector<Value> content;
    switch (cell.kind()) {
    case Kind::List:
        content.swap(static_cast<ListCell&>(cell).items);
        break;
    case Kind::Record:
        for (auto& [key, value] : std::exchange(static_cast<RecordCell&>(cell).fields, {}))
            content.push_back(std::move(value));
        break;
    default:
        content.push_back(std::exchange(static_cast<ItemReferenceCell&>(cell).list, {}));
        break;
    }
    return content;
}

} // namespace

thread_local Heap* Heap::s_current = nullptr;

Heap::Heap(qsizetype bytes, qsizetype listLength, qsizetype textLength)
    : m_previous(std::exchange(s_current, this)), m_limit(bytes), m_listLength(listLength),
      m_textLength(textLength) {}

Heap::~Heap() {
    while (m_containers) {
        ContainerCell& cell = *m_containers;
        remove(cell);
        const Value keep(&cell);
        takeContent(cell);
    }
    s_current = m_previous;
}

void Heap::add(ContainerCell& cell) {
    cell.next = m_containers;
    if (m_containers)
        m_containers->previous = &cell;
    m_containers = &cell;
}

void Heap::remove(ContainerCell& cell) {
    (cell.previous ? cell.previous->next : m_containers) = cell.next;
    if (cell.next)
        cell.next->previous = cell.previous;
    cell.previous = cell.next = nullptr;
    m_bytes -= cell.charged;
    cell.heap = nullptr;
}

void Heap::throwOutOfMemory() { throw Error{errors::OutOfMemory, QStringLiteral("Out of memory.")}; }

void Heap::overflow(qsizetype bytes) {
    m_bytes -= bytes;
    throwOutOfMemory();
}

void Cell::destroy() {
    switch (m_kind) {
    case Kind::Text:
        delete static_cast<TextCell*>(this);
        break;
    case Kind::Constant:
        delete static_cast<ConstantCell*>(this);
        break;
    case Kind::Data:
        delete static_cast<DataCell*>(this);
        break;
    case Kind::Alias:
        delete static_cast<AliasCell*>(this);
        break;
    case Kind::Object:
        delete static_cast<ObjectCell*>(this);
        break;
    default:
        bury(static_cast<ContainerCell*>(this));
        break;
    }
}

TextCell::TextCell(const QString& value) : Cell(Kind::Text), text(value) {
    if (Heap* heap = Heap::current()) {
        heap->checkTextLength(text.size());
        heap->charge(weight());
    }
}

TextCell::~TextCell() {
    if (Heap* heap = Heap::current())
        heap->refund(weight());
}

ContainerCell::ContainerCell(Kind kind) : Cell(kind), heap(Heap::current()) {
    if (!heap)
        return;
    weigh(ListOverhead);
    heap->add(*this);
}

ContainerCell::~ContainerCell() {
    if (heap)
        heap->remove(*this);
}

ListCell::ListCell(std::vector<Value> content) : ContainerCell(Kind::List), items(std::move(content)) {
    if (heap)
        heap->checkListLength(static_cast<qsizetype>(items.size()));
    weigh(ListOverhead + static_cast<qsizetype>(items.capacity() * sizeof(Value)));
}

void ListCell::prepend(Value value) {
    if (items.size() == items.capacity())
        grow();
    items.insert(items.begin(), std::move(value));
}

void ListCell::grow() {
    const std::size_t capacity = std::max<std::size_t>(4, items.capacity() * 2);
    if (heap)
        heap->checkListLength(static_cast<qsizetype>(items.size()) + 1);
    weigh(ListOverhead + static_cast<qsizetype>(capacity * sizeof(Value)));
    items.reserve(capacity);
}

RecordCell::RecordCell(std::vector<std::pair<QString, Value>> content)
    : ContainerCell(Kind::Record), fields(std::move(content)) {
    weigh(weightOf(fields));
}

Value* RecordCell::find(const QString& key) {
    for (auto& [name, value] : fields) {
        if (name.compare(key, Qt::CaseInsensitive) == 0)
            return &value;
    }
    return nullptr;
}

void RecordCell::set(const QString& key, Value value) {
    if (Value* field = find(key)) {
        *field = std::move(value);
        return;
    }
    fields.emplace_back(key, std::move(value));
    weigh(weightOf(fields));
}

const Value& contentsOfReference(const Value& reference) {
    const Value* value = &reference;
    for (int steps = 0; value->is(Kind::ItemReference); ++steps) {
        const ItemReferenceCell& cell = referenceIn(*value);
        const std::vector<Value>& items = listIn(cell.list).items;
        if (cell.index >= static_cast<qsizetype>(items.size()))
            throw Error::noSuchObject(QStringLiteral("Can’t get item %1 of %2.")
                                          .arg(QString::number(cell.index + 1), briefLiteral(cell.list)));
        if (steps > MaximumNesting)
            throw Error{errors::StackOverflow, QStringLiteral("Stack overflow.")};
        value = &items[static_cast<std::size_t>(cell.index)];
    }
    return *value;
}

} // namespace tarnwick::script
