#include "script/values/Application.h"

#include <algorithm>

namespace tarnwick::script {

std::pair<qint64, qint64> Query::within(qint64 size) const {
    const auto position = [size](qint64 given) { return given < 0 ? size + given : given - 1; };
    const qint64 first = position(from);
    const qint64 last = position(to);
    if (first < 0 || last < first || first >= size)
        return {0, 0};
    return {first, std::min(last + 1, size)};
}

void Object::setProperty(Term, const Value&) { throw Error::notSettable(); }

std::vector<ObjectPointer> Object::elements(const Query&) const { throw Error::noSuchObject(); }

qint64 Object::count(const Query& query) const { return static_cast<qint64>(elements(query).size()); }

std::vector<Value> Object::values(const Query& query, Term property) const {
    const std::vector<ObjectPointer> found = elements(query);
    std::vector<Value> result;
    result.reserve(found.size());
    for (const ObjectPointer& object : found)
        result.push_back(object->property(property));
    return result;
}

bool Object::isSame(const Object& other) const { return this == &other; }

Value Application::perform(Term, const Value&, const Parameters&) { throw Error::notUnderstood(); }

} // namespace tarnwick::script
