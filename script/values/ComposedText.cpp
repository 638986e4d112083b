#include "script/values/ComposedText.h"

#include "script/values/Coercion.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace tarnwick::script {

namespace {

bool isAscii(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
}

} // namespace

ComposedText::ComposedText(const QString& text, bool considersCase) {
    if (isAscii(text)) {
        m_key = considersCase ? text : text.toCaseFolded();
        return;
    }
    m_key.reserve(text.size());
    m_originals.reserve(static_cast<std::size_t>(text.size()) + 1);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    for (qsizetype begin = 0; begin < text.size();) {
        const qsizetype next = finder.toNextBoundary();
        qsizetype end = next > begin ? next : text.size();
        if (text.at(begin) == QLatin1Char('\r') && end == begin + 2) {
            // Both halves of a line's end can be looked for.
            append(QStringLiteral("\r"), begin, considersCase);
            ++begin;
        }
        append(text.mid(begin, end - begin), begin, considersCase);
        begin = end;
    }
    m_originals.push_back(text.size());
}

bool ComposedText::hasAt(qsizetype position, const ComposedText& part) const {
    return position >= 0 && position + part.size() <= size() &&
           QStringView(m_key).mid(position, part.size()) == part.m_key && isBetweenLetters(position) &&
           isBetweenLetters(position + part.size());
}

qsizetype ComposedText::indexOf(const ComposedText& part) const {
    qsizetype found = m_key.indexOf(part.m_key);
    while (found >= 0 && !hasAt(found, part))
        found = m_key.indexOf(part.m_key, found + 1);
    return found;
}

qsizetype ComposedText::original(qsizetype position) const {
    return m_originals.empty() ? position : m_originals[static_cast<std::size_t>(position)];
}

QString ComposedText::key(const QString& text, bool considersCase) {
    return considersCase ? text.normalized(QString::NormalizationForm_C) : comparisonKey(text);
}

bool ComposedText::isBetweenLetters(qsizetype position) const { return original(position) >= 0; }

void ComposedText::append(const QString& letter, qsizetype original, bool considersCase) {
    m_originals.push_back(original);
    m_key += key(letter, considersCase);
    m_originals.resize(static_cast<std::size_t>(m_key.size()), -1);
}

} // namespace tarnwick::script
