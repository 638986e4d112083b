#include "visuals/FontManagers.h"

#include "platform/defaults/MemoryDefaults.h"
#include "tests/fakes/Files.h"
#include "tests/fakes/Pictures.h"

#include <QPainter>
#include <QRawFont>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tarnwick {

namespace {

/// Where Debian keeps the file of an installed font.
QString installedFile(const QString& name) {
    return "/usr/share/fonts/opentype/" +
           (name.startsWith("Inter") ? "inter/" + name + ".otf" : "noto/" + name + ".ttc");
}

const QString clockKey = "ImportedClockFonts";

class FontManagersTest : public testing::Test {
protected:
    BaseFontManager::Environment environment() {
        return {defaults, registry, folder.filePath("support"), [this](int count) { return drawn % count; }};
    }

    QString privateFile(const QString& name) { return folder.filePath("support/ImportedFonts/") + name; }

    /// A copy of an installed font under another file name.
    QString fontFile(const QString& name, const QString& fileName) {
        const QString path = folder.filePath(fileName);
        QFile::remove(path);
        EXPECT_TRUE(QFile::copy(installedFile(name), path)) << qPrintable(name);
        return path;
    }

    QString junkFile(const QString& fileName, const QByteArray& bytes) {
        return writeFile(folder.filePath(fileName), bytes);
    }

    QStringList stored() { return defaults.get<QStringList>(clockKey).value_or(QStringList()); }

    QTemporaryDir folder;
    defaults::MemoryDefaults defaults;
    fonts::FontRegistry registry;
    int drawn = 0;
};

} // namespace

TEST_F(FontManagersTest, ImportsRemembersAndRemovesAFont) {
    const QString file = fontFile("Inter-Bold", "Inter-Bold.otf");
    {
        ClockFontManager clock(environment());
        clock.importFiles({file});
        EXPECT_EQ(clock.fonts(), QStringList{"Inter-Bold"});
        EXPECT_EQ(stored(), QStringList{privateFile("Inter-Bold.otf")});
        clock.importFiles({file, stored().front()}); // again, and the copy itself
        EXPECT_EQ(clock.fonts().size(), 1);
        EXPECT_EQ(stored().size(), 1);
    }
    registry.remove("Inter-Bold"); // the process ends

    ClockFontManager clock(environment());
    EXPECT_EQ(clock.fonts(), QStringList{"Inter-Bold"});
    clock.removeFont("Inter-Bold");
    EXPECT_TRUE(clock.fonts().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_FALSE(QFile::exists(privateFile("Inter-Bold.otf")));
    EXPECT_TRUE(registry.add(file)); // it was taken back
}

TEST_F(FontManagersTest, TwoFacesOfOneFamilyAreTwoFonts) {
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("Inter-Bold", "a b'c\".otf"), fontFile("Inter-Thin", "день.otf")});
    EXPECT_EQ(clock.fonts(), (QStringList{"Inter-Bold", "Inter-Thin"}));
    EXPECT_EQ(registry.find("Inter-Bold")->style, "Bold");
    EXPECT_EQ(registry.find("Inter-Thin")->style, "Thin");
    EXPECT_EQ(QRawFont::fromFont(registry.font("Inter-Bold")).styleName(), "Bold");
    EXPECT_EQ(QRawFont::fromFont(registry.font("Inter-Thin")).styleName(), "Thin");
}

TEST_F(FontManagersTest, ANameThatTheOtherManagerHasIsNotRegisteredTwice) {
    ClockFontManager clock(environment());
    TrackInfoFontManager trackInfo(environment());
    const QString file = fontFile("Inter-Bold", "Inter-Bold.otf");
    const FontChooser chooser = [&](const auto& chosen) { chosen({file}); };
    for (const bool forClock : {true, false})
        importFonts(forClock, chooser, clock, trackInfo);
    EXPECT_EQ(clock.fonts().size(), 1);
    EXPECT_TRUE(trackInfo.fonts().isEmpty());
    EXPECT_FALSE(defaults.value("ImportedTrackInfoFonts"));
}

TEST_F(FontManagersTest, WhatIsNoFontIsSilentlyLeftOut) {
    ClockFontManager clock(environment());
    clock.importFiles({junkFile("none.ttf", "this is no font"), junkFile("empty.ttf", {}),
                       junkFile("cut.otf", readFile(installedFile("Inter-Bold")).left(700)),
                       folder.filePath("not there.ttf")});
    EXPECT_TRUE(clock.fonts().isEmpty());
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_TRUE(QFile::exists(privateFile("none.ttf")));
}

TEST_F(FontManagersTest, OfACollectionTheFirstFaceCounts) {
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("NotoSansCJK-Regular", "collection.otf")});
    EXPECT_EQ(clock.fonts(), QStringList{"NotoSansCJKjp-Regular"});
    EXPECT_EQ(registry.find(clock.fonts().front())->family, "Noto Sans CJK JP");
}

TEST_F(FontManagersTest, AMissingFileIsSkippedAndKept) {
    const QString there = fontFile("Inter-Bold", "Inter-Bold.otf");
    const QStringList paths{"/no/such/file.ttf", there};
    defaults.set(clockKey, paths);
    const ClockFontManager clock(environment());
    EXPECT_EQ(clock.fonts(), QStringList{"Inter-Bold"});
    EXPECT_EQ(stored(), paths);
}

TEST_F(FontManagersTest, RemovalFindsTheFileByItsPath) {
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("Inter-Bold", "inter_bold.otf")});
    for (const char* name : {"Inter-Bold", "System Font", "", "INTER"})
        clock.removeFont(QLatin1String(name));
    EXPECT_EQ(clock.fonts().size(), 1);
    EXPECT_EQ(stored().size(), 1);
    clock.removeFont("inter_b"); // no name of a font, but part of a path
    EXPECT_TRUE(stored().isEmpty());
    EXPECT_EQ(clock.fonts().size(), 1);
}

TEST_F(FontManagersTest, AFolderThatCannotBeMadeStopsTheImport) {
    junkFile("support", "a file where the folder should be");
    ClockFontManager clock(environment());
    clock.importFiles({fontFile("Inter-Bold", "Inter-Bold.otf")});
    EXPECT_TRUE(clock.fonts().isEmpty());
    BaseFontManager::Environment homeless = environment();
    homeless.applicationSupport.clear();
    EXPECT_FALSE(ClockFontManager(homeless).copyFontToAppSupport(installedFile("Inter-Bold")));
}

TEST_F(FontManagersTest, TheSystemFontIsAlwaysACandidate) {
    ClockFontManager clock(environment());
    EXPECT_EQ(clock.randomFontName(), systemFontName);
    clock.importFiles({fontFile("Inter-Bold", "a.otf"), fontFile("Inter-Thin", "b.otf")});
    QStringList names;
    for (drawn = 0; drawn < 3; ++drawn)
        names.append(clock.randomFontName());
    EXPECT_EQ(names, (QStringList{systemFontName, "Inter-Bold", "Inter-Thin"}));
}

TEST_F(FontManagersTest, AFontThatNobodyElseHasIsDrawnUntilItIsRemoved) {
    // A font of the system's under a name that the system does not know.
    QByteArray bytes = readFile(installedFile("Inter-Black"));
    bytes.replace("Inter", "Zwter").replace(QByteArray("I\0n\0t\0e\0r", 9), QByteArray("Z\0w\0t\0e\0r", 9));
    const QString name = "Zwter-Black";
    const auto clockFace = [&] {
        QImage picture = plainPicture(Qt::white, {300, 80}, QImage::Format_RGB32);
        QPainter painter(&picture);
        QFont font = registry.font(name);
        font.setPixelSize(60);
        painter.setFont(font);
        painter.drawText(picture.rect(), Qt::AlignCenter, "21:47");
        return picture;
    };
    const QImage before = clockFace();
    ClockFontManager clock(environment());
    clock.importFiles({junkFile("Zwter-Black.otf", bytes)});
    ASSERT_EQ(clock.fonts(), QStringList{name});
    EXPECT_EQ(QRawFont::fromFont(registry.font(name)).familyName(), "Zwter");
    EXPECT_NE(clockFace(), before);
    clock.removeFont(name);
    EXPECT_TRUE(clock.fonts().isEmpty());
    EXPECT_EQ(clockFace(), before) << "the system's font again";
}

TEST(FontRegistry, FindsInstalledFontsByTheirExactName) {
    const fonts::FontRegistry registry;
    EXPECT_EQ(registry.find("Inter-Bold")->style, "Bold");
    for (const char* name : {"System Font", "inter-bold", "Inter", ""}) {
        EXPECT_FALSE(registry.find(QLatin1String(name))) << name;
        EXPECT_EQ(registry.font(QLatin1String(name)).family(), fonts::systemFontFamily());
    }
}

} // namespace tarnwick
