#pragma once

#include <QString>

#include <vector>

namespace tarnwick::script {

/// A text as it is searched: the way accents are composed does not count, nor letter case unless
/// `considersCase`, and a letter is found with its accents only. Knows where everything stood in the text
/// as it was.
class ComposedText {
public:
    ComposedText(const QString& text, bool considersCase);

    /// In units, as all positions here.
    qsizetype size() const { return m_key.size(); }
    /// Whether `part` stands at `position`.
    bool hasAt(qsizetype position, const ComposedText& part) const;
    /// Where `part` stands first; -1 when nowhere.
    qsizetype indexOf(const ComposedText& part) const;
    /// Where in the text as it was `position` is.
    qsizetype original(qsizetype position) const;

    /// What two texts have in common exactly when they are equal, and what their order goes by.
    static QString key(const QString& text, bool considersCase);

private:
    bool isBetweenLetters(qsizetype position) const;
    void append(const QString& letter, qsizetype original, bool considersCase);

    QString m_key;
    /// For each unit of the key and for its end the place in the original; -1 inside of a letter. Empty when
    /// every unit stands where it stood.
    std::vector<qsizetype> m_originals;
};

} // namespace tarnwick::script
