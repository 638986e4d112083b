#pragma once

#include "music/MusicSource.h"
#include "music/Scripts.h"
#include "platform/dispatch/VirtualDispatcher.h"
#include "tests/fakes/Pictures.h"

#include <QMap>
#include <QStringList>
#include <gmock/gmock.h>

namespace tarnwick {

/// A source on virtual time whose scripts are answered by a table.
class MusicFixture : public testing::Test {
protected:
    using D = script::Descriptor;
    using Answer = std::function<script::Outcome()>;

    static script::Outcome reply(const D& value) { return {value, std::nullopt}; }
    static script::Outcome failure(int number = -600) {
        return {std::nullopt, script::Error{number, QStringLiteral("no"), {}}};
    }
    static D text(const char* value) { return D::text(QString::fromUtf8(value)); }
    static D texts(std::initializer_list<const char*> values) {
        D::List items;
        for (const char* value : values)
            items.push_back(text(value));
        return D::list(std::move(items));
    }

    /// A full now-playing reply; `changed` replaces items, counted from 1.
    static D nowPlaying(const std::map<int, D>& changed = {}) {
        D::List items{text("Le luci"),
                      text("Nevia Corallo"),
                      text("Lontano"),
                      D::integer(2019),
                      D::integer(4),
                      D::integer(2),
                      D::integer(2),
                      text("Notturni"),
                      text("Apple Lossless audio file"),
                      text("Italy, Japan"),
                      D::missing(),
                      text("playing"),
                      D::real(318.5),
                      D::real(161.25),
                      texts({"Uno", "Due"}),
                      D::list({D::real(245.5), text("x"), D::integer(180)}),
                      text("Jazz"),
                      D::integer(1018),
                      D::integer(38640000),
                      D::integer(96000)};
        for (const auto& [index, value] : changed)
            items[static_cast<std::size_t>(index) - 1] = value;
        return D::list(std::move(items));
    }

    using Titles = std::vector<const char*>;

    /// A reply with the titles of each disc, both numbered from 1.
    static D discs(const std::vector<Titles>& titles) {
        const auto numbered = [](D::List& list, const D& item) {
            list.push_back(D::list({D::integer(static_cast<int>(list.size()) + 1), item}));
        };
        D::List all;
        for (const Titles& disc : titles) {
            D::List tracks;
            for (const char* title : disc)
                numbered(tracks, text(title));
            numbered(all, D::list(std::move(tracks)));
        }
        return D::list(std::move(all));
    }

    static QByteArray png(int width) {
        return encoded(plainPicture(Qt::darkCyan, {width, 8}, QImage::Format_RGB32));
    }

    void answer(const QString& script, Answer how) { answers[script] = std::move(how); }
    void answer(const QString& script, const D& value) {
        answers[script] = [value] { return reply(value); };
    }

    /// Music plays this from now on, and the source has heard of it; no time passes.
    void play(const D& reply) {
        answer(scripts::nowPlaying(), reply);
        source->fetchNowPlaying();
        dispatcher.runUntilIdle();
    }
    /// The album has these titles from now on, and the source has heard of it.
    void list(const D& reply) {
        answer(scripts::tracksByDisc(), reply);
        source->fetchTracksByDisc();
        dispatcher.runUntilIdle();
    }

    script::Outcome execute(const QString& script) {
        sent.append(script);
        const auto found = answers.constFind(script);
        return found == answers.constEnd() ? reply(D()) : (*found)();
    }

    int sentCount(const QString& script) const { return static_cast<int>(sent.count(script)); }

    QStringList lines;
    QStringList sent;
    QMap<QString, Answer> answers;
    dispatch::VirtualDispatcher dispatcher;
    images::Image noCover = images::Image::fromPixels(QImage(1, 1, QImage::Format_RGB32));
    std::shared_ptr<images::ImageStore> store = std::make_shared<images::ImageStore>(dispatcher);
    LogLine log = [this](const QString& line) { lines.append(line); };
    std::shared_ptr<ScriptRunner> runner = std::make_shared<ScriptRunner>(
        dispatcher, [this](const QString& script) { return execute(script); }, log);
    std::unique_ptr<MusicSource> source =
        std::make_unique<MusicSource>(MusicSource::Parts{dispatcher, runner, store, noCover, log});
};

} // namespace tarnwick
