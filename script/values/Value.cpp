#include "script/values/Value.h"

#include "script/values/Cells.h"

namespace tarnwick::script {

Value Value::text(const QString& value) { return Value(new TextCell(value)); }

Value Value::constant(Term code, const QString& name) { return Value(new ConstantCell(code, name)); }

Value Value::data(const QByteArray& bytes) { return Value(new DataCell(bytes)); }

Value Value::alias(const QString& posixPath) { return Value(new AliasCell(posixPath)); }

Value Value::object(ObjectPointer object) { return Value(new ObjectCell(std::move(object))); }

Value Value::list(std::vector<Value> items) { return Value(new ListCell(std::move(items))); }

Value Value::record(std::vector<std::pair<QString, Value>> fields) {
    return Value(new RecordCell(std::move(fields)));
}

const QString& Value::asText() const { return textIn(*this); }

Term Value::asTerm() const { return static_cast<ConstantCell*>(cell())->code; }

const QString& Value::constantName() const { return static_cast<ConstantCell*>(cell())->name; }

const QByteArray& Value::asData() const { return static_cast<DataCell*>(cell())->bytes; }

const QString& Value::asPath() const { return static_cast<AliasCell*>(cell())->path; }

const ObjectPointer& Value::asObject() const { return static_cast<ObjectCell*>(cell())->object; }

const std::vector<Value>& Value::asList() const { return listIn(*this).items; }

const std::vector<std::pair<QString, Value>>& Value::asRecord() const { return recordIn(*this).fields; }

} // namespace tarnwick::script
