#include "script/run/Pieces.h"

#include "script/values/Cells.h"
#include "script/values/ComposedText.h"
#include "script/values/Snapshot.h"

#include <QStringView>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace tarnwick::script {

namespace {

/// Where a piece of a text lies.
struct Stretch {
    qsizetype begin = 0;
    qsizetype end = 0;
};
using Stretches = std::vector<Stretch>;

/// Whether every unit of the text is a character of its own.
bool isPlain(const QString& text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar unit) { return unit.unicode() < 0x300 && unit != QLatin1Char('\r'); });
}

Stretches characters(const QString& text) {
    Stretches found;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype next = finder.toNextBoundary();
        const qsizetype end = next > begin ? next : text.size();
        found.push_back({begin, end});
        begin = end;
    }
    return found;
}

Stretches words(const QString& text) {
    Stretches found;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    qsizetype begin = -1;
    for (qsizetype at = 0; at >= 0; at = finder.toNextBoundary()) {
        const auto reasons = finder.boundaryReasons();
        if (begin >= 0 && (reasons & QTextBoundaryFinder::EndOfItem)) {
            found.push_back({begin, at});
            begin = -1;
        }
        if (reasons & QTextBoundaryFinder::StartOfItem)
            begin = at;
    }
    return found;
}

Stretches paragraphs(const QString& text) {
    Stretches found;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text.at(at);
        if (unit != QLatin1Char('\n') && unit != QLatin1Char('\r') && unit != QChar::ParagraphSeparator &&
            unit != QChar::LineSeparator)
            continue;
        found.push_back({begin, at});
        if (unit == QLatin1Char('\r') && at + 1 < text.size() && text.at(at + 1) == QLatin1Char('\n'))
            ++at;
        begin = at + 1;
    }
    found.push_back({begin, text.size()});
    return found;
}

Stretches textItems(const QString& text, const QStringList& delimiters) {
    const ComposedText whole(text, false);
    std::vector<ComposedText> wanted;
    for (const QString& delimiter : delimiters) {
        if (!delimiter.isEmpty())
            wanted.emplace_back(delimiter, false);
    }
    Stretches found;
    qsizetype begin = 0;
    for (qsizetype at = 0; at < whole.size();) {
        const auto hit = std::find_if(wanted.begin(), wanted.end(), [&](const ComposedText& delimiter) {
            return whole.hasAt(at, delimiter);
        });
        if (hit == wanted.end()) {
            ++at;
            continue;
        }
        found.push_back({begin, whole.original(at)});
        at += hit->size();
        begin = whole.original(at);
    }
    found.push_back({begin, text.size()});
    return found;
}

bool areCharacters(PieceClass piece, const QStringList& delimiters) {
    switch (piece) {
    case PieceClass::Item:
    case PieceClass::Character:
    case PieceClass::Text:
        return true;
    case PieceClass::TextItem:
        return std::all_of(delimiters.begin(), delimiters.end(),
                           [](const QString& each) { return each.isEmpty(); });
    default:
        return false;
    }
}

Stretches stretches(const QString& text, PieceClass piece, const QStringList& delimiters) {
    if (areCharacters(piece, delimiters))
        return characters(text);
    switch (piece) {
    case PieceClass::Word:
        return words(text);
    case PieceClass::Paragraph:
        return paragraphs(text);
    default:
        return textItems(text, delimiters);
    }
}

/// The units of the pieces from `first` to `last`; a plain text is not cut up for it.
Stretches between(const QString& text, PieceClass piece, qsizetype first, qsizetype last,
                  const QStringList& delimiters) {
    Stretches result;
    if (areCharacters(piece, delimiters) && isPlain(text)) {
        for (qsizetype at = first; at <= last && at < text.size(); ++at)
            result.push_back({at, at + 1});
        return result;
    }
    const Stretches all = stretches(text, piece, delimiters);
    for (qsizetype at = first; at <= last && at < static_cast<qsizetype>(all.size()); ++at)
        result.push_back(all[static_cast<std::size_t>(at)]);
    return result;
}

Value cut(const QString& text, const Stretch& stretch) {
    return Value::text(text.mid(stretch.begin, stretch.end - stretch.begin));
}

bool isListOf(const Value& whole, PieceClass piece) {
    return whole.is(Kind::List) && (piece == PieceClass::Item || piece == PieceClass::ItemOfClass);
}

} // namespace

qsizetype countPieces(const Value& whole, PieceClass piece, const QStringList& delimiters) {
    if (isListOf(whole, piece))
        return static_cast<qsizetype>(whole.asList().size());
    if (whole.is(Kind::Record) && piece == PieceClass::Item)
        return static_cast<qsizetype>(whole.asRecord().size());
    if (!whole.is(Kind::Text))
        throw Error::noSuchObject(QStringLiteral("Can’t get the pieces of %1.").arg(briefLiteral(whole)));
    const QString& text = textIn(whole);
    if (areCharacters(piece, delimiters) && isPlain(text))
        return text.size();
    return static_cast<qsizetype>(stretches(text, piece, delimiters).size());
}

Value pieceAt(const Value& whole, PieceClass piece, qsizetype position, const QStringList& delimiters) {
    if (position < 0)
        return {};
    const auto at = static_cast<std::size_t>(position);
    if (isListOf(whole, piece))
        return at < whole.asList().size() ? whole.asList()[at] : Value();
    if (whole.is(Kind::Record) && piece == PieceClass::Item)
        return at < whole.asRecord().size() ? whole.asRecord()[at].second : Value();
    if (!whole.is(Kind::Text))
        return {};
    const Stretches found = between(textIn(whole), piece, position, position, delimiters);
    return found.empty() ? Value() : cut(textIn(whole), found.front());
}

Value piecesBetween(const Value& whole, PieceClass piece, qsizetype first, qsizetype last,
                    const QStringList& delimiters) {
    Value list = Value::list();
    if (!whole.is(Kind::Text)) {
        for (qsizetype at = first; at <= last; ++at)
            listIn(list).append(pieceAt(whole, piece, at, delimiters));
        return list;
    }
    const QString& text = textIn(whole);
    const Stretches found = between(text, piece, first, last, delimiters);
    if (piece == PieceClass::Text)
        return found.empty() ? Value::text(QString()) : cut(text, {found.front().begin, found.back().end});
    for (const Stretch& stretch : found)
        listIn(list).append(cut(text, stretch));
    return list;
}

} // namespace tarnwick::script
