#include "platform/script/Classes.h"
#include "platform/script/Coercion.h"
#include "platform/script/Evaluator.h"
#include "platform/script/Operators.h"
#include "platform/script/Pieces.h"
#include "platform/script/Snapshot.h"

#include <algorithm>

namespace tarnwick::script {

namespace {

Value listOf(const std::vector<ObjectPointer>& objects) {
    std::vector<Value> values;
    values.reserve(objects.size());
    for (const ObjectPointer& object : objects)
        values.push_back(Value::object(object));
    return Value::list(std::move(values));
}

} // namespace

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
            try {
                if (!element.condition || element.filter) {
                    ElementQuery wanted = makeQuery(element);
                    wanted.query.filter = wanted.hasFilter ? &wanted.filter : nullptr;
                    return Value::list(wanted.container->values(wanted.query, property.term));
                }
                Value list = Value::list();
                for (const ObjectPointer& object : findElements(element))
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

Value Evaluator::evaluateField(const FieldExpression& field) {
    const Value container = containerOf(field.container);
    if (container.is(Kind::Record)) {
        if (const Value* value = recordIn(container).find(field.name))
            return *value;
    }
    if (container.is(Kind::Constant) && container.asTerm() == classes::Script) {
        const auto found = std::find_if(
            m_program.globalNames.begin(), m_program.globalNames.end(),
            [&field](const QString& name) { return name.compare(field.name, Qt::CaseInsensitive) == 0; });
        if (found != m_program.globalNames.end())
            return m_globals[static_cast<std::size_t>(found - m_program.globalNames.begin())];
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

Value Evaluator::evaluatePiece(const PieceExpression& piece) {
    if (const Value* found = follow(piece.path))
        return *found;
    if (piece.isItem()) {
        Value scratch;
        return *locatePiece(piece, scratch);
    }
    const Selection& selection = piece.selection;
    const Value whole = containerOf(piece.container);
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

Value Evaluator::evaluateElement(const ElementExpression& element) {
    try {
        std::vector<ObjectPointer> found = findElements(element);
        if (element.isMany())
            return listOf(found);
        if (found.empty())
            throw Error::noSuchObject();
        return Value::object(std::move(found.front()));
    } catch (const Error& error) {
        rethrow(error, element.range, "Can’t get %1.");
    }
}

std::vector<ObjectPointer> Evaluator::findElements(const ElementExpression& element) {
    ElementQuery wanted = makeQuery(element);
    if (element.condition && !element.filter)
        return findByTrying(element, wanted);
    wanted.query.filter = wanted.hasFilter ? &wanted.filter : nullptr;
    return wanted.container->elements(wanted.query);
}

/// A condition that the application cannot be given is tried on each element, as the target.
std::vector<ObjectPointer> Evaluator::findByTrying(const ElementExpression& element,
                                                   const ElementQuery& wanted) {
    Query all{.elementClass = wanted.query.elementClass};
    all.filter = wanted.hasFilter ? &wanted.filter : nullptr;
    std::vector<ObjectPointer> matching;
    for (ObjectPointer& object : wanted.container->elements(all)) {
        tick();
        Value target = std::exchange(m_target, Value::object(object));
        try {
            const bool matches = evaluateCondition(*element.condition);
            m_target = std::move(target);
            if (matches)
                matching.push_back(std::move(object));
        } catch (...) {
            m_target = std::move(target);
            throw;
        }
    }
    const auto [first, last] = wanted.query.within(static_cast<qint64>(matching.size()));
    return {matching.begin() + first, matching.begin() + last};
}

Evaluator::ElementQuery Evaluator::makeQuery(const ElementExpression& element) {
    ElementQuery wanted;
    const Value container = containerOf(element.container);
    if (!container.is(Kind::Object))
        throwCannotGet(element.range);
    wanted.container = container.asObject();
    wanted.query.elementClass = element.elementClass;
    if (element.filter) {
        wanted.filter = makeFilter(*element.filter);
        wanted.hasFilter = true;
    }
    select(wanted, element.selection, element.range);
    return wanted;
}

void Evaluator::select(ElementQuery& wanted, const Selection& selection, const SourceRange& range) {
    const auto narrow = [&wanted](Filter leaf) {
        wanted.filter =
            wanted.hasFilter ? Filter{.op = Filter::Operator::And, .operands = {wanted.filter, leaf}} : leaf;
        wanted.hasFilter = true;
        wanted.query.to = 1;
    };
    const auto position = [&](const Value& value) {
        const qint64 given = requireInteger(value);
        if (given == 0)
            throw Error{errors::BadIndex,
                        QStringLiteral("Can’t get %1. Invalid index.").arg(textOfPlace(range)), range};
        return given;
    };
    switch (selection.form) {
    case SelectionForm::Every:
        return;
    case SelectionForm::Name:
        narrow(equality(terms::Name, evaluate(*selection.first)));
        return;
    case SelectionForm::Id:
        narrow(equality(terms::Id, evaluate(*selection.first)));
        return;
    case SelectionForm::Index: {
        const Value index = contents(evaluate(*selection.first));
        if (index.is(Kind::Text)) {
            narrow(equality(terms::Name, index));
            return;
        }
        wanted.query.from = wanted.query.to = position(index);
        return;
    }
    case SelectionForm::Range:
        wanted.query.from = position(evaluate(*selection.first));
        wanted.query.to = position(evaluate(*selection.last));
        return;
    case SelectionForm::Middle:
    case SelectionForm::Some: {
        Query all = wanted.query;
        all.filter = wanted.hasFilter ? &wanted.filter : nullptr;
        const qint64 count = wanted.container->count(all);
        if (count == 0)
            throw Error::noSuchObject();
        const qint64 at = selection.form == SelectionForm::Middle
                              ? (count + 1) / 2
                              : 1 + m_host.random(static_cast<quint32>(std::min<qint64>(count, 0xffffffff)));
        wanted.query.from = wanted.query.to = at;
        return;
    }
    }
}

Filter Evaluator::equality(Term property, const Value& value) {
    return {.op = Filter::Operator::Equal, .property = property, .value = contents(value)};
}

Filter Evaluator::makeFilter(const FilterTemplate& from) {
    Filter filter{.op = from.op, .property = from.property, .considersCase = m_considersCase};
    for (const FilterTemplate& operand : from.operands)
        filter.operands.push_back(makeFilter(operand));
    if (from.operands.empty())
        filter.value = from.value ? contents(evaluate(*from.value)) : Value::boolean(true);
    return filter;
}

Value Evaluator::evaluateCount(const CountExpression& count) {
    if (count.operand->kind == ExpressionKind::Element) {
        const auto& element = static_cast<const ElementExpression&>(*count.operand);
        if (element.isMany()) {
            try {
                if (element.condition && !element.filter)
                    return Value::integer(static_cast<qint64>(findElements(element).size()));
                ElementQuery wanted = makeQuery(element);
                wanted.query.filter = wanted.hasFilter ? &wanted.filter : nullptr;
                return Value::integer(wanted.container->count(wanted.query));
            } catch (const Error& error) {
                rethrow(error, count.range, "Can’t get %1.");
            }
        }
    }
    if (count.operand->kind == ExpressionKind::Piece) {
        const auto& piece = static_cast<const PieceExpression&>(*count.operand);
        if (piece.selection.form == SelectionForm::Every)
            return Value::integer(countPieces(containerOf(piece.container), piece.piece, m_delimiters));
    }
    return Value::integer(countPieces(containerOf(count.operand), PieceClass::Item, m_delimiters));
}

Value Evaluator::evaluateCommand(const CommandExpression& command) {
    if (!m_application)
        throw Error{errors::NotUnderstood,
                    QStringLiteral("«script» doesn’t understand the “%1” message.").arg(command.name),
                    command.range};
    Application::Parameters parameters;
    for (const auto& [code, parameter] : command.parameters)
        parameters.emplace_back(code, contents(evaluate(*parameter)));
    Value direct = command.direct ? contents(evaluate(*command.direct)) : Value();
    if (!command.direct && m_target.is(Kind::Object) && m_target.asObject() != m_application)
        direct = m_target;
    try {
        return m_application->perform(command.command, direct, parameters);
    } catch (const Error& error) {
        rethrow(error, command.range, "The application doesn’t understand “%1”.");
    }
}

Value Evaluator::applicationNamed(const QString& name, const SourceRange& range) {
    const QString key = name.toLower();
    auto opened = m_opened.find(key);
    if (opened == m_opened.end()) {
        std::shared_ptr<Application> application = m_applications.application(name);
        if (!application)
            throw Error{errors::NoSuchObject, QStringLiteral("Can’t get application \"%1\".").arg(name),
                        range};
        opened = m_opened.insert(key, std::move(application));
    }
    return Value::object(*opened);
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
