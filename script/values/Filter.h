#pragma once

#include "script/values/Term.h"
#include "script/values/Value.h"

#include <vector>

namespace tarnwick::script {

/// The condition of a `whose`: a tree whose leaves compare one property of the element with a value.
struct Filter {
    enum class Operator {
        And, // of all `operands`
        Or,
        Not, // of the one operand
        Equal,
        NotEqual,
        Less,
        LessOrEqual,
        Greater,
        GreaterOrEqual,
        Contains,
        StartsWith,
        EndsWith,
        IsIn,
    };

    Operator op = Operator::And;
    std::vector<Filter> operands = {};
    // A leaf's own:
    Term property = {};
    Value value = {};
    bool considersCase = false; ///< inside `considering case`: letter case counts

    /// Whether `object` satisfies the condition, asking it for the properties.
    bool matches(const Object& object) const;
    /// Whether an element whose `property` is `actual` satisfies this leaf.
    bool holdsFor(const Value& actual) const;
    /// The value that `property` has in everything that satisfies the condition (an Equal that is the
    /// condition itself or one term of its And), so that an index can be used; null when there is none.
    /// Texts are then equal by `comparisonKey()`, and `matches()` still has to be asked unless
    /// `isOnly(property)`.
    const Value* equalTo(Term property) const;
    /// Whether the whole condition is one Equal on `property`, without regard to letter case.
    bool isOnly(Term property) const;
};

} // namespace tarnwick::script
