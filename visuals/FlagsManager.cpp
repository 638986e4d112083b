#include "visuals/FlagsManager.h"

#include <QSet>

#include <algorithm>
#include <array>
#include <bitset>
#include <optional>
#include <string_view>
#include <vector>

namespace tarnwick {

namespace {

/// What countries are called, in lower case.
constexpr std::array<std::string_view, 155> countries{
    "abkhazia",       "afghanistan", "aland",         "albania",        "algeria",    "american samoa",
    "andorra",        "angola",      "argentina",     "armenia",        "aruba",      "australia",
    "austria",        "azerbaijan",  "bahamas",       "bahrain",        "bangladesh", "barbados",
    "belarus",        "belgium",     "belize",        "benin",          "bhutan",     "bolivia",
    "bosnia",         "botswana",    "brazil",        "brunei",         "bulgaria",   "burkina faso",
    "burundi",        "cambodia",    "cameroon",      "canada",         "cape verde", "catalonia",
    "chad",           "chile",       "china",         "colombia",       "comoros",    "congo",
    "croatia",        "cuba",        "cyprus",        "czech republic", "denmark",    "djibouti",
    "dominica",       "ecuador",     "egypt",         "el salvador",    "england",    "eritrea",
    "estonia",        "ethiopia",    "fiji",          "finland",        "france",     "gabon",
    "gambia",         "georgia",     "germany",       "ghana",          "greece",     "greenland",
    "guatemala",      "guinea",      "haiti",         "honduras",       "hong kong",  "hungary",
    "iceland",        "india",       "indonesia",     "iran",           "iraq",       "ireland",
    "israel",         "italy",       "jamaica",       "japan",          "jordan",     "kazakhstan",
    "kenya",          "kuwait",      "latvia",        "lebanon",        "libya",      "lithuania",
    "luxembourg",     "macedonia",   "malawi",        "malaysia",       "malta",      "mexico",
    "moldova",        "monaco",      "mongolia",      "montenegro",     "morocco",    "mozambique",
    "myanmar",        "nepal",       "netherlands",   "new zealand",    "nicaragua",  "niger",
    "nigeria",        "north korea", "norway",        "oman",           "pakistan",   "palestine",
    "panama",         "paraguay",    "peru",          "philippines",    "poland",     "portugal",
    "qatar",          "romania",     "russia",        "saudi arabia",   "scotland",   "senegal",
    "serbia",         "singapore",   "slovakia",      "slovenia",       "somalia",    "south africa",
    "south korea",    "spain",       "sri lanka",     "sudan",          "sweden",     "switzerland",
    "syria",          "taiwan",      "tajikistan",    "thailand",       "turkey",     "uk",
    "united kingdom", "usa",         "united states", "ukraine",        "uruguay",    "uzbekistan",
    "venezuela",      "vietnam",     "wales",         "zambia",         "zimbabwe",
};

/// Flags that are not called by the words of the country's name.
constexpr std::array exceptions{
    std::pair{std::string_view("bosnia"), "Bosnia-and-Herzegovina"},
    std::pair{std::string_view("congo"), "Republic-of-the-Congo"},
    std::pair{std::string_view("uk"), "UK"},
    std::pair{std::string_view("united kingdom"), "UK"},
    std::pair{std::string_view("usa"), "USA"},
};

QString imageName(std::string_view country) {
    for (const auto& [name, image] : exceptions) {
        if (name == country)
            return QString::fromLatin1(image);
    }
    QString result = QString::fromLatin1(country.data(), static_cast<qsizetype>(country.size()));
    bool beginsWord = true;
    for (QChar& letter : result) {
        if (beginsWord)
            letter = letter.toUpper();
        beginsWord = letter == QLatin1Char(' ');
        if (beginsWord)
            letter = QLatin1Char('-');
    }
    return result;
}

constexpr std::size_t letters = 26;

/// The countries by their first two letters, the longer before the shorter, so that each place of a line is
/// compared with the few names that can begin there.
struct CountryFlags {
    struct Entry {
        std::size_t index;
        QLatin1String country;
        QString image;
    };
    std::array<std::vector<Entry>, letters * letters> byLetters;

    CountryFlags() {
        for (std::size_t i = 0; i < countries.size(); ++i) {
            const std::string_view country = countries[i];
            byLetters.at(*pairOf(static_cast<char16_t>(country[0]), static_cast<char16_t>(country[1])))
                .push_back({i, QLatin1String(country.data(), static_cast<qsizetype>(country.size())),
                            imageName(country)});
        }
        for (auto& entries : byLetters)
            std::stable_sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) {
                return a.country.size() > b.country.size();
            });
    }

    /// Where the names that begin with two letters stand; none when one is no letter of a name.
    static std::optional<std::size_t> pairOf(char16_t first, char16_t second) {
        if (first < u'a' || first > u'z' || second < u'a' || second > u'z')
            return std::nullopt;
        return static_cast<std::size_t>(first - u'a') * letters + static_cast<std::size_t>(second - u'a');
    }
};

const CountryFlags& countryFlags() {
    static const CountryFlags table;
    return table;
}

/// Lines end at a line feed, but a carriage return and a line feed are one character and end none.
QStringView firstLine(QStringView text) {
    qsizetype begin = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        const bool ends = i == text.size() || (text[i] == u'\n' && (i == 0 || text[i - 1] != u'\r'));
        if (!ends)
            continue;
        if (i > begin)
            return text.mid(begin, i - begin);
        begin = i + 1;
    }
    return {};
}

} // namespace

QStringList FlagsManager::flagImageNames(const QString& comment) {
    const QString line = firstLine(comment).toString().toLower();
    const CountryFlags& flags = countryFlags();
    std::bitset<countries.size()> found;
    QStringList result;
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        const auto pair = CountryFlags::pairOf(line[i].unicode(), line[i + 1].unicode());
        if (!pair)
            continue;
        const QStringView rest = QStringView(line).mid(i);
        for (const CountryFlags::Entry& entry : flags.byLetters[*pair]) {
            if (found[entry.index] || !rest.startsWith(entry.country))
                continue;
            found.set(entry.index);
            result.append(entry.image);
        }
    }
    return result;
}

QStringList FlagsManager::allImageNames() {
    QSet<QString> names;
    for (const std::string_view country : countries)
        names.insert(imageName(country));
    QStringList result(names.begin(), names.end());
    result.sort();
    return result;
}

} // namespace tarnwick
