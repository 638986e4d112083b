#pragma once

#include "script/syntax/Scanner.h"
#include "script/syntax/SyntaxTree.h"
#include "script/values/Terminology.h"

#include <QHash>
#include <QSet>

#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace tarnwick::script {

class ApplicationProvider;

/// How deep the tree of one expression may be.
inline constexpr int MaximumDepth = 400;

/// Makes a program of a text: recursive descent, operators by precedence, one token after the other. What the
/// words of an application mean comes from the terminology of the `tell` around them. Throws error -2741
/// with the place where the text stops being the language, -2706 where it is nested too deeply.
///
/// `Parser.cpp` has the tokens and the names, `ParserDeclarations.cpp` handlers and properties,
/// `ParserStatements.cpp` what their bodies consist of, `ParserSurroundings.cpp` the statements that change
/// how those inside of them are meant, `ParserExpressions.cpp` literals, `ParserCommands.cpp` commands,
/// `ParserOperators.cpp` what stands between them, `ParserReferences.cpp` what stands before and after `of`,
/// `ParserOwnedLists.cpp` a list before an `of`, `ParserWords.cpp` which words mean something to the language
/// or to an application, and `ParserConditions.cpp` what follows a `whose`.
class Parser {
public:
    Parser(const QString& source, const ApplicationProvider& applications);

    std::shared_ptr<const Program> parse();

private:
    /// The names of one handler.
    struct Scope {
        QHash<QString, int> slots_;
        std::vector<QString> names;
        QSet<QString> locals;
        QSet<QString> globals;
        bool isMain = false;
        bool isTopLevel = false; ///< outside of every handler, `on run` among them
        int loops = 0;           ///< how many `repeat` are open
    };
    /// A part of `a of b of c`: what it is, and where what stands after its `of` goes; null when nothing may.
    struct Link {
        Expression* node = nullptr;
        Expression** container = nullptr;
    };
    /// Words that the terminology knows.
    struct Phrase {
        const Terminology::Entry* entry = nullptr;
        int words = 0;
        QString text;
    };
    struct Operator {
        enum class Sort : quint8 { None, Binary, Comparison, And, Or, As };
        Sort sort = Sort::None;
        int precedence = 0;
        int tokens = 0;
        BinaryOperator binary = {};
        Filter::Operator comparison = {};
        bool negated = false;
    };
    /// From the loosest to the tightest binding.
    enum Precedence : int {
        OrPrecedence = 1,
        AndPrecedence,
        NotPrecedence,
        EqualityPrecedence,
        RelationPrecedence,
        AsPrecedence,
        ConcatenationPrecedence,
        SumPrecedence,
        ProductPrecedence,
        PowerPrecedence,
        SignPrecedence,
    };
    class Nesting;
    class ReferencesEndAtIn;

    // Tokens
    const Token& token(std::size_t ahead = 0);
    Token take();
    bool accept(TokenKind kind);
    bool accept(Keyword keyword);
    bool acceptWord(const char* word);
    bool isWord(const char* word, std::size_t ahead = 0);
    bool areWords(std::initializer_list<const char*> words);
    void skip(int tokens);
    void expect(TokenKind kind, const char* what);
    void expect(Keyword keyword, const char* what);
    void expectEndOfLine();
    void skipNewLines();
    bool isOf(std::size_t ahead = 0);
    static const Terminology& standardTerminology();
    [[noreturn]] void failExpecting(const char* what);
    [[noreturn]] void fail(const SourceRange& range, const QString& message,
                           int number = errors::Syntax) const;

    // Nodes
    template <typename T, typename... Arguments>
    T* make(const SourceRange& from, Arguments&&... arguments);
    void hold(Node& node, const Node* child) const;
    void finish(Node& node);
    Expression* makeText(const SourceRange& range, const QString& text);
    Expression* makeConstant(const SourceRange& range, Term code, const QString& name);
    VariableExpression* makeVariable(const Token& name);

    // Statements
    void parseScript();
    void parseHandler();
    void parseProperty();
    void parseDeclaration(bool isGlobal);
    Block parseBlock();
    Block parseLine();
    Statement* parseStatement();
    Statement* parseExpressionStatement();
    Statement* parseSet();
    Statement* parseCopy();
    Statement* parseIf();
    Statement* parseRepeat();
    Statement* parseRepeatWith(const SourceRange& begin);
    void parseRepeatBody(RepeatStatement& statement);
    Statement* parseExit();
    Statement* parseReturn();
    Statement* parseTell();
    Statement* parseTry();
    Statement* parseError();
    Statement* parseConsidering();
    bool acceptIgnoredAttribute();
    Statement* parseTimeout();
    Statement* parseUsingTerms();
    void expectEnd(const char* word);
    bool atBlockEnd();
    VariableExpression* parseVariable();
    void resolveNames();
    static void findPath(PieceExpression& piece);
    void dropUnusedResults(Handler& handler) const;

    // Expressions
    Expression* parseExpression(int minimum = 0);
    Expression* parsePrefix();
    Operator matchOperator();
    Operator matchWordOperator();
    Operator matchIs();
    void matchRelation(Operator& op, std::size_t at);
    Expression* makeOperation(const Operator& op, Expression* left, Expression* right);
    bool isRunningAhead(const Expression& left, const Operator& op);
    Expression* parseIsRunning(Expression* application, bool negated);
    Expression* parseCoercion(Expression* operand);
    Expression* parseBraces();
    Expression* parseRecord(const SourceRange& begin);
    QString parseRecordKey();
    Expression* parseParentheses();
    Expression* parseLiteral();
    bool startsExpression();
    Expression* parseStandardCommand();
    Expression* parseRound();
    Expression* parseOffset();
    bool definesRound();
    Expression* parseDialog(const SourceRange& begin);
    Expression* parseCommand(const Phrase& phrase);

    // References
    Expression* parseReference();
    void attachCondition(const std::vector<Link>& links);
    std::unique_ptr<FilterTemplate> makeFilter(Expression* condition) const;
    std::unique_ptr<FilterTemplate> makeFilterLeaf(const ComparisonExpression& comparison) const;
    Link parseLink();
    Link parsePlainLink(bool isOwned = false);
    Link parseOwned(Expression* owner);
    Link parseSelected();
    Link parseClassLink(Selection selection);
    Link parseOwnedList(ListExpression* list);
    void distribute(OwnedListExpression& owned);
    Expression** openContainer(Expression*& item);
    Expression* parseReferenceTo();
    Link parseBuiltinWord();
    Link parseBuiltinName(bool isOwned);
    Link parseBuiltinProperty(Builtin property, int words);
    Link parseCount();
    Link parsePiece(PieceClass piece, int words);
    Link parseTerm(const Phrase& phrase);
    Link parseElement(const Phrase& phrase);
    Link parseIdentifier(bool isOwned = false);
    void parseIndex(Selection& selection);
    bool startsIndex();
    Expression* parseIndexOperand();
    Phrase matchPhrase(std::size_t ahead = 0);
    bool matchPiece(PieceClass& piece, int& words);
    bool matchItemClass(Term& itemClass);
    static std::optional<Builtin> builtinNamed(const QString& name);
    void refuseUnsupported();
    bool matchBuiltinProperty(Builtin& property, int& words, bool isOwned);
    bool isIdentifier(std::size_t ahead = 0);

    const ApplicationProvider& m_applications;
    std::shared_ptr<Program> m_program;
    Scanner m_scanner;
    std::deque<Token> m_tokens;
    SourceRange m_lastRange;
    const Terminology* m_terminology = nullptr; ///< null outside of `tell application`
    Scope m_scope;
    QHash<QString, int> m_globals;
    QSet<QString> m_properties;
    std::vector<std::pair<VariableExpression*, bool>>
        m_variables; ///< and whether the main handler names them
    std::vector<CallExpression*> m_calls;
    std::vector<PieceExpression*> m_pieces;
    QSet<QString> m_scriptGlobals; ///< declared outside of the handlers, so far
    int m_nesting = 0;
    std::optional<bool> m_definesRound;
    bool m_referencesEndAtIn = false; ///< an `in` is not an `of` here
    bool m_usesResult = false;
    bool m_hasRun = false;
};

/// Counts how deeply the parser has called itself.
class Parser::Nesting {
public:
    explicit Nesting(Parser& parser);
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() { --m_parser.m_nesting; }

private:
    Parser& m_parser;
};

/// While it lives an `in` ends a reference, as in `offset of x in y`; or, in brackets, is an `of` again.
class Parser::ReferencesEndAtIn {
public:
    ReferencesEndAtIn(Parser& parser, bool doEnd)
        : m_parser(parser), m_outer(std::exchange(parser.m_referencesEndAtIn, doEnd)) {}
    ReferencesEndAtIn(const ReferencesEndAtIn&) = delete;
    ReferencesEndAtIn& operator=(const ReferencesEndAtIn&) = delete;
    ~ReferencesEndAtIn() { m_parser.m_referencesEndAtIn = m_outer; }

private:
    Parser& m_parser;
    bool m_outer;
};

template <typename T, typename... Arguments>
T* Parser::make(const SourceRange& from, Arguments&&... arguments) {
    T* node = m_program->make<T>(std::forward<Arguments>(arguments)...);
    node->range = from;
    return node;
}

} // namespace tarnwick::script
