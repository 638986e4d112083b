#include "visuals/RotatingCDManager.h"

#include "visuals/CDImageOption.h"

#include <gtest/gtest.h>

namespace tarnwick {

namespace {

class RotatingCDManagerTest : public testing::Test {
protected:
    RotatingCDManagerTest() {
        QObject::connect(&manager, &RotatingCDManager::cdImageChanged, [this] { published += "c"; });
        QObject::connect(&manager, &RotatingCDManager::isPlayingChanged, [this] { published += "p"; });
        QObject::connect(&manager, &RotatingCDManager::rotateCDDuringPlaybackChanged,
                         [this] { published += "r"; });
    }

    int drawn = 24;
    QStringList log;
    RotatingCDManager manager{Catalogue::shared(), [this](int count) { return drawn % count; },
                              [this](const QString& line) { log.append(line); }};
    std::string published;
};

} // namespace

TEST_F(RotatingCDManagerTest, WithoutAnImageShowsTheDefaultOrARandomDisc) {
    EXPECT_TRUE(manager.cdImage().isNull());
    manager.updateRecord({}, true, false);
    EXPECT_EQ(manager.cdImage().name(), QLatin1String("cddefault"));
    EXPECT_EQ(published, "cpr");
    EXPECT_TRUE(log.isEmpty());

    manager.setRandomRotationEnabled(true);
    manager.updateRecord({}, true, false);
    EXPECT_EQ(manager.cdImage().name(), QLatin1String("RTM-LPR90"));
    EXPECT_EQ(log, QStringList{QStringLiteral("Aggiornamento immagine casuale.")});

    manager.updateRecord(DiscImage::named(Catalogue::shared(), QStringLiteral("45Vinyl")), true, false);
    EXPECT_EQ(manager.cdImage().name(), QLatin1String("45Vinyl"));
    EXPECT_EQ(log.size(), 1);
    manager.updatePlayback(true, true);
    EXPECT_EQ(published, "cprccr") << "only what changes";
}

TEST_F(RotatingCDManagerTest, DrawsFromTheWholeCatalogue) {
    for (drawn = 0; drawn < imageOptions().size(); ++drawn)
        EXPECT_EQ(manager.randomRecordImage().name(), imageOptions().at(drawn).tag);
}

} // namespace tarnwick
