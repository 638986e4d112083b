#include "script/syntax/Expressions.h"

namespace tarnwick::script {

LiteralExpression::~LiteralExpression() {
    if (!m_owned)
        return;
    value = {};
    m_owned->makeMortal();
    m_owned->release();
}

void LiteralExpression::own(Cell* cell) {
    cell->makeImmortal();
    m_owned = cell;
    value = Value(cell);
}

} // namespace tarnwick::script
