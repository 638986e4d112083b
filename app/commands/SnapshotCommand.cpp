#include "app/commandline/Answer.h"
#include "app/commands/Commands.h"
#include "app/commands/SnapshotStage.h"
#include "assets/ContactSheet.h"
#include "controls/preferences/PreferencesModel.h"
#include "display/DisplayScene.h"
#include "settings/Preferences.h"

#include <QRegularExpression>

namespace tarnwick {

namespace {

constexpr QSize defaultSize{1200, 600};
constexpr QSize preferencesSize{590, 1000}; ///< of their whole content
constexpr QSize largestSize{7680, 4320};

/// When the choreography of the first track is over and everything has come to rest.
constexpr std::chrono::milliseconds restingTime{4000};

/// Longer than this nobody waits, and nothing new happens.
constexpr double longestWait = 24 * 60 * 60;

/// A limit, because at higher settings a picture of this size takes ten times as long or is not packed at
/// all.
constexpr int pngQuality = 80;

struct Request {
    QString file;
    QString view;
    QSize size;
    bool isFlipped = false;
    bool isDark = false; ///< of the surroundings
    std::chrono::milliseconds after{};
    SnapshotStage::Options stage;
};

using Problem = QString;

QUrl preferencesUrl() { return QUrl(QStringLiteral("qrc:/qt/qml/Tarnwick/Controls/PreferencesView.qml")); }

std::optional<QSize> parseSize(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})[xX×](\\d{1,5})$"));
    const auto match = form.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (size.isEmpty() || size.width() > largestSize.width() || size.height() > largestSize.height())
        return std::nullopt;
    return size;
}

/// Of what has a size of its own the whole, else a usual one.
QSize wholeSize(const QString& view) {
    if (view == QLatin1String("assets"))
        return contactSheetSize(Catalogue::shared());
    return view == QLatin1String("preferences") ? preferencesSize : defaultSize;
}

/// Reads the KEY=VALUEs in the order in which they were given.
std::optional<Problem> readPreferences(const Invocation& invocation, SnapshotStage::Options& stage) {
    const QStringList given = invocation.options.values(QStringLiteral("set"));
    for (auto text = given.rbegin(); text != given.rend(); ++text) {
        const QString key = text->section(QLatin1Char('='), 0, 0);
        const Preference* preference = findPreference(key);
        if (!preference || !text->contains(QLatin1Char('=')))
            return QStringLiteral("--set takes KEY=VALUE with the name of a preference, not '%1'").arg(*text);
        const auto value = preference->parse(text->section(QLatin1Char('='), 1));
        if (!value)
            return QStringLiteral("%1 is %2").arg(key, preference->possibleValues());
        stage.preferences[key] = *value;
    }
    return std::nullopt;
}

std::variant<Request, Problem> readRequest(const Invocation& invocation) {
    Request request;
    request.file = invocation.arguments.front();
    if (const QString fault = pictureNameFault(request.file); !fault.isEmpty())
        return fault;
    request.view = invocation.option(QStringLiteral("view")).value_or(QStringLiteral("display"));
    static const QStringList views{QStringLiteral("display"), QStringLiteral("bar"),
                                   QStringLiteral("picker"),  QStringLiteral("preferences"),
                                   QStringLiteral("splash"),  QStringLiteral("assets")};
    if (!views.contains(request.view))
        return QStringLiteral("--view is one of %1").arg(views.join(QStringLiteral(", ")));
    const QString scene = invocation.option(QStringLiteral("scene")).value_or(QStringLiteral("playing"));
    const auto demoScene = players::demoSceneNamed(scene);
    if (!demoScene)
        return QStringLiteral("there is no scene '%1'; there are %2")
            .arg(scene, players::demoSceneNames().join(QStringLiteral(", ")));
    request.stage.scene = *demoScene;
    const auto sizeText = invocation.option(QStringLiteral("size"));
    const auto size = sizeText ? parseSize(*sizeText) : wholeSize(request.view);
    if (!size)
        return QStringLiteral("--size is WxH in pixels, at most %1x%2, not '%3'")
            .arg(largestSize.width())
            .arg(largestSize.height())
            .arg(*sizeText);
    request.size = *size;
    request.isFlipped = invocation.has(QStringLiteral("flipped"));
    request.isDark = invocation.has(QStringLiteral("dark"));
    if (request.isDark && request.view != QLatin1String("preferences") &&
        request.view != QLatin1String("assets"))
        return QStringLiteral(
            "--dark goes with --view preferences and assets only; the others look alike everywhere");
    request.stage.isFullScreen = invocation.has(QStringLiteral("fullscreen"));
    request.after = restingTime;
    if (const auto after = invocation.option(QStringLiteral("after"))) {
        bool isNumber = false;
        const double seconds = after->toDouble(&isNumber);
        if (!isNumber || !(seconds >= 0 && seconds <= longestWait))
            return QStringLiteral("--after is a number of seconds up to a day, not '%1'").arg(*after);
        request.after = std::chrono::milliseconds(std::llround(seconds * 1000));
    }
    if (const auto problem = readPreferences(invocation, request.stage))
        return *problem;
    return request;
}

/// The view as a picture; null when it cannot be made.
QImage paint(const Request& request) {
    if (request.view == QLatin1String("assets"))
        return contactSheet(Catalogue::shared(), request.size, request.isDark);
    if (request.view == QLatin1String("splash"))
        return *Catalogue::shared().picture(QStringLiteral("applogo800"), request.size);
    SnapshotStage stage(request.stage);
    PreferencesModel model({.settings = stage.settings(), .importFonts = {}, .removeFont = {}});
    auto root =
        request.view == QLatin1String("preferences")
            ? DisplayScene::createItem(stage.engine(), preferencesUrl(),
                                       {{QStringLiteral("settings"), QVariant::fromValue(&stage.settings())},
                                        {QStringLiteral("model"), QVariant::fromValue(&model)}})
            : DisplayScene::create(stage.engine(), stage.view());
    if (!root)
        return {};
    if (auto* style = root->property("style").value<QObject*>()) // so that this desktop's makes no difference
        style->setProperty("isDark", request.isDark);
    stage.show(std::move(root), request.size);
    stage.view().controls()->setShowTrackControls(request.view != QLatin1String("display"));
    if (request.view == QLatin1String("picker"))
        stage.view().controls()->press(QStringLiteral("playlist"));
    if (request.isFlipped)
        stage.view().tapCover();
    stage.advance(request.after);
    return stage.render();
}

} // namespace

int runSnapshot(const Invocation& invocation) {
    const auto read = readRequest(invocation);
    if (const auto* problem = std::get_if<Problem>(&read)) {
        complain(*problem);
        return exitUsage;
    }
    const auto& request = std::get<Request>(read);
    SceneRenderer::useSoftware();
    const QImage picture = paint(request);
    if (picture.isNull()) {
        complain(QStringLiteral("the view '%1' could not be painted").arg(request.view));
        return exitFailed;
    }
    if (!picture.convertToFormat(QImage::Format_RGB888).save(request.file, "PNG", pngQuality)) {
        complain(QStringLiteral("could not write '%1'").arg(request.file));
        return exitFailed;
    }
    return exitDone;
}

} // namespace tarnwick
