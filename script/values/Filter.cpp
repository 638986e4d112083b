#include "script/values/Filter.h"

#include "script/values/Application.h"
#include "script/values/Compare.h"

#include <algorithm>

namespace tarnwick::script {

bool Filter::matches(const Object& object) const {
    const auto holds = [&object](const Filter& operand) { return operand.matches(object); };
    switch (op) {
    case Operator::And:
        return std::all_of(operands.begin(), operands.end(), holds);
    case Operator::Or:
        return std::any_of(operands.begin(), operands.end(), holds);
    case Operator::Not:
        return std::none_of(operands.begin(), operands.end(), holds);
    default:
        return holdsFor(object.property(property));
    }
}

bool Filter::holdsFor(const Value& actual) const {
    switch (op) {
    case Operator::Equal:
        return isEqual(actual, value, considersCase);
    case Operator::NotEqual:
        return !isEqual(actual, value, considersCase);
    case Operator::Less:
        return order(actual, value, considersCase) < 0;
    case Operator::LessOrEqual:
        return order(actual, value, considersCase) <= 0;
    case Operator::Greater:
        return order(actual, value, considersCase) > 0;
    case Operator::GreaterOrEqual:
        return order(actual, value, considersCase) >= 0;
    case Operator::Contains:
        return contains(actual, value, considersCase);
    case Operator::StartsWith:
        return startsWith(actual, value, considersCase);
    case Operator::EndsWith:
        return endsWith(actual, value, considersCase);
    case Operator::IsIn:
        return contains(value, actual, considersCase);
    default:
        return false;
    }
}

const Value* Filter::equalTo(Term wanted) const {
    if (op == Operator::Equal)
        return property == wanted ? &value : nullptr;
    if (op != Operator::And)
        return nullptr;
    for (const Filter& operand : operands) {
        if (const Value* found = operand.equalTo(wanted))
            return found;
    }
    return nullptr;
}

bool Filter::isOnly(Term wanted) const {
    return op == Operator::Equal && property == wanted && !considersCase;
}

} // namespace tarnwick::script
