#pragma once

#include "script/values/Error.h"
#include "script/values/Filter.h"
#include "script/values/Terminology.h"
#include "script/values/Value.h"

#include <memory>
#include <utility>
#include <vector>

namespace tarnwick::script {

/// Which elements of a container are meant: of the class `elementClass` those that satisfy `filter`, of
/// these the ones from position `from` to position `to`. Positions count from 1, negative ones from the end
/// (-1 is the last). `every track` is 1 to -1, `track 3` is 3 to 3, `last track` -1 to -1; `track "x"` is
/// a filter on the name from 1 to 1.
struct Query {
    Term elementClass = {};
    const Filter* filter = nullptr; ///< null: every element. Lives as long as the call.
    qint64 from = 1;
    qint64 to = -1;

    /// The positions of `from` and `to` among `size` elements as a half-open range from 0, empty when they
    /// lie outside.
    std::pair<qint64, qint64> within(qint64 size) const;
};

/// An object of a scriptable application: a track, a playlist, the application itself. Asked on the
/// thread of the run that holds it, never by two threads at once, but several runs may ask the same object.
/// Failures are thrown as `Error`.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    virtual Term objectClass() const = 0;
    /// How a script writes the object, without the application ("track 3 of library playlist 1").
    virtual QString specifier() const = 0;
    /// The value of a property. Throws `Error::noSuchObject()` for one it does not have; a fact that nothing
    /// provides is the application's choice.
    virtual Value property(Term property) const = 0;
    /// The default throws `Error::notSettable()`.
    virtual void setProperty(Term property, const Value& value);

    /// The elements that `query` means, in the application's order; fewer, or none, when there are no more.
    /// Throws `Error::noSuchObject()` for a class it does not contain, as the default does for any.
    virtual std::vector<ObjectPointer> elements(const Query& query) const;
    /// How many elements `query` means. The default counts `elements()`.
    virtual qint64 count(const Query& query) const;
    /// `property of every … whose …` in one call: a value each, in the same order. The default asks each of
    /// `elements()`.
    virtual std::vector<Value> values(const Query& query, Term property) const;

    /// Whether a script takes the two for the same object. The default: the same address.
    virtual bool isSame(const Object& other) const;
};

/// What `tell application "…"` speaks to. It is an object of class `terms::Application`.
class Application : public Object {
public:
    /// Labelled parameters by their code.
    using Parameters = std::vector<std::pair<Term, Value>>;

    Term objectClass() const override { return terms::Application; }
    QString specifier() const override { return QStringLiteral("application"); }
    /// As the script knows it: "Music".
    virtual QString name() const = 0;
    /// Answers the property `running`; must not start the application.
    virtual bool isRunning() const = 0;
    /// Runs a command: its own, or `launch`, `activate`, `quit`. `direct` is what follows the command's
    /// name, Nothing without. Gives the reply, Nothing when there is none. The default throws
    /// `Error::notUnderstood()`.
    virtual Value perform(Term command, const Value& direct, const Parameters& parameters);
};

/// Where the interpreter finds applications. Used by several threads at once.
class ApplicationProvider {
public:
    ApplicationProvider() = default;
    ApplicationProvider(const ApplicationProvider&) = delete;
    ApplicationProvider& operator=(const ApplicationProvider&) = delete;
    virtual ~ApplicationProvider() = default;

    /// The words of the application called `name` (letter case aside), null when there is no such
    /// application. Asked when a text is compiled; must be the same each time and live as long as the
    /// provider.
    virtual const Terminology* terminology(const QString& name) const = 0;
    /// The application itself, asked once in each run that speaks to it, so that a run may be given a
    /// snapshot of its own. Null when there is no such application.
    virtual std::shared_ptr<Application> application(const QString& name) = 0;
};

} // namespace tarnwick::script
