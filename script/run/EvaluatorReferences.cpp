#include "script/run/Evaluator.h"
#include "script/run/Operators.h"
#include "script/run/Pieces.h"
#include "script/values/Classes.h"
#include "script/values/Coercion.h"
#include "script/values/Snapshot.h"

#include <algorithm>

namespace tarnwick::script {

/// What a reference hangs on, seen through loop variables; without a container the target.
Value Evaluator::containerOf(const Expression* container) {
    if (!container)
        return contents(m_target);
    Value scratch;
    return contents(*locate(*container, scratch));
}

Value Evaluator::evaluateTermProperty(const TermPropertyExpression& property) {
    if (property.container && property.container->kind == ExpressionKind::Element) {
        const auto& element = static_cast<const ElementExpression&>(*property.container);
        if (element.isMany()) {
            // name of every track whose …: one question to the application, not one for each track.
            const ElementQuery wanted = makeQuery(element);
            try {
                if (!element.condition || element.filter)
                    return Value::list(wanted.container->values(wanted.forApplication(), property.term));
                Value list = Value::list();
                for (const ObjectPointer& object : findByTrying(element, wanted))
                    listIn(list).append(object->property(property.term));
                return list;
            } catch (const Error& error) {
                rethrow(error, property.range, "Can’t get %1.");
            }
        }
    }
    return propertyOf(containerOf(property.container), property);
}

Value Evaluator::propertyOf(const Value& container, const TermPropertyExpression& property) {
    if (container.is(Kind::Object)) {
        Object& object = *container.asObject();
        try {
            if (object.objectClass() == terms::Application) {
                auto& application = static_cast<Application&>(object);
                if (property.term == terms::Running)
                    return Value::boolean(application.isRunning());
                if (property.term == terms::Name)
                    return Value::text(application.name());
            }
            return object.property(property.term);
        } catch (const Error& error) {
            rethrow(error, property.range, "Can’t get %1.");
        }
    }
    if (container.is(Kind::Record)) {
        if (const Value* field = recordIn(container).find(property.name))
            return *field;
    }
    if (container.is(Kind::Constant) && container.asTerm() == classes::Script) {
        if (const Value* own = scriptVariable(property.name); own && !own->isNothing())
            return *own;
    }
    throwCannotGet(property.range);
}

Value Evaluator::evaluateBuiltin(const BuiltinPropertyExpression& property) {
    if (property.property == Builtin::TextItemDelimiters) {
        if (m_delimiters.size() == 1)
            return Value::text(m_delimiters.front());
        Value list = Value::list();
        for (const QString& delimiter : m_delimiters)
            listIn(list).append(Value::text(delimiter));
        return list;
    }
    const Value whole = containerOf(property.container);
    switch (property.property) {
    case Builtin::Class: {
        const Term code = whole.is(Kind::Object) ? whole.asObject()->objectClass() : classOf(whole);
        return Value::constant(code, className(code));
    }
    case Builtin::Length:
        return Value::integer(countPieces(whole, PieceClass::Item, m_delimiters));
    case Builtin::Contents:
        return whole;
    case Builtin::Rest:
        if (whole.is(Kind::List) && !whole.asList().empty())
            return Value::list({whole.asList().begin() + 1, whole.asList().end()});
        break;
    case Builtin::Reverse:
        if (whole.is(Kind::List))
            return Value::list({whole.asList().rbegin(), whole.asList().rend()});
        break;
    case Builtin::PosixPath:
        return Value::text(posixPath(requireText(whole)));
    case Builtin::QuotedForm: {
        QString text = requireText(whole);
        text.replace(QLatin1Char('\''), QLatin1String("'\\''"));
        return Value::text(QLatin1Char('\'') + text + QLatin1Char('\''));
    }
    default:
        break;
    }
    throwCannotGet(property.range);
}

Value* Evaluator::scriptVariable(const QString& name) {
    const auto find = [&name](const std::vector<QString>& names, Value* values) -> Value* {
        const auto found = std::find_if(names.begin(), names.end(), [&name](const QString& each) {
            return each.compare(name, Qt::CaseInsensitive) == 0;
        });
        return found == names.end() ? nullptr : values + (found - names.begin());
    };
    if (Value* global = find(m_program.globalNames, m_globals.data()))
        return global;
    // What `on run` names is its own.
    return m_program.main.name.isEmpty() ? find(m_program.main.slotNames, m_mainSlots) : nullptr;
}

Value Evaluator::evaluateField(const FieldExpression& field) {
    const Value container = containerOf(field.container);
    if (container.is(Kind::Record)) {
        if (const Value* value = recordIn(container).find(field.name))
            return *value;
    }
    if (container.is(Kind::Constant) && container.asTerm() == classes::Script) {
        if (const Value* own = scriptVariable(field.name); own && !own->isNothing())
            return *own;
    }
    if (container.is(Kind::Object)) {
        // Outside of a `tell` only the words that every application knows mean something.
        static const Terminology standard;
        const Terminology::Entry* entry = standard.find(field.name);
        if (entry && entry->property) {
            TermPropertyExpression property;
            property.term = *entry->property;
            property.range = field.range;
            return propertyOf(container, property);
        }
    }
    throwCannotGet(field.range);
}

/// What the piece is a part of; of a list only the items of the class that is meant.
Value Evaluator::wholeOf(const PieceExpression& piece) {
    Value whole = containerOf(piece.container);
    if (piece.piece != PieceClass::ItemOfClass)
        return whole;
    if (!whole.is(Kind::List))
        throwCannotGet(piece.range);
    Value found = Value::list();
    for (const Value& item : whole.asList()) {
        const Term itemClass = classOf(contents(item));
        const bool isNumber = itemClass == classes::Integer || itemClass == classes::Real;
        if (itemClass == piece.itemClass || (isNumber && piece.itemClass == classes::Number))
            listIn(found).append(item);
    }
    return found;
}

Value Evaluator::evaluatePiece(const PieceExpression& piece) {
    if (piece.isItem()) {
        Value scratch;
        return *locatePiece(piece, scratch);
    }
    const Selection& selection = piece.selection;
    const Value whole = wholeOf(piece);
    if (!whole.is(Kind::List) && !whole.is(Kind::Text) && !whole.is(Kind::Record))
        throwCannotGet(piece.range);
    const qsizetype count = countPieces(whole, piece.piece, m_delimiters);
    const auto position = [&](const Expression& index) {
        const qint64 given = requireInteger(evaluate(index));
        const qint64 at = given < 0 ? count + given : given - 1;
        if (at < 0 || at >= count)
            throwCannotGet(piece.range);
        return static_cast<qsizetype>(at);
    };
    switch (selection.form) {
    case SelectionForm::Every:
        return piecesBetween(whole, piece.piece, 0, count - 1, m_delimiters);
    case SelectionForm::Range: {
        const qsizetype first = position(*selection.first);
        const qsizetype last = position(*selection.last);
        return piecesBetween(whole, piece.piece, std::min(first, last), std::max(first, last), m_delimiters);
    }
    case SelectionForm::Index:
        return pieceAt(whole, piece.piece, position(*selection.first), m_delimiters);
    default:
        break;
    }
    if (count == 0 || selection.form == SelectionForm::Name || selection.form == SelectionForm::Id)
        throwCannotGet(piece.range);
    const qsizetype at = selection.form == SelectionForm::Middle
                             ? (count - 1) / 2
                             : static_cast<qsizetype>(m_host.random(static_cast<quint32>(count)));
    return pieceAt(whole, piece.piece, at, m_delimiters);
}

/// `item i` of what is no list, or past its end.
Value Evaluator::pieceOutsideOfList(const Value& whole, qint64 index, const PieceExpression& piece) {
    if (whole.is(Kind::Text) || whole.is(Kind::Record)) {
        const qsizetype count = countPieces(whole, piece.piece, m_delimiters);
        Value found = pieceAt(whole, piece.piece, index < 0 ? count + index : index - 1, m_delimiters);
        if (!found.isNothing())
            return found;
    }
    throw Error{errors::NoSuchObject,
                QStringLiteral("Can’t get item %1 of %2.").arg(QString::number(index), briefLiteral(whole)),
                piece.range};
}

Value Evaluator::evaluateOwnedList(const OwnedListExpression& owned) {
    Value list;
    withOwner(owned, [&] { list = evaluateList(*owned.list); });
    return list;
}

Value Evaluator::evaluateReferenceTo(const ReferenceToExpression& reference) {
    if (reference.operand->kind == ExpressionKind::Piece) {
        const auto& piece = static_cast<const PieceExpression&>(*reference.operand);
        if (piece.isItem()) {
            const Value whole = containerOf(piece.container);
            const qint64 index = evaluateIndex(*piece.selection.first);
            const auto size = whole.is(Kind::List) ? static_cast<qint64>(whole.asList().size()) : 0;
            const qint64 at = index < 0 ? size + index : index - 1;
            if (at >= 0 && at < size)
                return Value(new ItemReferenceCell(whole, at));
        }
    }
    // What is shared anyway stands for itself.
    Value value = contents(evaluate(*reference.operand));
    if (!value.is(Kind::Object) && !value.is(Kind::List) && !value.is(Kind::Record))
        throw Error{
            errors::CoercionFailed,
            QStringLiteral("Can’t make a reference to %1: only to an item of a list, a list, a record or "
                           "an object.")
                .arg(textOfPlace(reference.operand->range))};
    return value;
}

QString Evaluator::className(Term code) const {
    QString own = classNameOf(code);
    if (!own.isEmpty())
        return own;
    const Terminology* terminology =
        m_application ? m_applications.terminology(m_application->name()) : nullptr;
    static const Terminology standard;
    return (terminology ? terminology : &standard)->className(code);
}

} // namespace tarnwick::script
