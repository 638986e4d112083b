#include "visuals/FontManagers.h"

#include "platform/defaults/MemoryDefaults.h"

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRawFont>
#include <QTemporaryDir>
#include <fontconfig/fontconfig.h>
#include <gtest/gtest.h>

namespace tarnwick {

namespace {

/// Where Debian keeps the file of an installed font.
QString installedFile(const char* postScriptName) {
    FcPattern* pattern = FcNameParse(reinterpret_cast<const FcChar8*>(":"));
    FcPatternAddString(pattern, FC_POSTSCRIPT_NAME, reinterpret_cast<const FcChar8*>(postScriptName));
    FcObjectSet* objects = FcObjectSetBuild(FC_FILE, nullptr);
    FcFontSet* fonts = FcFontList(nullptr, pattern, objects);
    FcChar8* file = nullptr;
    QString result;
    if (fonts->nfont > 0 && FcPatternGetString(fonts->fonts[0], FC_FILE, 0, &file) == FcResultMatch)
        result = QString::fromUtf8(reinterpret_cast<const char*>(file));
    FcFontSetDestroy(fonts);
    FcObjectSetDestroy(objects);
    FcPatternDestroy(pattern);
    return result;
}

const QString clockKey = QStringLiteral("ImportedClockFonts");

class FontManagersTest : public testing::Test {
protected:
    BaseFontManager::Environment environment() {
        return {defaults, registry, folder.filePath(QStringLiteral("support")),
                [this](int count) { return drawn % count; }};
    }

    QString privateFile(const QString& name) {
        return folder.filePath(QStringLiteral("support/ImportedFonts/")) + name;
    }

    /// A copy of an installed font under another file name.
    QString fontFile(const char* postScriptName, const QString& fileName) {
        const QString path = folder.filePath(fileName);
        QFile::remove(path);
        EXPECT_TRUE(QFile::copy(installedFile(postScriptName), path)) << postScriptName;
        return path;
    }

    QString junkFile(const QString& fileName, const QByteArray& bytes) {
        QFile file(folder.filePath(fileName));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    QStringList stored() { return defaults.get<QStringList>(clockKey).value_or(QStringList()); }

    QTemporaryDir folder;
    defaults::MemoryDefaults defaults;
    fonts::FontRegistry registry;
    int drawn = 0;
};

} // namespace

TEST_F(FontManagersTest, ImportsRemembersAndRemovesAFont) {
    const QString file = fontFile("Inter-Bold", QStringLiteral("Inter-Bold.otf"));
    {
        ClockFontManager clock(environment());
        clock.importFiles({file});
        EXPECT_EQ(clock.fonts(), QStringList{QStringLiteral("Inter-Bold")});
        EXPECT_EQ(stored(), QStringList{privateFile(QStringLiteral("Inter-Bold.otf"))});
        clock.importFiles({file, stored().front()}); // again, and the copy itself
        EXPECT_EQ(clock.fonts().size(), 1);
        EXPECT_EQ(stored().size(), 1);
    }
    registry.remove(QStringLiteral("Inter-Bold")); // the process ends

    ClockFontManager clock(environment());
    EXPECT_EQ(clock.fonts(), QStringList{QStringLiteral("Inter-Bold")});
    clock.removeFont(QStringLiteral("Inter-Bold"));
    EXPECT_TRUE(clock.fonts().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_FALSE(QFile::exists(privateFile(QStringLiteral("Inter-Bold.otf"))));
    EXPECT_TRUE(registry.add(file)); // it was taken back
}

TEST_F(FontManagersTest, TwoFacesOfOneFamilyAreTwoFonts) {
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("Inter-Bold", QStringLiteral("a b'c\".otf")),
                       fontFile("Inter-Thin", QStringLiteral("день.otf"))});
    EXPECT_EQ(clock.fonts(), (QStringList{QStringLiteral("Inter-Bold"), QStringLiteral("Inter-Thin")}));
    EXPECT_EQ(registry.find(QStringLiteral("Inter-Bold"))->style, QLatin1String("Bold"));
    EXPECT_EQ(registry.find(QStringLiteral("Inter-Thin"))->style, QLatin1String("Thin"));
    EXPECT_EQ(QRawFont::fromFont(registry.font(QStringLiteral("Inter-Bold"))).styleName(),
              QLatin1String("Bold"));
    EXPECT_EQ(QRawFont::fromFont(registry.font(QStringLiteral("Inter-Thin"))).styleName(),
              QLatin1String("Thin"));
}

TEST_F(FontManagersTest, ANameThatTheOtherManagerHasIsNotRegisteredTwice) {
    ClockFontManager clock(environment());
    TrackInfoFontManager trackInfo(environment());
    const QString file = fontFile("Inter-Bold", QStringLiteral("Inter-Bold.otf"));
    importFonts(
        true, [&](const auto& chosen) { chosen({file}); }, clock, trackInfo);
    importFonts(
        false, [&](const auto& chosen) { chosen({file}); }, clock, trackInfo);
    EXPECT_EQ(clock.fonts().size(), 1);
    EXPECT_TRUE(trackInfo.fonts().isEmpty());
    EXPECT_FALSE(defaults.value(QStringLiteral("ImportedTrackInfoFonts")));
}

TEST_F(FontManagersTest, WhatIsNoFontIsSilentlyLeftOut) {
    QFile whole(installedFile("Inter-Bold"));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    ClockFontManager clock(environment());
    clock.importFiles({junkFile(QStringLiteral("none.ttf"), "this is no font"),
                       junkFile(QStringLiteral("empty.ttf"), {}),
                       junkFile(QStringLiteral("cut.otf"), whole.read(700)),
                       folder.filePath(QStringLiteral("not there.ttf"))});
    EXPECT_TRUE(clock.fonts().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_TRUE(QFile::exists(privateFile(QStringLiteral("none.ttf"))));
}

TEST_F(FontManagersTest, OfACollectionTheFirstFaceCounts) {
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("NotoSansCJKkr-Regular", QStringLiteral("collection.otf"))});
    EXPECT_EQ(clock.fonts(), QStringList{QStringLiteral("NotoSansCJKjp-Regular")});
    EXPECT_EQ(registry.find(clock.fonts().front())->family, QLatin1String("Noto Sans CJK JP"));
}

TEST_F(FontManagersTest, AMissingFileIsSkippedAndKept) {
    const QString there = fontFile("Inter-Bold", QStringLiteral("Inter-Bold.otf"));
    const QStringList paths{QStringLiteral("/no/such/file.ttf"), there};
    defaults.set(clockKey, paths);
    const ClockFontManager clock(environment());
    EXPECT_EQ(clock.fonts(), QStringList{QStringLiteral("Inter-Bold")});
    EXPECT_EQ(stored(), paths);
}

TEST_F(FontManagersTest, RemovalFindsTheFileByItsPath) {
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("Inter-Bold", QStringLiteral("inter_bold.otf"))});
    for (const char* name : {"Inter-Bold", "System Font", "", "INTER"})
        clock.removeFont(QLatin1String(name));
    EXPECT_EQ(clock.fonts().size(), 1);
    EXPECT_EQ(stored().size(), 1);
    clock.removeFont(QStringLiteral("inter_b")); // no name of a font, but part of a path
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_EQ(clock.fonts().size(), 1);
}

TEST_F(FontManagersTest, AFolderThatCannotBeMadeStopsTheImport) {
    junkFile(QStringLiteral("support"), "a file where the folder should be");
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("Inter-Bold", QStringLiteral("Inter-Bold.otf"))});
    EXPECT_TRUE(clock.fonts().isEmpty());
    BaseFontManager::Environment homeless = environment();
    homeless.applicationSupport.clear();
    EXPECT_FALSE(ClockFontManager(homeless).copyFontToAppSupport(installedFile("Inter-Bold")));
}

TEST_F(FontManagersTest, TheSystemFontIsAlwaysACandidate) {
    ClockFontManager clock(environment());
    EXPECT_EQ(clock.randomFontName(), systemFontName);
    clock.importFiles(
        {fontFile("Inter-Bold", QStringLiteral("a.otf")), fontFile("Inter-Thin", QStringLiteral("b.otf"))});
    QStringList names;
    for (drawn = 0; drawn < 3; ++drawn)
        names.append(clock.randomFontName());
    EXPECT_EQ(names,
              (QStringList{systemFontName, QStringLiteral("Inter-Bold"), QStringLiteral("Inter-Thin")}));
}

TEST_F(FontManagersTest, AFontThatNobodyElseHasIsDrawnUntilItIsRemoved) {
    // A font of the system's under a name that the system does not know.
    QFile installed(installedFile("Inter-Black"));
    ASSERT_TRUE(installed.open(QIODevice::ReadOnly));
    QByteArray bytes = installed.readAll();
    bytes.replace("Inter", "Zwter").replace(QByteArray("I\0n\0t\0e\0r", 9), QByteArray("Z\0w\0t\0e\0r", 9));
    const QString name = QStringLiteral("Zwter-Black");
    const auto clockFace = [&] {
        QImage picture(300, 80, QImage::Format_RGB32);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        QFont font = registry.font(name);
        font.setPixelSize(60);
        painter.setFont(font);
        painter.drawText(picture.rect(), Qt::AlignCenter, QStringLiteral("21:47"));
        return picture;
    };
    const QImage before = clockFace();
    ClockFontManager clock(environment());
    clock.importFiles({junkFile(QStringLiteral("Zwter-Black.otf"), bytes)});
    ASSERT_EQ(clock.fonts(), QStringList{name});
    EXPECT_EQ(QRawFont::fromFont(registry.font(name)).familyName(), QLatin1String("Zwter"));
    EXPECT_NE(clockFace(), before);
    clock.removeFont(name);
    EXPECT_TRUE(clock.fonts().isEmpty());
    EXPECT_EQ(clockFace(), before) << "the system's font again";
}

TEST(FontRegistry, FindsInstalledFontsByTheirExactName) {
    const fonts::FontRegistry registry;
    EXPECT_EQ(registry.find(QStringLiteral("Inter-Bold"))->style, QLatin1String("Bold"));
    for (const char* name : {"System Font", "inter-bold", "Inter", ""}) {
        EXPECT_FALSE(registry.find(QLatin1String(name))) << name;
        EXPECT_EQ(registry.font(QLatin1String(name)).family(), fonts::systemFontFamily());
    }
}

} // namespace tarnwick
