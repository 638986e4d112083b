// Reads the real #includes and QML imports and holds them against the layout of the source tree.

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <gmock/gmock.h>

namespace tarnwick {
namespace {

/// From the top down: a folder uses only folders that stand behind it.
const QStringList layers{"app",    "display", "controls", "music",  "visuals", "settings",
                         "assets", "canvas",  "players",  "script", "platform"};

/// The whole of what `music` may use of `visuals`.
const QString classifier = "visuals/FormatClassifier.h";

struct Edge {
    QString from; ///< a file, from the root
    QString to;   ///< a file, or a folder for a QML import
    int line = 0;

    std::string text() const {
        return QStringLiteral("%1:%2 uses %3").arg(from).arg(line).arg(to).toStdString();
    }
};

QString read(const QString& path) {
    QFile file(QStringLiteral(TARNWICK_SOURCE_DIR "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList files(const QStringList& suffixes) {
    QStringList result;
    const QDir root(QStringLiteral(TARNWICK_SOURCE_DIR));
    for (const QString& layer : layers) {
        QDirIterator iterator(root.filePath(layer), suffixes, QDir::Files, QDirIterator::Subdirectories);
        while (iterator.hasNext())
            result.append(root.relativeFilePath(iterator.next()));
    }
    return result;
}

QString folderOf(const QString& path) { return path.section('/', 0, 0); }
QString facilityOf(const QString& path) { return path.section('/', 1, 1); }

QList<Edge> edges() {
    static const QRegularExpression include(R"~(^\s*#\s*include\s+"([^"]+)")~");
    static const QRegularExpression import(R"(^\s*import\s+Tarnwick\.(\w+))");
    QList<Edge> result;
    for (const QString& file : files({"*.h", "*.cpp", "*.qml"})) {
        int number = 0;
        for (const QString& line : read(file).split('\n')) {
            ++number;
            if (const auto match = include.match(line);
                match.hasMatch() && !match.captured(1).endsWith(".moc"))
                result.append({file, match.captured(1), number});
            else if (const auto module = import.match(line); module.hasMatch())
                result.append({file, module.captured(1).toLower(), number});
        }
    }
    return result;
}

TEST(Architecture, FoldersUseOnlyWhatStandsBelowThem) {
    const QList<Edge> all = edges();
    ASSERT_GT(all.size(), 50) << "the sources were not found";
    for (const Edge& edge : all) {
        const qsizetype from = layers.indexOf(folderOf(edge.from)), to = layers.indexOf(folderOf(edge.to));
        EXPECT_GE(to, 0) << edge.text() << ", which is not a path from the root or no part of the program";
        EXPECT_LE(from, to) << edge.text() << ", which stands above it";
        if (folderOf(edge.from) == "music" && folderOf(edge.to) == "visuals") {
            EXPECT_EQ(edge.to, classifier) << edge.text();
        }
    }
}

TEST(Architecture, FacilitiesOfThePlatformDoNotKnowEachOther) {
    for (const Edge& edge : edges()) {
        if (folderOf(edge.from) != "platform" || folderOf(edge.to) != "platform")
            continue;
        const QString from = facilityOf(edge.from), to = facilityOf(edge.to);
        EXPECT_TRUE(from == to || to == "dispatch") << edge.text();
    }
}

/// The names along a cycle that goes through `node`; empty when there is none.
QStringList cycleThrough(const QString& node, const QMap<QString, QSet<QString>>& graph, QStringList path,
                         QSet<QString>& done) {
    if (path.contains(node))
        return path.mid(path.indexOf(node)) << node;
    if (done.contains(node))
        return {};
    path.append(node);
    for (const QString& next : graph.value(node))
        if (const QStringList cycle = cycleThrough(next, graph, path, done); !cycle.isEmpty())
            return cycle;
    done.insert(node);
    return {};
}

void expectNoCycle(const QMap<QString, QSet<QString>>& graph) {
    QSet<QString> done;
    for (auto node = graph.keyBegin(); node != graph.keyEnd(); ++node) {
        const QStringList cycle = cycleThrough(*node, graph, {}, done);
        EXPECT_TRUE(cycle.isEmpty()) << cycle.join(" -> ").toStdString();
    }
}

TEST(Architecture, NeitherFilesNorFoldersGoInCircles) {
    QMap<QString, QSet<QString>> byFile, byFolder;
    const auto folder = [](const QString& path) { return path.section('/', 0, -2); };
    for (const Edge& edge : edges()) {
        byFile[edge.from].insert(edge.to);
        if (edge.to.contains('/') && folder(edge.from) != folder(edge.to))
            byFolder[folder(edge.from)].insert(folder(edge.to));
    }
    expectNoCycle(byFile);
    expectNoCycle(byFolder);
}

// Each of these is missing, jagged or wrong in one of the two renderers.
TEST(Architecture, ViewsUseNothingThatOneRendererLacks) {
    static const QRegularExpression banned(
        R"(\b(layer\s*\.\s*\w+\s*:|layer\s*\{|ShaderEffect(Source)?\b|ShapePath\b|QtQuick\.Shapes|Qt5Compat|RotationAnimator\b|FrameAnimation\b))");
    for (const QString& file : files({"*.qml"})) {
        const auto match = banned.match(read(file));
        EXPECT_FALSE(match.hasMatch()) << file.toStdString() << " uses " << match.captured().toStdString();
    }
}

// A header of a whole module costs each source that sees it more than a second.
TEST(Architecture, NobodyIncludesAWholeModule) {
    static const QRegularExpression banned(
        R"(#include <Qt(Core|DBus|Gui|Network|Qml|QmlIntegration|Quick|QuickControls2|Svg|Test|Widgets)>)");
    for (const QString& file : files({"*.h", "*.cpp"})) {
        const auto match = banned.match(read(file));
        EXPECT_FALSE(match.hasMatch()) << file.toStdString() << " has " << match.captured().toStdString();
    }
}

TEST(Architecture, EveryFolderSaysWhatBelongsThere) {
    const QDir root(QStringLiteral(TARNWICK_SOURCE_DIR));
    QSet<QString> folders;
    for (const QString& file : files({"*.h", "*.cpp", "*.qml"}))
        folders.insert(folderOf(file) == "platform" ? file.section('/', 0, 1) : folderOf(file));
    for (const QString& folder : folders)
        EXPECT_TRUE(root.exists(folder + "/README.md")) << folder.toStdString();
}

} // namespace
} // namespace tarnwick
