#pragma once

#include "script/syntax/Expressions.h"
#include "script/syntax/References.h"
#include "script/syntax/Statements.h"
#include "script/syntax/SyntaxNode.h"

#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace tarnwick::script {

/// `on name(a, b)`, and what stands outside of all handlers.
struct Handler {
    QString name;
    std::vector<int> parameters; ///< the slots that the arguments go to
    std::vector<QString> slotNames;
    Block body;
};

/// A compiled text.
class Program {
public:
    /// Makes a node that lives as long as the program.
    template <typename T, typename... Arguments>
    T* make(Arguments&&... arguments) {
        auto node = std::make_unique<T>(std::forward<Arguments>(arguments)...);
        T* plain = node.get();
        m_nodes.push_back(std::move(node));
        return plain;
    }

    QString source;
    Handler main;
    std::vector<std::unique_ptr<Handler>> handlers;
    std::vector<QString> globalNames;
    /// `property name : value`, in their order: the global's slot and the first value.
    std::vector<std::pair<int, Expression*>> properties;

private:
    std::vector<std::unique_ptr<Node>> m_nodes;
};

} // namespace tarnwick::script
