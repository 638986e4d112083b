#include "visuals/FlagsManager.h"

#include "assets/Catalogue.h"

#include <gtest/gtest.h>

namespace tarnwick {

TEST(FlagsManager, FindsCountriesInTheFirstLine) {
    const std::pair<const char*, QStringList> rows[]{
        {"", {}},
        {"Nessun commento", {}},
        {"\n\n", {}},
        {"\n\nItaly\nrecorded in France", {"Italy"}},
        {"Recorded in Italy\rmixed in France", {"Italy", "France"}},
        {"Italy\r\nFrance", {"Italy", "France"}}, // one character, and no line feed
        {"GERMANY", {"Germany"}},
        {"France / Italy / Japan", {"France", "Italy", "Japan"}}, // in the order of the line
        {"Nigeria", {"Nigeria", "Niger"}},                        // both begin there, the longer first
        {"Romania", {"Romania", "Oman"}},
        {"ukraine", {"Ukraine", "UK"}},
        {"Dominican Republic", {"Dominica"}},
        {"UK and United Kingdom", {"UK", "UK"}},
        {"Italy, Italy", {"Italy"}},
        {"USA united states American Samoa", {"USA", "United-States", "American-Samoa"}},
        {"bosnia, congo, hong kong", {"Bosnia-and-Herzegovina", "Republic-of-the-Congo", "Hong-Kong"}},
    };
    for (const auto& [comment, flags] : rows)
        EXPECT_EQ(FlagsManager::flagImageNames(QString::fromLatin1(comment)), flags) << comment;
}

TEST(FlagsManager, NamesThePicturesOfTheCatalogue) {
    EXPECT_EQ(FlagsManager::allImageNames(), Catalogue::shared().names(Catalogue::Kind::Flag));
    EXPECT_EQ(FlagsManager::allImageNames().size(), 154);
}

} // namespace tarnwick
